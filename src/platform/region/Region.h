// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/geometry/Geometry.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>

struct pixman_region32_data;

/// A set of pixels kept as rectangles in bands: sorted by top, then by left; the rectangles of one band share
/// top and bottom, never touch each other, and bands of equal columns are one. Copies share their rectangles,
/// so copying costs nothing and cannot fail. Coordinates lie within +-kLimit; y downward.
///
/// Operations that need memory return false, or no region, when it runs out; nothing has changed then.
class CRegion {
public:
    static constexpr int kLimit = 1 << 24;

    /// The empty region.
    CRegion() = default;
    /// All pixels of the rectangle.
    explicit CRegion(const Rect& rect);

    /// The ellipse inscribed in the rectangle: every pixel whose centre lies in it or on its edge.
    [[nodiscard]] static std::optional<CRegion> Ellipse(const Rect& box);
    /// The closed polygon through the points; a pixel belongs to it when a ray from its centre crosses the
    /// outline an odd number of times. Points are corners of pixels. Cost O(rows of all edges), sorted.
    [[nodiscard]] static std::optional<CRegion> Polygon(std::span<const Point> points);

    [[nodiscard]] bool Unite(const CRegion& other);
    [[nodiscard]] bool Subtract(const CRegion& other);
    [[nodiscard]] bool Intersect(const CRegion& other);
    [[nodiscard]] bool Translate(int dx, int dy);

    [[nodiscard]] bool IsEmpty() const { return m_bounds.IsEmpty(); }
    /// Smallest rectangle around all pixels.
    [[nodiscard]] const Rect& Bounds() const { return m_bounds; }
    /// Number of pixels.
    [[nodiscard]] int64_t Area() const;
    [[nodiscard]] bool Contains(Point point) const;
    /// Whether every pixel of the rectangle belongs to the region; an empty rectangle has none.
    [[nodiscard]] bool Contains(const Rect& rect) const;

    /// All rectangles in their order.
    [[nodiscard]] std::span<const Rect> Rectangles() const;
    /// The rectangles that cross row y, left to right. Found by bisection.
    [[nodiscard]] std::span<const Rect> Row(int y) const;

    friend bool operator==(const CRegion& a, const CRegion& b);

private:
    friend class CRegionBuilder;
    using Data = pixman_region32_data;
    template <auto Operation> [[nodiscard]] bool Combine(const CRegion& other);

    Rect m_bounds;
    std::shared_ptr<const Data> m_data; ///< none for the empty region and for a single rectangle
};

/// Calls visit(left, right) for every part of the region on row y within [left, right).
template <typename Visit> void VisitRow(const CRegion& region, int y, int left, int right, Visit visit)
{
    for (const Rect& rect : region.Row(y)) {
        const int from = rect.left > left ? rect.left : left;
        const int to = rect.right < right ? rect.right : right;
        if (from < to)
            visit(from, to);
    }
}
