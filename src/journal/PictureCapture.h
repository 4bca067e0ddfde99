// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/PictureSnapshot.h"
#include "model/RasterImage.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

/// Takes the pixels of the version that a picture shows down, a few rows at a time, while nobody waits: all
/// of them, or what differs from the version before. What is taken is the version as it was when the capture
/// was made, whatever is painted meanwhile.
class CPictureCapture {
public:
    using Sink = std::function<void(std::span<const uint8_t> bytes)>;

    /// The picture shows the version to be taken. base: the version shown before it, whose pixels differ in
    /// part; none when all pixels are to be taken. mostAtOnce: see CPictureSnapshot.
    CPictureCapture(const Ref<CRasterImage>& image, Ref<CPictureVersion> base, size_t mostAtOnce);

    [[nodiscard]] bool IsDone() const { return m_next >= m_height; }
    /// Takes one row more, or all when they are few. False when the snapshot is worth nothing any more.
    [[nodiscard]] bool Advance(const Sink& sink);

private:
    /// Takes what is known to differ at once when it is little, otherwise notes the rows that differ.
    void TakeChanges(const CRasterImage& image);
    void TakeRow(int y, const Sink& sink);
    /// The row of the base; none when it cannot be read any more.
    [[nodiscard]] const uint32_t* BaseRow(int y) const;

    std::unique_ptr<CPictureSnapshot> m_snapshot; ///< none: everything has been taken
    Ref<CPictureVersion> m_base;
    int m_width;
    int m_height;
    int m_next = 0;
    std::vector<bool> m_differs;  ///< by row; empty when all may
    std::vector<uint8_t> m_early; ///< runs taken at once
};
