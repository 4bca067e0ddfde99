// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/AviImport.h"

#include "fileio/LoadedPicture.h"
#include "fileio/StreamTags.h"
#include "platform/io/ByteReader.h"

#include <algorithm>
#include <array>
#include <fstream>

namespace {

/// Everything up to the end of the main header.
constexpr size_t kFrontBytes = 32 + 56;

} // namespace

std::optional<AviHeader> ReadAviHeader(const std::filesystem::path& path)
{
    std::array<uint8_t, kFrontBytes> front{};
    std::ifstream file(path, std::ios::binary);
    if (!file.read(reinterpret_cast<char*>(front.data()), kFrontBytes))
        return std::nullopt;
    CByteReader reader(front);
    uint32_t frameCount = 0;
    uint32_t width = 0;
    uint32_t height = 0;
    const bool isRead = ReadTag(reader, "RIFF") && reader.Skip(4) && ReadTag(reader, "AVI ") &&
                        ReadTag(reader, "LIST") && reader.Skip(4) && ReadTag(reader, "hdrl") &&
                        ReadTag(reader, "avih") && reader.Skip(4) && reader.Skip(4 * 4) &&
                        reader.ReadU32(frameCount) && reader.Skip(3 * 4) && reader.ReadU32(width) &&
                        reader.ReadU32(height);
    if (!isRead || width > INT32_MAX || height > INT32_MAX ||
        uint64_t{width} * height > static_cast<uint64_t>(kMaxPicturePixels))
        return std::nullopt;
    return AviHeader{frameCount, {static_cast<int>(width), static_cast<int>(height)}};
}

uint16_t FrameDelayOf(FrameRate rate)
{
    if (rate.rate <= 0)
        return 0;
    return static_cast<uint16_t>(std::clamp(rate.scale * 100.0 / rate.rate + 0.5, 0.0, 65535.0));
}

bool LoadAviFile(CObjectCanvas& canvas, const std::filesystem::path& path, IProgress* progress)
{
    const std::optional<AviHeader> header = ReadAviHeader(path);
    if (!header)
        return false;
    canvas.width = header->size.width;
    canvas.height = header->size.height;
    CVideoFile video;
    if (!video.Open(path))
        return false;
    if (!video.Start())
        return true;
    uint64_t counter = 0;
    int64_t pixels = 0;
    bool isDelivered = true;
    while (isDelivered) {
        CPackedDib frame = video.NextFrame();
        isDelivered = !frame.IsEmpty();
        if (isDelivered) {
            pixels += int64_t{frame.Width()} * frame.Height();
            AppendPicture(canvas, std::move(frame));
            canvas.frameDelay = FrameDelayOf(video.Rate());
        }
        counter += 100;
        if (progress != nullptr && header->frameCount != 0)
            progress->SetPosition(static_cast<int>(std::min<uint64_t>(counter / header->frameCount, 100)));
        isDelivered = isDelivered && pixels <= kMaxLoadedPixels;
    }
    return true;
}
