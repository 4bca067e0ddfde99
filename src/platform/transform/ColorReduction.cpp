// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/transform/ColorReduction.h"

#include <libimagequant.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <vector>

namespace {

constexpr uint32_t kColourMask = 0x00FFFFFF;
/// The usual compromise of quality and time, from 1 (best) to 10 (fastest).
constexpr int kQuantizationSpeed = 4;

struct Release {
    void operator()(liq_attr* attributes) const { liq_attr_destroy(attributes); }
    void operator()(liq_image* image) const { liq_image_destroy(image); }
    void operator()(liq_result* result) const { liq_result_destroy(result); }
};

uint32_t ColourAt(const uint8_t* row, int x)
{
    uint32_t pixel = 0;
    std::memcpy(&pixel, row + ptrdiff_t{x} * 4, sizeof pixel);
    return pixel & kColourMask;
}

RgbQuad QuadOf(uint32_t colour)
{
    return {static_cast<uint8_t>(colour), static_cast<uint8_t>(colour >> 8),
            static_cast<uint8_t>(colour >> 16), 0};
}

/// Palette indices, one byte a pixel, top row first, and their colours.
struct IndexedPicture {
    CHeapBlock indices;
    std::vector<RgbQuad> palette;
};

/// Numbers up to 256 colours in the order of their appearance: a hash table of single steps, a quarter full
/// at most.
class CColourNumbers {
public:
    CColourNumbers() { m_colours.fill(kFree); }

    /// The number of a colour, which is Count() of before for a new one.
    [[nodiscard]] size_t NumberOf(uint32_t colour)
    {
        size_t slot = colour * 0x9E3779B1U >> (32 - kSlotBits); // by the golden ratio
        while (m_colours[slot] != colour) {
            if (m_colours[slot] == kFree) {
                m_colours[slot] = colour;
                m_numbers[slot] = static_cast<uint16_t>(m_count++);
                break;
            }
            slot = (slot + 1) % m_colours.size();
        }
        return m_numbers[slot];
    }
    [[nodiscard]] size_t Count() const { return m_count; }

private:
    static constexpr int kSlotBits = 10;
    static constexpr uint32_t kFree = ~uint32_t{0}; ///< no colour has the topmost byte

    std::array<uint32_t, size_t{1} << kSlotBits> m_colours{};
    std::array<uint16_t, size_t{1} << kSlotBits> m_numbers{};
    size_t m_count = 0;
};

/// Indices of the colours in the order of their appearance; none when there are more than `limit`.
IndexedPicture IndexExactly(const CPackedDib& dib, size_t limit)
{
    IndexedPicture picture{
        CHeapBlock::Allocate(static_cast<size_t>(dib.Width()) * static_cast<size_t>(dib.Height())), {}};
    if (picture.indices.IsEmpty())
        return picture;
    CColourNumbers known;
    uint32_t last = ~uint32_t{0};
    uint8_t lastIndex = 0;
    uint8_t* out = picture.indices.Data();
    for (int y = 0; y < dib.Height(); ++y) {
        const uint8_t* row = dib.Row(y);
        for (int x = 0; x < dib.Width(); ++x) {
            const uint32_t colour = ColourAt(row, x);
            if (colour != last) {
                const size_t number = known.NumberOf(colour);
                if (known.Count() > limit)
                    return {};
                if (known.Count() > picture.palette.size())
                    picture.palette.push_back(QuadOf(colour));
                last = colour;
                lastIndex = static_cast<uint8_t>(number);
            }
            *out++ = lastIndex;
        }
    }
    return picture;
}

/// The library asks for rows of red, green, blue, alpha.
void ProvideRow(liq_color* out, int y, int width, void* dib)
{
    static_assert(sizeof(liq_color) == sizeof(uint32_t));
    const uint8_t* const row = static_cast<const CPackedDib*>(dib)->Row(y);
    // Whole words, which the compiler turns into vectors.
    for (int x = 0; x < width; ++x) {
        const uint32_t colour = ColourAt(row, x);
        const uint32_t swapped =
            0xFF000000U | (colour & 0xFF) << 16 | (colour & 0xFF00) | (colour >> 16 & 0xFF);
        std::memcpy(out + x, &swapped, sizeof swapped);
    }
}

IndexedPicture Quantize(const CPackedDib& dib, int colours)
{
    const std::unique_ptr<liq_attr, Release> attributes(liq_attr_create());
    if (!attributes || liq_set_max_colors(attributes.get(), colours) != LIQ_OK ||
        liq_set_speed(attributes.get(), kQuantizationSpeed) != LIQ_OK)
        return {};
    const std::unique_ptr<liq_image, Release> image(liq_image_create_custom(
        attributes.get(), ProvideRow, const_cast<CPackedDib*>(&dib), dib.Width(), dib.Height(), 0));
    liq_result* made = nullptr;
    if (!image || liq_image_quantize(image.get(), attributes.get(), &made) != LIQ_OK)
        return {};
    const std::unique_ptr<liq_result, Release> result(made);
    liq_set_dithering_level(result.get(), 1.0f);

    IndexedPicture picture{
        CHeapBlock::Allocate(static_cast<size_t>(dib.Width()) * static_cast<size_t>(dib.Height())), {}};
    if (picture.indices.IsEmpty() ||
        liq_write_remapped_image(result.get(), image.get(), picture.indices.Data(), picture.indices.Size()) !=
            LIQ_OK)
        return {};
    const liq_palette* palette = liq_get_palette(result.get());
    for (unsigned i = 0; i < palette->count; ++i)
        picture.palette.push_back({palette->entries[i].b, palette->entries[i].g, palette->entries[i].r, 0});
    return picture;
}

void PackRow(const uint8_t* indices, int width, int bitCount, uint8_t* row)
{
    if (bitCount == 8) {
        std::copy_n(indices, width, row);
        return;
    }
    const int perByte = 8 / bitCount;
    for (int x = 0; x < width; ++x) {
        const int shift = (perByte - 1 - x % perByte) * bitCount;
        row[x / perByte] = static_cast<uint8_t>(row[x / perByte] | indices[x] << shift);
    }
}

CPackedDib Pack(const IndexedPicture& picture, Size size, int bitCount)
{
    if (picture.indices.IsEmpty())
        return {};
    const int entries = std::max<int>(1, static_cast<int>(picture.palette.size()));
    CPackedDib dib = CPackedDib::Create(size.width, size.height, bitCount, entries);
    if (dib.IsEmpty())
        return dib;
    std::ranges::copy(picture.palette, dib.ColourTable().begin());
    for (int y = 0; y < size.height; ++y) {
        const uint8_t* indices =
            picture.indices.Data() + static_cast<size_t>(y) * static_cast<size_t>(size.width);
        PackRow(indices, size.width, bitCount, dib.Row(y));
    }
    return dib;
}

int GrayOf(const uint8_t* pixel)
{
    return static_cast<int>(pixel[0] * 0.11 + pixel[1] * 0.59 + pixel[2] * 0.3);
}

/// Indices into `levels` even grey levels.
IndexedPicture Grays(const CPackedDib& dib, int levels)
{
    IndexedPicture picture{
        CHeapBlock::Allocate(static_cast<size_t>(dib.Width()) * static_cast<size_t>(dib.Height())), {}};
    for (int level = 0; level < levels; ++level) {
        const auto gray = static_cast<uint8_t>(level * 255 / (levels - 1));
        picture.palette.push_back({gray, gray, gray, 0});
    }
    uint8_t* out = picture.indices.Data();
    for (int y = 0; y < dib.Height() && !picture.indices.IsEmpty(); ++y) {
        const uint8_t* row = dib.Row(y);
        for (int x = 0; x < dib.Width(); ++x, row += 4)
            *out++ = static_cast<uint8_t>((GrayOf(row) * (levels - 1) + 127) / 255);
    }
    return picture;
}

/// Black and white by the error diffusion of Floyd and Steinberg, 1976.
IndexedPicture Dithered(const CPackedDib& dib)
{
    const auto width = static_cast<size_t>(dib.Width());
    IndexedPicture picture{CHeapBlock::Allocate(width * static_cast<size_t>(dib.Height())),
                           {{0, 0, 0, 0}, {255, 255, 255, 0}}};
    if (picture.indices.IsEmpty())
        return picture;
    // Sixteenths of errors, with a column on either side.
    std::vector<int> current(width + 2);
    std::vector<int> below(width + 2);
    uint8_t* out = picture.indices.Data();
    for (int y = 0; y < dib.Height(); ++y) {
        const uint8_t* row = dib.Row(y);
        std::ranges::fill(below, 0);
        for (size_t x = 0; x < width; ++x, row += 4) {
            const int wanted = GrayOf(row) + current[x + 1] / 16;
            const bool white = wanted >= 128;
            const int error = wanted - (white ? 255 : 0);
            *out++ = white ? 1 : 0;
            current[x + 2] += error * 7;
            below[x] += error * 3;
            below[x + 1] += error * 5;
            below[x + 2] += error;
        }
        std::swap(current, below);
    }
    return picture;
}

CPackedDib ToHighColors(const CPackedDib& dib)
{
    CPackedDib high = CPackedDib::Create(dib.Width(), dib.Height(), 16);
    for (int y = 0; !high.IsEmpty() && y < dib.Height(); ++y) {
        const uint8_t* from = dib.Row(y);
        uint8_t* to = high.Row(y);
        for (int x = 0; x < dib.Width(); ++x, from += 4, to += 2) {
            const auto five = [](uint8_t value) { return static_cast<uint32_t>((value * 31 + 127) / 255); };
            const uint32_t word = five(from[2]) << 10 | five(from[1]) << 5 | five(from[0]);
            to[0] = static_cast<uint8_t>(word);
            to[1] = static_cast<uint8_t>(word >> 8);
        }
    }
    return high;
}

CPackedDib ToTrueColors(const CPackedDib& dib)
{
    CPackedDib plain = CPackedDib::Create(dib.Width(), dib.Height(), 24);
    for (int y = 0; !plain.IsEmpty() && y < dib.Height(); ++y) {
        const uint8_t* from = dib.Row(y);
        uint8_t* to = plain.Row(y);
        for (int x = 0; x < dib.Width(); ++x, from += 4, to += 3)
            std::copy_n(from, 3, to);
    }
    return plain;
}

} // namespace

CPackedDib ReduceColorQuantity(const CPackedDib& dib, int bitCount, int colours, IProgress* progress)
{
    IndexedPicture picture = IndexExactly(dib, static_cast<size_t>(colours));
    if (picture.indices.IsEmpty())
        picture = Quantize(dib, colours);
    if (progress != nullptr)
        progress->SetPosition(100);
    return Pack(picture, dib.Size(), bitCount);
}

CPackedDib ConvertDIBFormat(const CPackedDib& dib, DibFormat format)
{
    switch (format) {
    case DibFormat::BlackAndWhite:
        return Pack(Dithered(dib), dib.Size(), 1);
    case DibFormat::Colors16:
        return ReduceColorQuantity(dib, 4, 16, nullptr);
    case DibFormat::Colors256:
        return ReduceColorQuantity(dib, 8, 256, nullptr);
    case DibFormat::HighColors:
        return ToHighColors(dib);
    case DibFormat::TrueColors:
        return ToTrueColors(dib);
    case DibFormat::Grays16:
        return Pack(Grays(dib, 16), dib.Size(), 4);
    case DibFormat::Grays256:
        return Pack(Grays(dib, 256), dib.Size(), 8);
    }
    return {};
}
