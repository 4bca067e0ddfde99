// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/Orientation.h"

#include "platform/io/ByteReader.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstring>
#include <utility>

namespace {

constexpr uint16_t kOrientationTag = 0x0112;
constexpr uint16_t kShortType = 3;
constexpr std::array<uint8_t, 6> kExifMark = {'E', 'x', 'i', 'f', 0, 0};

/// Numbers in the byte order that the file begins with.
class CExifReader {
public:
    CExifReader(CByteReader reader, bool isBigEndian) : m_reader(reader), m_isBigEndian(isBigEndian) {}
    [[nodiscard]] bool Read(uint16_t& value)
    {
        return m_isBigEndian ? m_reader.ReadBigU16(value) : m_reader.ReadU16(value);
    }
    [[nodiscard]] bool Read(uint32_t& value)
    {
        return m_isBigEndian ? m_reader.ReadBigU32(value) : m_reader.ReadU32(value);
    }
    [[nodiscard]] bool Skip(uint64_t bytes) { return m_reader.Skip(bytes); }
    [[nodiscard]] bool Seek(uint64_t position) { return m_reader.Seek(position); }

private:
    CByteReader m_reader;
    bool m_isBigEndian;
};

/// Where a turned picture takes its pixels from.
struct Turn {
    bool swapsAxes;
    bool fromRight;
    bool fromBottom;
};

constexpr Turn kTurns[] = {{false, false, false}, {false, true, false}, {false, true, true},
                           {false, false, true},  {true, false, false}, {true, false, true},
                           {true, true, true},    {true, true, false}};

} // namespace

Orientation ExifOrientation(std::span<const uint8_t> segment)
{
    CByteReader whole(segment);
    std::span<const uint8_t> mark;
    if (!whole.ReadBytes(kExifMark.size(), mark) || !std::equal(mark.begin(), mark.end(), kExifMark.begin()))
        return Orientation::TopLeft;
    const CByteReader content(whole.Rest());
    const std::span<const uint8_t> order = content.Rest();
    CExifReader reader(content, !order.empty() && order[0] == 'M');

    uint32_t directory = 0;
    uint16_t entries = 0;
    if (!reader.Skip(4) || !reader.Read(directory) || !reader.Seek(directory) || !reader.Read(entries))
        return Orientation::TopLeft;
    for (int entry = 0; entry < entries; ++entry) {
        uint16_t tag = 0;
        uint16_t type = 0;
        uint32_t count = 0;
        uint16_t value = 0;
        if (!reader.Read(tag) || !reader.Read(type) || !reader.Read(count) || !reader.Read(value) ||
            !reader.Skip(2))
            break;
        if (tag == kOrientationTag && type == kShortType && value >= 1 && value <= std::size(kTurns))
            return static_cast<Orientation>(value);
    }
    return Orientation::TopLeft;
}

CPackedDib TurnUpright(CPackedDib stored, Orientation orientation)
{
    assert(stored.BitCount() == 32);
    if (orientation == Orientation::TopLeft)
        return stored;
    const Turn turn = kTurns[static_cast<size_t>(orientation) - 1];
    const int width = turn.swapsAxes ? stored.Height() : stored.Width();
    const int height = turn.swapsAxes ? stored.Width() : stored.Height();
    CPackedDib upright = CPackedDib::Create(width, height, 32);
    if (upright.IsEmpty())
        return upright;

    // Steps in the stored picture for one pixel to the right and one down in the upright one.
    const ConstBitmapView from = ViewOf(std::as_const(stored));
    const ptrdiff_t across = turn.fromRight ? -4 : 4;
    const ptrdiff_t down = turn.fromBottom ? -from.stride : from.stride;
    const ptrdiff_t stepX = turn.swapsAxes ? down : across;
    const ptrdiff_t stepY = turn.swapsAxes ? across : down;
    const uint8_t* origin = from.Row(turn.fromBottom ? from.height - 1 : 0) +
                            (turn.fromRight ? ptrdiff_t{from.width - 1} * 4 : 0);

    // Square by square, so that a column of the stored picture is still in the cache for its neighbour.
    constexpr int kSquare = 32;
    for (int top = 0; top < height; top += kSquare) {
        for (int left = 0; left < width; left += kSquare) {
            const int right = std::min(left + kSquare, width);
            for (int y = top; y < std::min(top + kSquare, height); ++y) {
                uint8_t* to = upright.Row(y);
                for (int x = left; x < right; ++x)
                    std::memcpy(to + ptrdiff_t{x} * 4, origin + stepX * x + stepY * y, 4);
            }
        }
    }
    return upright;
}
