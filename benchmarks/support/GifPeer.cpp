// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/GifPeer.h"

#include <gif_lib.h>

#include <algorithm>
#include <cstring>

namespace {

struct Source {
    const std::vector<uint8_t>& file;
    size_t at = 0;
};

int Write(GifFileType* gif, const GifByteType* bytes, int count)
{
    auto& file = *static_cast<std::vector<uint8_t>*>(gif->UserData);
    file.insert(file.end(), bytes, bytes + count);
    return count;
}

int Read(GifFileType* gif, GifByteType* bytes, int count)
{
    auto& source = *static_cast<Source*>(gif->UserData);
    const size_t length = std::min(static_cast<size_t>(count), source.file.size() - source.at);
    std::memcpy(bytes, source.file.data() + source.at, length);
    source.at += length;
    return static_cast<int>(length);
}

} // namespace

std::vector<uint8_t> EncodeWithGiflib(const std::vector<uint8_t>& indices, int width, int height)
{
    std::vector<uint8_t> file;
    GifFileType* const gif = EGifOpen(&file, Write, nullptr);
    ColorMapObject* const map = GifMakeMapObject(256, nullptr);
    EGifPutScreenDesc(gif, width, height, 8, 0, map);
    EGifPutImageDesc(gif, 0, 0, width, height, false, nullptr);
    for (int y = 0; y < height; ++y) {
        // The library takes a row as something it could change, but does not.
        auto* row = const_cast<GifPixelType*>(indices.data()) + ptrdiff_t{y} * width;
        EGifPutLine(gif, row, width);
    }
    GifFreeMapObject(map);
    EGifCloseFile(gif, nullptr);
    return file;
}

void DecodeWithGiflib(const std::vector<uint8_t>& file)
{
    Source source{file};
    GifFileType* const gif = DGifOpen(&source, Read, nullptr);
    DGifSlurp(gif);
    DGifCloseFile(gif, nullptr);
}
