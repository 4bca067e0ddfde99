// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/SelectionOutline.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr uint32_t kWhite = 0xFFFFFFFF;
constexpr uint32_t kBlack = 0xFF000000;

/// The rectangles that share the top of the first one.
std::span<const Rect> BandAt(std::span<const Rect> rectangles, size_t first)
{
    size_t end = first;
    while (end < rectangles.size() && rectangles[end].top == rectangles[first].top)
        ++end;
    return rectangles.subspan(first, end - first);
}

/// Calls visit(from, to) for what belongs to `spans` but not to `others`; both run left to right.
template <typename Visit>
void VisitDifference(std::span<const Rect> spans, std::span<const Rect> others, Visit visit)
{
    auto other = others.begin();
    for (const Rect& span : spans) {
        int from = span.left;
        while (other != others.end() && other->right <= from)
            ++other;
        for (auto cover = other; cover != others.end() && cover->left < span.right; ++cover) {
            if (from < cover->left)
                visit(from, cover->left);
            from = std::max(from, cover->right);
        }
        if (from < span.right)
            visit(from, span.right);
    }
}

void PaintDash(uint8_t* at, int x, int y, int phase)
{
    constexpr unsigned kHalf = CSelectionOutline::kPeriod / 2;
    // Unsigned, so that the pattern runs on through negative coordinates.
    const unsigned along = static_cast<unsigned>(x) + static_cast<unsigned>(y) - static_cast<unsigned>(phase);
    const uint32_t pixel = along % CSelectionOutline::kPeriod < kHalf ? kBlack : kWhite;
    std::memcpy(at, &pixel, sizeof pixel);
}

} // namespace

void CSelectionOutline::Build(const CRegion& region)
{
    m_edges.clear();
    m_bands.clear();
    const std::span<const Rect> rectangles = region.Rectangles();
    std::span<const Rect> above;
    for (size_t first = 0; first < rectangles.size();) {
        const std::span<const Rect> band = BandAt(rectangles, first);
        const int top = band.front().top;
        if (!above.empty() && above.front().bottom < top) {
            BeginBand(above.front().bottom);
            AddHorizontal(above, {}, above.front().bottom);
            above = {};
        }
        BeginBand(top);
        AddHorizontal(above, band, top);
        for (const Rect& rect : band) {
            m_edges.push_back({rect.left, rect.top, rect.bottom, Side::Left});
            m_edges.push_back({rect.right, rect.top, rect.bottom, Side::Right});
        }
        above = band;
        first += band.size();
    }
    if (!above.empty()) {
        BeginBand(above.front().bottom);
        AddHorizontal(above, {}, above.front().bottom);
    }
}

std::span<const CSelectionOutline::Edge> CSelectionOutline::EdgesBetween(int top, int bottom) const
{
    const auto below = std::ranges::upper_bound(m_bands, bottom, {}, &Band::top);
    auto first = std::ranges::upper_bound(m_bands, top, {}, &Band::top);
    if (first != m_bands.begin())
        --first;
    const size_t from = first == m_bands.end() ? m_edges.size() : first->firstEdge;
    const size_t to = below == m_bands.end() ? m_edges.size() : below->firstEdge;
    return std::span(m_edges).subspan(from, std::max(from, to) - from);
}

void CSelectionOutline::AddHorizontal(std::span<const Rect> above, std::span<const Rect> below, int y)
{
    VisitDifference(below, above, [&](int from, int to) { m_edges.push_back({y, from, to, Side::Top}); });
    VisitDifference(above, below, [&](int from, int to) { m_edges.push_back({y, from, to, Side::Bottom}); });
}

void CSelectionOutline::Paint(const BitmapView& target, const Rect& area, const ViewGeometry& geometry,
                              Point offset, int phase) const
{
    // Rounding may show an edge a pixel away.
    const Rect seen = area.Moved(-offset.x, -offset.y).Inflated(2);
    const int top = AddClamped(geometry.ToDocument(Point{0, seen.top}).y, -1);
    const int bottom = AddClamped(geometry.ToDocument(Point{0, seen.bottom}).y, 1);
    for (const Edge& edge : EdgesBetween(top, bottom)) {
        const bool horizontal = edge.side == Side::Top || edge.side == Side::Bottom;
        const Point from =
            geometry.ToClient(horizontal ? Point{edge.from, edge.position} : Point{edge.position, edge.from});
        const Point to =
            geometry.ToClient(horizontal ? Point{edge.to, edge.position} : Point{edge.position, edge.to});
        const int inside = edge.side == Side::Bottom || edge.side == Side::Right ? -1 : 0;
        if (horizontal) {
            const int y = AddClamped(from.y, offset.y + inside);
            if (y < area.top || y >= area.bottom)
                continue;
            const int end = std::min(AddClamped(to.x, offset.x), area.right);
            for (int x = std::max(AddClamped(from.x, offset.x), area.left); x < end; ++x)
                PaintDash(target.Row(y - area.top) + ptrdiff_t{x - area.left} * 4, x, y, phase);
        } else {
            const int x = AddClamped(from.x, offset.x + inside);
            if (x < area.left || x >= area.right)
                continue;
            const int end = std::min(AddClamped(to.y, offset.y), area.bottom);
            for (int y = std::max(AddClamped(from.y, offset.y), area.top); y < end; ++y)
                PaintDash(target.Row(y - area.top) + ptrdiff_t{x - area.left} * 4, x, y, phase);
        }
    }
}
