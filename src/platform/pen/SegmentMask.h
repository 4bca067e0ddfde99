// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/geometry/Geometry.h"
#include "platform/memory/HeapBlock.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

class CRegion;

enum class PenCap { Square, Round };

/// How lines are drawn.
struct Pen {
    int width = 1; ///< pixels, at least 1
    PenCap cap = PenCap::Round;
    /// Pixels over which the edge fades: full coverage from half of them inside the edge, none from half of
    /// them outside. 0 and 1 draw a hard edge.
    int softness = 0;
};

/// How much of each pixel of a rectangle is covered, 0 to 255.
class CCoverageMask {
public:
    /// All zero; no mask when the rectangle is empty, too large for a picture, or memory runs out.
    [[nodiscard]] static std::optional<CCoverageMask> Create(const Rect& bounds);

    /// Where the mask lies in the picture that it is meant for.
    [[nodiscard]] const Rect& Bounds() const { return m_bounds; }
    /// The part of the picture's row y that may be covered.
    struct Run {
        int left = 0;
        int right = 0;
    };
    [[nodiscard]] const Run& RunOf(int y) const { return m_runs[Index(y)]; }
    void SetRun(int y, Run run) { m_runs[Index(y)] = run; }
    /// Coverage of the picture's pixel (x, y), from which a row is read on.
    [[nodiscard]] const uint8_t* At(int x, int y) const { return m_block.Data() + Offset(x, y); }
    [[nodiscard]] uint8_t* At(int x, int y) { return m_block.Data() + Offset(x, y); }

private:
    [[nodiscard]] size_t Index(int y) const { return static_cast<size_t>(y - m_bounds.top); }
    [[nodiscard]] size_t Offset(int x, int y) const
    {
        return Index(y) * static_cast<size_t>(m_bounds.Width()) + static_cast<size_t>(x - m_bounds.left);
    }

    Rect m_bounds;
    CHeapBlock m_block;
    std::vector<Run> m_runs;
};

/// The document pixels that a line may cover: the box of both ends, grown by half the width and half the
/// softness, at least 2 pixels, as far as target and selection go. Arguments as for RasteriseSegment.
[[nodiscard]] Rect SegmentBox(const Rect& target, Point from, Point to, const Pen& pen,
                              const CRegion& selection);

/// The pixels of one straight line whose centres lie in the shape of the pen. A pen of odd width runs through
/// the centres of the pixels at both ends, one of even width through their top left corners, so that an
/// upright or level line is exactly as wide as the pen. Square ends reach half a width past the end.
///
/// Only what lies in its SegmentBox is drawn: that cuts the corners of slanting square ends.
///
/// target: the picture's rectangle in document pixels; the mask lies in the picture's own coordinates.
/// selection: document pixels that may be covered; empty means all.
/// No mask when the box is empty, or memory runs out. Cost: the line's area.
[[nodiscard]] std::optional<CCoverageMask> RasteriseSegment(const Rect& target, Point from, Point to,
                                                            const Pen& pen, const CRegion& selection);
