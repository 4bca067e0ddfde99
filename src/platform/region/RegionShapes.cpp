// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/region/Region.h"
#include "platform/region/RegionBuilder.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

constexpr int64_t FloorHalf(int64_t value)
{
    return value >> 1;
}

constexpr int64_t CeilDivide(int64_t a, int64_t positive)
{
    return a > 0 ? (a - 1) / positive + 1 : -(-a / positive);
}

int Limited(int64_t x)
{
    return static_cast<int>(std::clamp<int64_t>(x, -CRegion::kLimit, CRegion::kLimit));
}

/// One side of a polygon: crosses the centre lines of the rows [top, bottom).
struct Edge {
    int top = 0;
    int bottom = 0;
    int64_t doubledRise = 0;    ///< twice the height of the whole side
    int64_t numerator = 0;      ///< on row `top`; over doubledRise, half a pixel left of the crossing
    int64_t numeratorAdded = 0; ///< from one row to the next
    int64_t Crossing() const { return CeilDivide(numerator, doubledRise); }
};

/// Points far outside are drawn in, so that no product overflows.
Point Bounded(Point point)
{
    constexpr int kFar = 4 * CRegion::kLimit;
    return {std::clamp(point.x, -kFar, kFar), std::clamp(point.y, -kFar, kFar)};
}

std::vector<Edge> EdgesOf(std::span<const Point> points)
{
    std::vector<Edge> edges;
    for (size_t i = 0; i < points.size(); ++i) {
        Point upper = Bounded(points[i]);
        Point lower = Bounded(points[(i + 1) % points.size()]);
        if (upper.y > lower.y)
            std::swap(upper, lower);
        const int64_t rise = int64_t{lower.y} - upper.y;
        const int64_t run = int64_t{lower.x} - upper.x;
        Edge edge{Limited(upper.y), Limited(lower.y), 2 * rise, 0, 2 * run};
        edge.numerator = 2 * rise * upper.x + run - rise + 2 * run * (edge.top - upper.y);
        if (edge.top < edge.bottom)
            edges.push_back(edge);
    }
    std::ranges::sort(edges, {}, &Edge::top);
    return edges;
}

} // namespace

std::optional<CRegion> CRegion::Ellipse(const Rect& box)
{
    const Rect shown =
        box.Intersected({-CRegion::kLimit, -CRegion::kLimit, CRegion::kLimit, CRegion::kLimit});
    if (shown.IsEmpty())
        return CRegion();
    CRegionBuilder builder(static_cast<size_t>(shown.Height()));
    if (builder.IsEmpty())
        return std::nullopt;
    // Doubled, so that centres of pixels and of the box are whole numbers.
    const int64_t width = int64_t{box.right} - box.left;
    const int64_t height = int64_t{box.bottom} - box.top;
    const int64_t centreX = int64_t{box.left} + box.right;
    const int64_t centreY = int64_t{box.top} + box.bottom;
    for (int y = shown.top; y < shown.bottom; ++y) {
        const int64_t fromCentre = 2 * int64_t{y} + 1 - centreY;
        const double chord =
            std::sqrt(static_cast<double>(height - fromCentre) * static_cast<double>(height + fromCentre));
        const auto reach =
            static_cast<int64_t>(static_cast<double>(width) * chord / static_cast<double>(height));
        const int left = std::max(shown.left, Limited(FloorHalf(centreX - reach)));
        const int right = std::min(shown.right, Limited(FloorHalf(centreX + reach - 1) + 1));
        if (left < right)
            builder.AddRun(y, left, right);
    }
    return builder.Finish();
}

std::optional<CRegion> CRegion::Polygon(std::span<const Point> points)
{
    const std::vector<Edge> edges = EdgesOf(points);
    int64_t crossings = 0;
    for (const Edge& edge : edges)
        crossings += edge.bottom - edge.top;
    CRegionBuilder builder(static_cast<size_t>(crossings / 2));
    if (builder.IsEmpty())
        return std::nullopt;

    std::vector<Edge> active;
    std::vector<int> columns;
    auto next = edges.begin();
    for (int y = edges.empty() ? 0 : edges.front().top; next != edges.end() || !active.empty(); ++y) {
        std::erase_if(active, [&](const Edge& edge) { return edge.bottom <= y; });
        if (active.empty() && next != edges.end())
            y = next->top;
        for (; next != edges.end() && next->top == y; ++next)
            active.push_back(*next);
        columns.clear();
        for (Edge& edge : active) {
            columns.push_back(Limited(edge.Crossing()));
            edge.numerator += edge.numeratorAdded;
        }
        std::ranges::sort(columns);
        for (size_t i = 0; i + 1 < columns.size(); i += 2) {
            if (columns[i] < columns[i + 1])
                builder.AddRun(y, columns[i], columns[i + 1]);
        }
    }
    return builder.Finish();
}
