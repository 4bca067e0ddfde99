// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Limits.h"
#include "platform/geometry/Geometry.h"
#include "platform/memory/HeapBlock.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <utility>

struct TextStyle;

/// The BITMAPINFOHEADER that begins every packed DIB, little-endian as in files.
struct DibHeader {
    uint32_t size = 40;
    int32_t width = 0;
    int32_t height = 0; ///< positive: rows bottom-up
    uint16_t planes = 1;
    uint16_t bitCount = 0;
    uint32_t compression = 0;
    uint32_t imageBytes = 0;
    int32_t horizontalResolution = 0;
    int32_t verticalResolution = 0;
    uint32_t coloursUsed = 0;
    uint32_t coloursImportant = 0;
};
static_assert(sizeof(DibHeader) == 40);

/// Values of DibHeader::compression that stand in a packed DIB.
enum class DibCompression : uint32_t { Rgb = 0, BitFields = 3 };

/// Entry of a colour table.
struct RgbQuad {
    uint8_t blue = 0;
    uint8_t green = 0;
    uint8_t red = 0;
    uint8_t reserved = 0;
    friend bool operator==(const RgbQuad&, const RgbQuad&) = default;
};
static_assert(sizeof(RgbQuad) == 4);

/// Bytes of one stored row: whole 32-bit words.
[[nodiscard]] constexpr int64_t DibStride(int64_t width, int bitCount)
{
    return (width * bitCount + 31) / 32 * 4;
}

/// A packed device-independent bitmap: one heap block with a header, three colour masks when the
/// compression is bit fields, a colour table up to 8 bits per pixel, and the pixel rows, bottom row first,
/// each padded to a multiple of 4 bytes. Pixels of 32 bits are blue, green, red, alpha. Move-only; an
/// empty one stands for "no picture".
class CPackedDib {
public:
    CPackedDib() = default;

    /// A zero-filled picture of width x height (each at least 0) with 1, 4, 8, 16, 24 or 32 bits per
    /// pixel. Up to 8 bits the colour table has `coloursUsed` entries (2^bits when 0), and the header's
    /// count is set only when `coloursUsed` is above 0. Empty when the size exceeds kMaxPicturePixels or
    /// memory runs out.
    [[nodiscard]] static CPackedDib Create(int width, int height, int bitCount, int coloursUsed = 0);
    /// The same with 16 or 32 bits per pixel and three colour masks.
    [[nodiscard]] static CPackedDib CreateWithMasks(int width, int height, int bitCount, uint32_t redMask,
                                                    uint32_t greenMask, uint32_t blueMask);
    /// Black with alpha 0 everywhere.
    [[nodiscard]] static CPackedDib CreateTransparent(int width, int height)
    {
        return Create(width, height, 32);
    }
    /// 32 bits per pixel whose pixels hold anything until the caller has written every one of them.
    [[nodiscard]] static CPackedDib CreateForOverwrite(int width, int height);

    /// Byte for byte the same; empty when memory runs out.
    [[nodiscard]] CPackedDib Duplicate() const;
    /// The same memory once more, without the text: it stays as long as one of them does, and whoever paints
    /// into one paints into both.
    [[nodiscard]] CPackedDib Share();
    [[nodiscard]] bool IsShared() const { return m_block.IsShared(); }

    /// The text that the picture shows, as long as it shows that and nothing else; none for other pictures.
    /// It goes with the picture that is moved, copies do without it, and who paints into the picture takes it
    /// away.
    [[nodiscard]] const std::shared_ptr<const TextStyle>& WrittenText() const { return m_writtenText; }
    void SetWrittenText(std::shared_ptr<const TextStyle> text) { m_writtenText = std::move(text); }

    [[nodiscard]] bool IsEmpty() const { return m_block.IsEmpty(); }
    explicit operator bool() const { return !IsEmpty(); }

    [[nodiscard]] const DibHeader& Header() const
    {
        return *reinterpret_cast<const DibHeader*>(m_block.Data());
    }
    [[nodiscard]] int Width() const { return Header().width; }
    [[nodiscard]] int Height() const { return Header().height < 0 ? -Header().height : Header().height; }
    [[nodiscard]] ::Size Size() const { return {Width(), Height()}; }
    [[nodiscard]] int BitCount() const { return Header().bitCount; }
    [[nodiscard]] size_t Stride() const { return static_cast<size_t>(DibStride(Width(), BitCount())); }
    /// The whole block.
    [[nodiscard]] std::span<const uint8_t> Block() const { return m_block.Bytes(); }

    /// Red, green and blue mask; none unless the compression is bit fields.
    [[nodiscard]] std::span<const uint32_t> Masks() const;
    [[nodiscard]] std::span<RgbQuad> ColourTable();
    [[nodiscard]] std::span<const RgbQuad> ColourTable() const;

    /// All rows, the bottom one first.
    [[nodiscard]] std::span<uint8_t> Bits();
    [[nodiscard]] std::span<const uint8_t> Bits() const;
    /// Row y of the picture counted from its top.
    [[nodiscard]] uint8_t* Row(int y) { return Bits().data() + RowOffset(y); }
    [[nodiscard]] const uint8_t* Row(int y) const { return Bits().data() + RowOffset(y); }

private:
    [[nodiscard]] size_t RowOffset(int y) const { return static_cast<size_t>(Height() - 1 - y) * Stride(); }
    [[nodiscard]] static CPackedDib Allocate(const DibHeader& header,
                                             BlockContent content = BlockContent::Zeroes);

    CHeapBlock m_block;
    size_t m_bitsOffset = 0;
    std::shared_ptr<const TextStyle> m_writtenText;
};

/// 32-bit pixels that somebody else owns. `top` is the first byte of the top row; the stride is negative
/// where rows are stored bottom-up.
struct BitmapView {
    uint8_t* top = nullptr;
    ptrdiff_t stride = 0;
    int width = 0;
    int height = 0;

    [[nodiscard]] uint8_t* Row(int y) const { return top + stride * y; }
    [[nodiscard]] Size Extent() const { return {width, height}; }
    /// The part inside `rect`, which must lie within the view.
    [[nodiscard]] BitmapView Part(const Rect& rect) const
    {
        return {Row(rect.top) + ptrdiff_t{rect.left} * 4, stride, rect.Width(), rect.Height()};
    }
};

/// The same, to be read only.
struct ConstBitmapView {
    const uint8_t* top = nullptr;
    ptrdiff_t stride = 0;
    int width = 0;
    int height = 0;

    ConstBitmapView() = default;
    ConstBitmapView(const uint8_t* topRow, ptrdiff_t strideBytes, int w, int h)
        : top(topRow), stride(strideBytes), width(w), height(h)
    {
    }
    ConstBitmapView(const BitmapView& view)
        : top(view.top), stride(view.stride), width(view.width), height(view.height)
    {
    }

    [[nodiscard]] const uint8_t* Row(int y) const { return top + stride * y; }
    [[nodiscard]] Size Extent() const { return {width, height}; }
};

/// All pixels of a 32-bit picture.
[[nodiscard]] BitmapView ViewOf(CPackedDib& dib);
[[nodiscard]] ConstBitmapView ViewOf(const CPackedDib& dib);
