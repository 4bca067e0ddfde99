// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

/// Sum that stops at the ends of the 32-bit range: positions read from files may be anything.
[[nodiscard]] constexpr int AddClamped(int a, int b)
{
    const int64_t sum = int64_t{a} + b;
    return static_cast<int>(
        std::clamp<int64_t>(sum, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

/// Product that stops at the ends of the 32-bit range.
[[nodiscard]] constexpr int MultiplyClamped(int a, int b)
{
    const int64_t product = int64_t{a} * b;
    return static_cast<int>(
        std::clamp<int64_t>(product, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

struct Point {
    int x = 0;
    int y = 0;
    friend constexpr bool operator==(const Point&, const Point&) = default;
};

struct Size {
    int width = 0;
    int height = 0;
    friend constexpr bool operator==(const Size&, const Size&) = default;
};

/// Rectangle of pixels; y downward, right and bottom exclusive. Empty when it has no width or height.
struct Rect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    friend constexpr bool operator==(const Rect&, const Rect&) = default;

    [[nodiscard]] static constexpr Rect At(Point corner, Size size)
    {
        return {corner.x, corner.y, AddClamped(corner.x, size.width), AddClamped(corner.y, size.height)};
    }
    [[nodiscard]] constexpr bool IsEmpty() const { return left >= right || top >= bottom; }
    [[nodiscard]] constexpr int Width() const
    {
        return AddClamped(right, left == INT32_MIN ? INT32_MAX : -left);
    }
    [[nodiscard]] constexpr int Height() const
    {
        return AddClamped(bottom, top == INT32_MIN ? INT32_MAX : -top);
    }
    [[nodiscard]] constexpr Point Corner() const { return {left, top}; }
    [[nodiscard]] constexpr bool Contains(Point p) const
    {
        return p.x >= left && p.x < right && p.y >= top && p.y < bottom;
    }
    [[nodiscard]] constexpr Rect Intersected(const Rect& other) const
    {
        return {std::max(left, other.left), std::max(top, other.top), std::min(right, other.right),
                std::min(bottom, other.bottom)};
    }
    /// Smallest rectangle around both; an empty one adds nothing.
    [[nodiscard]] constexpr Rect United(const Rect& other) const
    {
        if (IsEmpty())
            return other;
        if (other.IsEmpty())
            return *this;
        return {std::min(left, other.left), std::min(top, other.top), std::max(right, other.right),
                std::max(bottom, other.bottom)};
    }
    [[nodiscard]] constexpr Rect Moved(int dx, int dy) const
    {
        return {AddClamped(left, dx), AddClamped(top, dy), AddClamped(right, dx), AddClamped(bottom, dy)};
    }
    [[nodiscard]] constexpr Rect Inflated(int by) const
    {
        return {AddClamped(left, -by), AddClamped(top, -by), AddClamped(right, by), AddClamped(bottom, by)};
    }
};
