// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/RasterImage.h"

#include <cstdint>
#include <functional>
#include <vector>

/// Takes the pixels of the version that a picture shows down, a few rows at a time, while nobody waits: all
/// of them, or what differs from the version before. Rows that are about to change are taken at once, so what
/// is taken is the version as it was when the capture was made.
class CPictureCapture {
public:
    using Sink = std::function<void(std::span<const uint8_t> bytes)>;

    /// The picture shows the version to be taken. base: the version shown before it, whose pixels differ in
    /// part; none when all pixels are to be taken.
    CPictureCapture(Ref<CRasterImage> image, Ref<CPictureVersion> base);

    [[nodiscard]] const Ref<CRasterImage>& Image() const { return m_image; }
    [[nodiscard]] bool IsDone() const { return m_next >= m_height; }
    /// Takes one row more, or what was taken before its time.
    void Advance(const Sink& sink);
    /// At most so many bytes TakeRows would copy.
    [[nodiscard]] size_t BytesToTake(int top, int bottom) const;
    /// Takes rows now that have not been taken; Advance hands them on.
    void TakeRows(int top, int bottom);

private:
    void TakeRow(int y, const Sink& sink);
    /// The row of the base; none when it cannot be read any more.
    [[nodiscard]] const uint32_t* BaseRow(int y) const;
    void TakeRun(size_t first, const uint32_t* words, size_t count, const Sink& sink) const;

    Ref<CRasterImage> m_image;
    Ref<CPictureVersion> m_base;
    int m_height;
    int m_next = 0;
    std::vector<bool> m_taken;
    std::vector<uint8_t> m_early; ///< runs taken before their time
};
