// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/CodecSupport.h"

#include "platform/codec/Image.h"
#include "platform/io/FileBytes.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <random>

CPackedDib LoadPicture(const std::filesystem::path& path)
{
    using Loader = CPackedDib (*)(const std::filesystem::path&, IProgress*);
    static const std::map<std::string, Loader> kLoaders = {
        {".png", CImage::LoadPNGFile}, {".jpg", CImage::LoadJPGFile},  {".jpeg", CImage::LoadJPGFile},
        {".bmp", CImage::LoadBmpFile}, {".dib", CImage::LoadBmpFile},  {".tga", CImage::LoadTGAFile},
        {".pcx", CImage::LoadPCXFile}, {".tif", CImage::LoadTIFFFile}, {".tiff", CImage::LoadTIFFFile}};
    std::string extension = path.extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(), ::tolower);
    const auto found = kLoaders.find(extension);
    return found == kLoaders.end() ? CPackedDib() : found->second(path, nullptr);
}

CPackedDib LoadBytes(std::span<const uint8_t> bytes, const std::filesystem::path& path)
{
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return LoadPicture(path);
}

std::vector<uint8_t> FileContent(const std::filesystem::path& path)
{
    const std::optional<CHeapBlock> block = ReadFileBytes(path);
    return block ? std::vector<uint8_t>(block->Bytes().begin(), block->Bytes().end())
                 : std::vector<uint8_t>();
}

CPackedDib MixedPicture(int width, int height)
{
    CPackedDib dib = RandomDib(width, height, 11);
    for (int y = height / 3; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            uint8_t* pixel = dib.Row(y) + ptrdiff_t{x} * 4;
            if (y < height / 3 * 2) {
                const uint8_t gradient[] = {static_cast<uint8_t>(x), static_cast<uint8_t>(y),
                                            static_cast<uint8_t>(x + y), static_cast<uint8_t>(255 - x)};
                std::copy_n(gradient, 4, pixel);
            } else {
                std::fill_n(pixel, 4, static_cast<uint8_t>(x / 40));
            }
        }
    }
    return dib;
}
