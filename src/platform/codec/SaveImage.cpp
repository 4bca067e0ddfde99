// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/SaveImage.h"

#include "platform/codec/PictureWriters.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace {

struct Row {
    std::string_view extension;
    PictureWriter* put;
};

constexpr Row kWriters[] = {{"JPG", PutJpg},  {"JPEG", PutJpg},  {"PNG", PutPng},
                            {"TIF", PutTiff}, {"TIFF", PutTiff}, {"TGA", PutTga},
                            {"PCX", PutPcx},  {"BMP", PutBmp},   {"DIB", PutBmp}};

std::string UpperCaseExtension(const std::filesystem::path& path)
{
    const std::string name = path.filename().string();
    const size_t dot = name.rfind('.');
    std::string extension = dot == std::string::npos ? std::string() : name.substr(dot + 1);
    for (char& letter : extension) {
        if (letter >= 'a' && letter <= 'z')
            letter = static_cast<char>(letter - 'a' + 'A');
    }
    return extension;
}

} // namespace

bool CImage::SaveImageFile(const std::filesystem::path& path, const CPackedDib& dib, uint32_t option,
                           IProgress* progress)
{
    const std::string extension = UpperCaseExtension(path);
    const auto* row = std::find_if(std::begin(kWriters), std::end(kWriters),
                                   [&](const Row& writer) { return writer.extension == extension; });
    if (row == std::end(kWriters) || dib.IsEmpty() || dib.Width() == 0 || dib.Height() == 0)
        return false;
    CAtomicFile file(path);
    return file.IsOpen() && row->put(file, dib, option, progress) && file.Commit();
}
