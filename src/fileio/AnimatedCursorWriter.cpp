// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/AnimatedCursorWriter.h"

#include "fileio/AnimationFrames.h"
#include "fileio/IconWriter.h"
#include "platform/io/AtomicFile.h"

#include <algorithm>
#include <string_view>

namespace {

constexpr uint32_t kChunkHead = 8;
constexpr uint32_t kHeaderBytes = 36;
constexpr uint32_t kFramesAreIcons = 1;

void WriteName(CByteWriter& writer, std::string_view name)
{
    writer.Text(name, 4);
}

/// Sixtieths of a second from hundredths.
uint32_t RateOf(uint16_t delay)
{
    return std::max((uint32_t{delay} * 60 + 50) / 100, 1U);
}

/// Everything in front of the frames. frameBytes: of one frame's chunk, head included.
CByteWriter FrontOf(const CObjectCanvas& canvas, uint32_t frameCount, uint64_t frameBytes)
{
    const auto listBytes = static_cast<uint32_t>(4 + frameCount * frameBytes);
    CByteWriter writer;
    WriteName(writer, "RIFF");
    writer.U32(4 + kChunkHead + kHeaderBytes + kChunkHead + listBytes);
    WriteName(writer, "ACON");
    WriteName(writer, "anih");
    writer.U32(kHeaderBytes);
    writer.U32(kHeaderBytes);
    writer.U32(frameCount);
    writer.U32(frameCount); // steps
    writer.I32(canvas.width);
    writer.I32(canvas.height);
    writer.U32(32); // bits per pixel
    writer.U32(1);  // planes
    writer.U32(RateOf(canvas.frameDelay));
    writer.U32(kFramesAreIcons);
    WriteName(writer, "LIST");
    writer.U32(listBytes);
    WriteName(writer, "fram");
    return writer;
}

} // namespace

bool SaveAnimatedCursorFile(const CObjectCanvas& canvas, const std::filesystem::path& path, Point hotSpot,
                            IProgress* progress)
{
    const CAnimationFrames frames(canvas);
    const auto count = static_cast<uint32_t>(frames.Count());
    const uint64_t frameBytes = kChunkHead + IconFileBytes(canvas.Size());
    if (count == 0 || canvas.width <= 0 || canvas.height <= 0 || count * frameBytes > INT32_MAX)
        return false;
    CAtomicFile file(path);
    if (!file.Write(FrontOf(canvas, count, frameBytes).Collected()))
        return false;
    for (uint32_t index = 0; index < count; ++index) {
        const CPackedDib picture = frames.Frame(index);
        if (picture.IsEmpty())
            return false;
        CByteWriter writer;
        WriteName(writer, "icon");
        writer.U32(static_cast<uint32_t>(frameBytes - kChunkHead));
        WriteIcon(writer, picture, IconKind::Cursor, hotSpot);
        if (!file.Write(writer.Collected()))
            return false;
        if (progress != nullptr)
            progress->SetPosition(static_cast<int>((index + 1) * 100 / count));
    }
    return file.Commit();
}
