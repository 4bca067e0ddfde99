// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/OutlineBits.h"
#include "canvas/ViewGeometry.h"
#include "platform/dib/PackedDib.h"
#include "platform/region/Region.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

/// The outline of a selection along its pixel edges: black and white dashes, readable on every background,
/// that wander with the phase. Made once for a region and drawn at any zoom. Which pixels of the window it
/// covers is kept until the window shows another part, so that wandering dashes cost these pixels only.
class CSelectionOutline {
public:
    /// Dashes are as long as gaps; the pattern repeats after this many phases.
    static constexpr int kPeriod = COutlineBits::kPeriod;

    void Build(const CRegion& region);
    [[nodiscard]] bool IsEmpty() const { return m_edges.empty(); }
    /// Draws on the outermost pixels inside the region. `target` shows the rectangle `area` of the client
    /// area; offset: canvas pixels by which the outline is shown away from its place while it is dragged.
    void Paint(const BitmapView& target, const Rect& area, const ViewGeometry& geometry, Point offset,
               int phase) const;
    /// Calls visit for rectangles of the client area, few and small, that hold all of what Paint draws.
    void VisitCovered(const ViewGeometry& geometry, Point offset,
                      const std::function<void(const Rect&)>& visit) const;

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
    /// Lets the strips be those of a window.
    void Place(const ViewGeometry& geometry, Point offset) const;
    /// What the outline covers of so many rows of the window placed last.
    [[nodiscard]] const COutlineBits& Strip(size_t index) const;

    std::vector<Edge> m_edges;
    std::vector<Band> m_bands; ///< from the top, so that a small part is painted without looking at all edges
    mutable ViewGeometry m_geometry; ///< where the strips are good
    mutable Point m_offset;
    mutable std::vector<COutlineBits> m_strips; ///< from the window's top; empty until they are wanted
};
