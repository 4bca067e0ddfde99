// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/ViewGeometry.h"
#include "platform/dib/PackedDib.h"
#include "platform/region/Region.h"

#include <cstdint>
#include <vector>

/// The outline of a selection along its pixel edges: black and white dashes, readable on every background,
/// that wander with the phase. Made once for a region; drawn at any zoom.
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

    void AddHorizontal(std::span<const Rect> above, std::span<const Rect> below, int y);

    std::vector<Edge> m_edges;
};
