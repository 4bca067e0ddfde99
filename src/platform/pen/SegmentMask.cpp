// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/pen/SegmentMask.h"

#include "platform/dib/PackedDib.h"
#include "platform/region/Region.h"

#include <algorithm>
#include <cmath>

namespace {

/// The line's shape in half pixels, so that the centres of pixels stand at whole numbers.
class CSegmentShape {
public:
    CSegmentShape(Point from, Point to, const Pen& pen)
        : m_originX(2.0 * from.x - (pen.width % 2 == 0 ? 1 : 0)),
          m_originY(2.0 * from.y - (pen.width % 2 == 0 ? 1 : 0)), m_alongX(2.0 * to.x - 2.0 * from.x),
          m_alongY(2.0 * to.y - 2.0 * from.y), m_endX(m_alongX), m_endY(m_alongY),
          m_length(std::sqrt(m_alongX * m_alongX + m_alongY * m_alongY)), m_norm(m_length),
          m_halfWidth(pen.width), m_cap(pen.cap)
    {
        if (m_length == 0) // a dab lies level
            m_alongX = m_norm = 1;
    }

    /// How far a pixel's centre lies outside the shape; negative inside. With division and square root
    /// rounded correctly, the sign is exact for all lines that fit a picture.
    double DistanceOutside(int x, int y) const
    {
        const double px = 2.0 * x - m_originX;
        const double py = 2.0 * y - m_originY;
        const double along = (px * m_alongX + py * m_alongY) / m_norm;
        const double aside = std::abs((px * m_alongY - py * m_alongX) / m_norm) - m_halfWidth;
        const double past = std::max(-along, along - m_length);
        if (m_cap == PenCap::Round) {
            if (past <= 0)
                return aside;
            const double endX = along < 0 ? px : px - m_endX;
            const double endY = along < 0 ? py : py - m_endY;
            return std::sqrt(endX * endX + endY * endY) - m_halfWidth;
        }
        const double beyond = past - m_halfWidth;
        if (aside <= 0 || beyond <= 0)
            return std::max(aside, beyond);
        return std::sqrt(aside * aside + beyond * beyond);
    }

    /// The pixels of row y, within [left, right), that lie at most `reach` outside; found from the box
    /// around the shape, then cut to the exact ends.
    CCoverageMask::Run RowWithin(int y, double reach, int left, int right) const
    {
        const double py = 2.0 * y - m_originY;
        const double radius = m_halfWidth + reach;
        double low = 2.0 * left - m_originX;
        double high = 2.0 * right - m_originX;
        Clip(low, high, m_alongX / m_norm, py * m_alongY / m_norm, -radius, m_length + radius);
        Clip(low, high, m_alongY / m_norm, -py * m_alongX / m_norm, -radius, radius);
        if (low > high)
            return {left, left};
        int from =
            static_cast<int>(std::max(static_cast<double>(left), std::floor((low + m_originX) / 2) - 1));
        int to =
            static_cast<int>(std::min(static_cast<double>(right), std::ceil((high + m_originX) / 2) + 2));
        while (from < to && DistanceOutside(from, y) > reach)
            ++from;
        while (from < to && DistanceOutside(to - 1, y) > reach)
            --to;
        return {from, std::max(from, to)};
    }

private:
    /// Narrows [low, high] to where slope * x + offset lies in [minimum, maximum].
    static void Clip(double& low, double& high, double slope, double offset, double minimum, double maximum)
    {
        if (slope == 0)
            return;
        const double a = (minimum - offset) / slope;
        const double b = (maximum - offset) / slope;
        low = std::max(low, std::min(a, b) - 1);
        high = std::min(high, std::max(a, b) + 1);
    }

    double m_originX;
    double m_originY;
    double m_alongX;
    double m_alongY;
    double m_endX; ///< the second end, from the first
    double m_endY;
    double m_length;
    double m_norm; ///< length of m_along
    double m_halfWidth;
    PenCap m_cap;
};

/// Writes coverage of the row's pixels [left, right), all of which lie in reach of the pen.
void FillRun(uint8_t* coverage, int left, int right, int y, const CSegmentShape& shape, const Pen& pen)
{
    if (pen.softness < 2) {
        std::fill_n(coverage, right - left, uint8_t{255});
        return;
    }
    const double perHalfPixel = 255.0 / (2 * pen.softness);
    for (int x = left; x < right; ++x) {
        const double value = 128 - shape.DistanceOutside(x, y) * perHalfPixel;
        *coverage++ = static_cast<uint8_t>(std::clamp(value, 0.0, 255.0));
    }
}

} // namespace

std::optional<CCoverageMask> CCoverageMask::Create(const Rect& bounds)
{
    CCoverageMask mask;
    if (bounds.IsEmpty() || int64_t{bounds.Width()} * bounds.Height() > kMaxPicturePixels)
        return std::nullopt;
    const auto rows = static_cast<size_t>(bounds.Height());
    mask.m_bounds = bounds;
    mask.m_block = CHeapBlock::Allocate(rows * static_cast<size_t>(bounds.Width()));
    if (mask.m_block.IsEmpty())
        return std::nullopt;
    mask.m_runs.resize(rows);
    return mask;
}

Rect SegmentBox(const Rect& target, Point from, Point to, const Pen& pen, const CRegion& selection)
{
    const int margin = (pen.width + 1) / 2 + std::max(2, (pen.softness + 1) / 2);
    const Rect box =
        Rect{std::min(from.x, to.x), std::min(from.y, to.y), std::max(from.x, to.x), std::max(from.y, to.y)}
            .Inflated(margin)
            .Intersected(target);
    return selection.IsEmpty() ? box : box.Intersected(selection.Bounds());
}

std::optional<CCoverageMask> RasteriseSegment(const Rect& target, Point from, Point to, const Pen& pen,
                                              const CRegion& selection)
{
    const Rect box = SegmentBox(target, from, to, pen, selection);
    if (box.IsEmpty())
        return std::nullopt;
    std::optional<CCoverageMask> mask = CCoverageMask::Create(
        {box.left - target.left, box.top - target.top, box.right - target.left, box.bottom - target.top});
    if (!mask)
        return std::nullopt;

    const CSegmentShape shape(from, to, pen);
    const double reach = pen.softness < 2 ? 0 : pen.softness;
    for (int y = box.top; y < box.bottom; ++y) {
        const CCoverageMask::Run run = shape.RowWithin(y, reach, box.left, box.right);
        if (run.left == run.right)
            continue;
        const int row = y - target.top;
        const auto fill = [&](int left, int right) {
            FillRun(mask->At(left - target.left, row), left, right, y, shape, pen);
        };
        if (selection.IsEmpty())
            fill(run.left, run.right);
        else
            VisitRow(selection, y, run.left, run.right, fill);
        mask->SetRun(row, {run.left - target.left, run.right - target.left});
    }
    return mask;
}
