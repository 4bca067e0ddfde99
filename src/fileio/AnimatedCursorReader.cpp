// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/AnimatedCursorReader.h"

#include "fileio/IconReader.h"
#include "fileio/LoadedPicture.h"

#include <algorithm>
#include <optional>

namespace {

constexpr size_t kDirectoryEntryBytes = 16;

constexpr uint32_t Identifier(const char (&name)[5])
{
    uint32_t value = 0;
    for (int index = 3; index >= 0; --index)
        value = value << 8 | static_cast<uint8_t>(name[index]);
    return value;
}

/// What the chunks of an animated cursor say.
struct AnimationFacts {
    uint32_t frameCount = 0;
    uint32_t defaultRate = 0;          ///< in sixtieths of a second
    std::optional<uint32_t> firstRate; ///< of the "rate" chunk
};

/// The size of a chunk that is skipped, and the byte that fills it up. What lies behind the end of the file
/// ends the scan.
bool SkipChunk(CByteReader& reader)
{
    uint32_t size = 0;
    if (!reader.ReadU32(size))
        return false;
    return reader.Skip(uint64_t{size} + size % 2) || reader.Seek(reader.Size());
}

bool ReadRates(CByteReader& reader, AnimationFacts& facts)
{
    uint32_t size = 0;
    std::span<const uint8_t> rates;
    if (!reader.ReadU32(size) || !reader.ReadBytes(size, rates))
        return false;
    CByteReader first(rates);
    uint32_t rate = 0;
    if (first.ReadU32(rate))
        facts.firstRate = rate;
    return size % 2 == 0 || reader.Skip(1) || reader.Remaining() == 0;
}

bool ReadAnimationHeader(CByteReader& reader, AnimationFacts& facts)
{
    return reader.Skip(4 + 4) && reader.ReadU32(facts.frameCount) && reader.Skip(5 * 4) &&
           reader.ReadU32(facts.defaultRate) && reader.Skip(4);
}

/// Whether an image seems to begin `skipped` bytes further on.
bool IsImageBehind(CByteReader reader, uint64_t skipped)
{
    uint32_t headerBytes = 0;
    return reader.Skip(skipped) && (PngAt(reader) || (reader.ReadU32(headerBytes) && headerBytes == 40));
}

bool ReadAnimationFrame(CObjectCanvas& canvas, CByteReader& reader)
{
    uint32_t size = 0;
    uint16_t count = 0;
    if (!reader.ReadU32(size))
        return false;
    const uint64_t end = reader.Position() + size + size % 2;
    if (!reader.Skip(4) || !reader.ReadU16(count))
        return false;
    // A directory has one entry, whatever count it states, unless its image stands behind as many as stated.
    const bool hasSeveral =
        !IsImageBehind(reader, kDirectoryEntryBytes) && IsImageBehind(reader, count * kDirectoryEntryBytes);
    if (!reader.Skip((hasSeveral ? count : 1) * kDirectoryEntryBytes))
        return false;
    // As a rule the frame ends with its image, whatever size it states. Other images of the frame are passed
    // over, and so is what may follow a compressed one.
    const bool endsWithImage = !hasSeveral && !PngAt(reader);
    if (!ReadIconImage(canvas, reader))
        return false;
    return endsWithImage || reader.Position() >= end || reader.Seek(std::min(end, reader.Size()));
}

uint16_t DelayOf(uint32_t rate)
{
    return static_cast<uint16_t>(std::min(rate * 5.0 * 0.33333334 + 0.5, 65535.0));
}

bool ReadAnimation(CObjectCanvas& canvas, CByteReader& reader, IProgress* progress)
{
    uint32_t name = 0;
    if (!reader.ReadU32(name) || name != Identifier("RIFF") || !reader.Skip(4))
        return false;
    const auto report = [&] {
        if (progress != nullptr)
            progress->SetPosition(static_cast<int>(reader.Position() * 100 / reader.Size()));
    };
    report();
    AnimationFacts facts;
    while (reader.ReadU32(name)) {
        bool isRead = true;
        if (name == Identifier("LIST")) {
            isRead = reader.Skip(4);
        } else if (name == Identifier("seq ") || name == Identifier("IART") || name == Identifier("INAM")) {
            isRead = SkipChunk(reader);
        } else if (name == Identifier("rate")) {
            isRead = ReadRates(reader, facts);
        } else if (name == Identifier("anih")) {
            isRead = ReadAnimationHeader(reader, facts);
        } else if (name == Identifier("icon")) {
            isRead = ReadAnimationFrame(canvas, reader);
            report();
        }
        if (!isRead)
            return false;
    }
    if (facts.frameCount == 0 || canvas.objects.Count() != facts.frameCount)
        return false;
    canvas.frameDelay = DelayOf(facts.firstRate.value_or(facts.defaultRate));
    return true;
}

} // namespace

bool LoadAnimatedCursorFile(CObjectCanvas& canvas, const std::filesystem::path& path, IProgress* progress)
{
    return LoadAllOrNothing(canvas, path, progress, ReadAnimation);
}
