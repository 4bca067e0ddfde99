// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/geometry/Geometry.h"

enum class RatioChoice { Free, Preserve };

/// The four coupled values of the dialogs that ask for a size: width and height, each in pixels and in
/// percent of the size on entry. Integer arithmetic, divisions truncating.
class CSizeEntry {
public:
    /// The smallest upper end of the pixel range; a larger size on entry extends it.
    static constexpr int kCommonMaximum = 2000;

    /// entry: at least 1 x 1.
    explicit CSizeEntry(Size entry);

    /// Inclusive ends of a value's range.
    struct Range {
        int minimum = 1;
        int maximum = kCommonMaximum;
        [[nodiscard]] int Clamped(int64_t value) const;
    };
    [[nodiscard]] Range PixelWidthRange() const { return m_width.pixelRange; }
    [[nodiscard]] Range PixelHeightRange() const { return m_height.pixelRange; }
    [[nodiscard]] Range PercentWidthRange() const { return m_width.percentRange; }
    [[nodiscard]] Range PercentHeightRange() const { return m_height.percentRange; }

    /// Each sets its value, which must lie in its range, and has the others follow.
    void SetPixelWidth(int value, RatioChoice ratio) { SetPixels(m_width, m_height, value, ratio); }
    void SetPixelHeight(int value, RatioChoice ratio) { SetPixels(m_height, m_width, value, ratio); }
    void SetPercentWidth(int value, RatioChoice ratio) { SetPercent(m_width, m_height, value, ratio); }
    void SetPercentHeight(int value, RatioChoice ratio) { SetPercent(m_height, m_width, value, ratio); }

    [[nodiscard]] Size Pixels() const { return {m_width.pixels, m_height.pixels}; }
    [[nodiscard]] Size Percent() const { return {m_width.percent, m_height.percent}; }

private:
    struct Side {
        explicit Side(int entryPixels);
        int entry;
        int pixels;
        int percent = 100;
        Range pixelRange;
        Range percentRange;
    };
    static void SetPixels(Side& changed, Side& other, int value, RatioChoice ratio);
    static void SetPercent(Side& changed, Side& other, int value, RatioChoice ratio);

    Side m_width;
    Side m_height;
};
