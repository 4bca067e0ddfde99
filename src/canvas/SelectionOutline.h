// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/ViewGeometry.h"
#include "platform/dib/PackedDib.h"
#include "platform/region/Region.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

/// The outline of a selection along its pixel edges: black and white dashes, readable on every background,
/// that wander with the phase. Made once for a region; drawn at any zoom, at the cost of the bands that are
/// seen.
class CSelectionOutline {
public:
    /// Dashes are as long as gaps; the pattern repeats after this many phases.
    static constexpr int kPeriod = 8;

    void Build(const CRegion& region);
    [[nodiscard]] bool IsEmpty() const { return m_edges.empty(); }
    /// Draws on the outermost pixels inside the region. `target` shows the client rectangle `area`;
    /// offset: canvas pixels by which the outline is shown away from its place while it is dragged.
    void Paint(const BitmapView& target, const Rect& area, const ViewGeometry& geometry, Point offset,
               int phase) const;

private:
    enum class Side : uint8_t { Top, Bottom, Left, Right };
    /// A straight piece in document pixels: at `position`, from `from` to `to` along it.
    struct Edge {
        int position;
        int from;
        int to;
        Side side;
    };

    /// The edges between two heights, which no other band reaches into.
    struct Band {
        int top;
        size_t firstEdge;
    };

    void BeginBand(int top) { m_bands.push_back({top, m_edges.size()}); }
    /// Those of the edges that may be seen between two heights.
    [[nodiscard]] std::span<const Edge> EdgesBetween(int top, int bottom) const;
    void AddHorizontal(std::span<const Rect> above, std::span<const Rect> below, int y);

    std::vector<Edge> m_edges;
    std::vector<Band> m_bands; ///< from the top, so that a small part is painted without looking at all edges
};
