// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/region/Region.h"

#include <pixman.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

static_assert(sizeof(Rect) == sizeof(pixman_box32_t) && alignof(Rect) == alignof(pixman_box32_t));

namespace {

constexpr Rect kEverything{-CRegion::kLimit, -CRegion::kLimit, CRegion::kLimit, CRegion::kLimit};

pixman_box32_t BoxOf(const Rect& rect)
{
    return {rect.left, rect.top, rect.right, rect.bottom};
}

/// The library's view of a region; it only reads the rectangles.
pixman_region32_t Lend(const Rect& bounds, const pixman_region32_data_t* data)
{
    pixman_region32_t region;
    if (bounds.IsEmpty())
        pixman_region32_init(&region);
    else
        region = {BoxOf(bounds), const_cast<pixman_region32_data_t*>(data)};
    return region;
}

} // namespace

CRegion::CRegion(const Rect& rect) : m_bounds(rect.Intersected(kEverything))
{
    if (m_bounds.IsEmpty())
        m_bounds = {};
}

template <auto Operation> bool CRegion::Combine(const CRegion& other)
{
    const pixman_region32_t a = Lend(m_bounds, m_data.get());
    const pixman_region32_t b = Lend(other.m_bounds, other.m_data.get());
    pixman_region32_t result;
    pixman_region32_init(&result);
    if (!Operation(&result, &a, &b)) {
        pixman_region32_fini(&result);
        return false;
    }
    if (!pixman_region32_not_empty(&result)) {
        pixman_region32_fini(&result);
        *this = CRegion();
        return true;
    }
    m_bounds = {result.extents.x1, result.extents.y1, result.extents.x2, result.extents.y2};
    m_data = result.data == nullptr ? nullptr : std::shared_ptr<const Data>(result.data, std::free);
    return true;
}

bool CRegion::Unite(const CRegion& other)
{
    return Combine<pixman_region32_union>(other);
}

bool CRegion::Subtract(const CRegion& other)
{
    return Combine<pixman_region32_subtract>(other);
}

bool CRegion::Intersect(const CRegion& other)
{
    return Combine<pixman_region32_intersect>(other);
}

bool CRegion::Translate(int dx, int dy)
{
    if (IsEmpty() || (dx == 0 && dy == 0))
        return true;
    const Rect moved = m_bounds.Moved(dx, dy);
    if (moved.Intersected(kEverything) != moved) {
        // What leaves the range of coordinates is cut off first, so that no sum overflows.
        const Rect kept = kEverything.Moved(-std::clamp(dx, -2 * kLimit, 2 * kLimit),
                                            -std::clamp(dy, -2 * kLimit, 2 * kLimit));
        CRegion inside = *this;
        if (!inside.Intersect(CRegion(kept)))
            return false;
        if (inside.IsEmpty()) {
            *this = CRegion();
            return true;
        }
        if (!inside.Translate(dx, dy))
            return false;
        *this = std::move(inside);
        return true;
    }
    if (m_data != nullptr) {
        const std::span<const Rect> rects = Rectangles();
        auto* data = static_cast<Data*>(std::malloc(sizeof(Data) + rects.size_bytes()));
        if (data == nullptr)
            return false;
        *data = {static_cast<long>(rects.size()), static_cast<long>(rects.size())};
        std::ranges::transform(rects, reinterpret_cast<Rect*>(data + 1), [&](const Rect& rect) {
            return Rect{rect.left + dx, rect.top + dy, rect.right + dx, rect.bottom + dy};
        });
        m_data = std::shared_ptr<const Data>(data, std::free);
    }
    m_bounds = moved;
    return true;
}

int64_t CRegion::Area() const
{
    int64_t area = 0;
    for (const Rect& rect : Rectangles())
        area += int64_t{rect.Width()} * rect.Height();
    return area;
}

bool CRegion::Contains(Point point) const
{
    if (!m_bounds.Contains(point))
        return false;
    const std::span<const Rect> row = Row(point.y);
    const auto found = std::ranges::partition_point(row, [&](const Rect& r) { return r.right <= point.x; });
    return found != row.end() && found->left <= point.x;
}

bool CRegion::Contains(const Rect& rect) const
{
    if (rect.IsEmpty() || rect.Intersected(m_bounds) != rect)
        return false;
    const pixman_region32_t region = Lend(m_bounds, m_data.get());
    const pixman_box32_t box = BoxOf(rect);
    return pixman_region32_contains_rectangle(&region, &box) == PIXMAN_REGION_IN;
}

std::span<const Rect> CRegion::Rectangles() const
{
    if (m_data != nullptr)
        return {reinterpret_cast<const Rect*>(m_data.get() + 1), static_cast<size_t>(m_data->numRects)};
    return {&m_bounds, IsEmpty() ? size_t{0} : size_t{1}};
}

std::span<const Rect> CRegion::Row(int y) const
{
    const std::span<const Rect> all = Rectangles();
    const auto begin = std::ranges::partition_point(all, [&](const Rect& rect) { return rect.bottom <= y; });
    const auto end = std::partition_point(begin, all.end(), [&](const Rect& rect) { return rect.top <= y; });
    return {begin, end};
}

bool operator==(const CRegion& a, const CRegion& b)
{
    return a.m_bounds == b.m_bounds && std::ranges::equal(a.Rectangles(), b.Rectangles());
}
