// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/SelectionOutline.h"

#include <algorithm>

namespace {

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

/// Rows of the window whose pixels are found together.
constexpr int kStripRows = 32;

int StripsFor(int rows)
{
    return (rows + kStripRows - 1) / kStripRows;
}

} // namespace

void CSelectionOutline::Build(const CRegion& region)
{
    m_edges.clear();
    m_bands.clear();
    m_strips.clear();
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

void CSelectionOutline::Place(const ViewGeometry& geometry, Point offset) const
{
    const auto strips = static_cast<size_t>(StripsFor(std::max(0, geometry.client.height)));
    if (m_strips.size() == strips && geometry == m_geometry && offset == m_offset)
        return;
    m_geometry = geometry;
    m_offset = offset;
    m_strips.assign(strips, {});
}

const COutlineBits& CSelectionOutline::Strip(size_t index) const
{
    COutlineBits& strip = m_strips[index];
    if (!strip.Area().IsEmpty())
        return strip;
    const int first = static_cast<int>(index) * kStripRows;
    const Rect area{0, first, m_geometry.client.width,
                    std::min(first + kStripRows, m_geometry.client.height)};
    strip = COutlineBits(area);
    // Rounding may show an edge a pixel away.
    const Rect seen = area.Moved(-m_offset.x, -m_offset.y).Inflated(2);
    const int top = AddClamped(m_geometry.ToDocument(Point{0, seen.top}).y, -1);
    const int bottom = AddClamped(m_geometry.ToDocument(Point{0, seen.bottom}).y, 1);
    const Point corner = m_geometry.ToClient(Point{0, 0});
    const int zoom = m_geometry.zoom;
    const auto shown = [zoom](int64_t begin, int offset, int at) {
        return begin + offset + (zoom >= 1 ? int64_t{at} * zoom : at / -zoom);
    };
    const auto columnOf = [&](int x) { return shown(corner.x, m_offset.x, x); };
    const auto rowOf = [&](int y) { return shown(corner.y, m_offset.y, y); };
    for (const Edge& edge : EdgesBetween(top, bottom)) {
        const int inside = edge.side == Side::Bottom || edge.side == Side::Right ? -1 : 0;
        if (edge.side == Side::Top || edge.side == Side::Bottom)
            strip.AddRow(rowOf(edge.position) + inside, columnOf(edge.from), columnOf(edge.to));
        else
            strip.AddColumn(columnOf(edge.position) + inside, rowOf(edge.from), rowOf(edge.to));
    }
    return strip;
}

void CSelectionOutline::Paint(const BitmapView& target, const Rect& area, const ViewGeometry& geometry,
                              Point offset, int phase) const
{
    const Rect shown = area.Intersected(Rect::At({0, 0}, geometry.client));
    if (IsEmpty() || shown.IsEmpty())
        return;
    Place(geometry, offset);
    for (int strip = shown.top / kStripRows; strip < StripsFor(shown.bottom); ++strip)
        Strip(static_cast<size_t>(strip)).Paint(target, area, phase);
}

void CSelectionOutline::VisitCovered(const ViewGeometry& geometry, Point offset,
                                     const std::function<void(const Rect&)>& visit) const
{
    if (IsEmpty())
        return;
    Place(geometry, offset);
    for (size_t strip = 0; strip < m_strips.size(); ++strip)
        Strip(strip).VisitCovered(visit);
}
