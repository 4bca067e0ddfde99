// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/RubberBand.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <vector>

namespace {

/// Collects pixels and inverts each once.
class CInverter {
public:
    CInverter(const BitmapView& target, const Rect& area) : m_target(target), m_area(area) {}
    CInverter(const CInverter&) = delete;
    CInverter& operator=(const CInverter&) = delete;
    ~CInverter()
    {
        std::ranges::sort(m_pixels, {}, Key);
        const auto repeated = std::ranges::unique(m_pixels);
        m_pixels.erase(repeated.begin(), repeated.end());
        for (const Point& pixel : m_pixels) {
            uint8_t* at = m_target.Row(pixel.y - m_area.top) + ptrdiff_t{pixel.x - m_area.left} * 4;
            for (int c = 0; c < 3; ++c)
                at[c] = static_cast<uint8_t>(~at[c]);
        }
    }

    void Add(int64_t x, int64_t y)
    {
        if (x >= m_area.left && x < m_area.right && y >= m_area.top && y < m_area.bottom)
            m_pixels.push_back({static_cast<int>(x), static_cast<int>(y)});
    }

    /// The pixels of a straight line, walked along its longer axis and only where that axis is in the area.
    void AddLine(Point from, Point to)
    {
        const bool steep = Distance(from.y, to.y) > Distance(from.x, to.x);
        const auto along = [&](Point p) { return int64_t{steep ? p.y : p.x}; };
        const auto across = [&](Point p) { return int64_t{steep ? p.x : p.y}; };
        if (along(from) > along(to))
            std::swap(from, to);
        const int64_t length = along(to) - along(from);
        const int64_t first = std::max<int64_t>(along(from), steep ? m_area.top : m_area.left);
        const int64_t last = std::min<int64_t>(along(to), int64_t{steep ? m_area.bottom : m_area.right} - 1);
        const double slope =
            length == 0 ? 0.0 : static_cast<double>(across(to) - across(from)) / static_cast<double>(length);
        for (int64_t at = first; at <= last; ++at) {
            const auto other =
                across(from) +
                static_cast<int64_t>(std::floor(static_cast<double>(at - along(from)) * slope + 0.5));
            Add(steep ? other : at, steep ? at : other);
        }
    }

private:
    static int64_t Distance(int a, int b) { return std::abs(int64_t{a} - b); }
    static std::pair<int, int> Key(const Point& pixel) { return {pixel.y, pixel.x}; }

    const BitmapView& m_target;
    const Rect& m_area;
    std::vector<Point> m_pixels;
};

} // namespace

void InvertPolyline(const BitmapView& target, const Rect& area, std::span<const Point> points)
{
    CInverter inverter(target, area);
    for (size_t i = 1; i < points.size(); ++i)
        inverter.AddLine(points[i - 1], points[i]);
}

void InvertRectangle(const BitmapView& target, const Rect& area, const Rect& rect)
{
    if (rect.IsEmpty())
        return;
    const Point corners[] = {{rect.left, rect.top},
                             {rect.right - 1, rect.top},
                             {rect.right - 1, rect.bottom - 1},
                             {rect.left, rect.bottom - 1},
                             {rect.left, rect.top}};
    InvertPolyline(target, area, corners);
}

void InvertEllipse(const BitmapView& target, const Rect& area, const Rect& rect)
{
    if (rect.IsEmpty())
        return;
    CInverter inverter(target, area);
    const double centreX = (static_cast<double>(rect.left) + rect.right - 1) / 2;
    const double centreY = (static_cast<double>(rect.top) + rect.bottom - 1) / 2;
    const double radiusX = (rect.Width() - 1) / 2.0;
    const double radiusY = (rect.Height() - 1) / 2.0;
    const auto offset = [](double distance, double radius, double other) {
        return radius == 0 ? other
                           : other * std::sqrt(std::max(0.0, 1 - distance * distance / (radius * radius)));
    };
    // Once by columns and once by rows: each alone leaves gaps where the curve is steep.
    for (int x = std::max(rect.left, area.left); x < std::min(rect.right, area.right); ++x) {
        const double dy = offset(x - centreX, radiusX, radiusY);
        inverter.Add(x, std::lround(centreY - dy));
        inverter.Add(x, std::lround(centreY + dy));
    }
    for (int y = std::max(rect.top, area.top); y < std::min(rect.bottom, area.bottom); ++y) {
        const double dx = offset(y - centreY, radiusY, radiusX);
        inverter.Add(std::lround(centreX - dx), y);
        inverter.Add(std::lround(centreX + dx), y);
    }
}
