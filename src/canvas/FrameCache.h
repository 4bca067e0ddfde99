// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/FrameScene.h"
#include "canvas/LayersAbove.h"
#include "canvas/WindowBuffer.h"

#include <algorithm>
#include <span>
#include <vector>

/// The frame as a window shows it, kept so that only what changed is composited again: scrolling needs the
/// strips that come into sight, and an object that moves needs itself and what lies above it, since what lies
/// below is kept as well. What has been composed is to the last bit what compositing everything gives; what
/// is missing can be left as it last was, stretched to another zoom and, while objects move, be shown nearly
/// as it is. Holds at most four pictures of the window's size: the frame and, from the time that objects move
/// or are held until the zoom changes, what lies below them and what those above them make of black and of
/// white.
///
/// Rectangles are those of the window, from its top-left corner, except where another place is named.
class CFrameCache {
public:
    /// Takes over what is to be shown now. keepsOutdated: stretches what was shown before at another zoom.
    /// False when nothing can be kept, for want of memory or of vector instructions; there is no frame then.
    [[nodiscard]] bool Follow(const FrameScene& scene, bool keepsOutdated);
    /// What is seen inside the rectangle of the zoomed frame may have changed.
    void Drop(const Rect& frameRect);
    void DropAll();

    [[nodiscard]] CRegion Missing(const Rect& rect) const { return m_frame.Missing(rect); }
    /// Whether something that may be out of date can stand in for what is missing.
    [[nodiscard]] bool HasOutdated() const { return !m_frame.shown.IsEmpty(); }
    /// Pixels of layers that composing needs, roughly; those passed over on the way to the next row or column
    /// of a reduced picture count as well.
    [[nodiscard]] double Work(const CRegion& region, const FrameScene& scene) const;
    /// Makes a rectangle that is missing.
    void Compose(const Rect& rect, const FrameScene& scene);
    /// Whether a layer was somewhere else before the last Follow.
    [[nodiscard]] bool HasMoved() const { return m_hasMoved; }
    /// The part of a rectangle for which what lies below and above the layers that move, or are about to,
    /// has not been made yet. Empty when none do.
    [[nodiscard]] CRegion Unprepared(const Rect& rect) const;
    /// Makes that for a rectangle, or finds that memory has run out.
    void Prepare(const Rect& rect, const FrameScene& scene);
    /// Whether layers that others lie upon have been moving.
    [[nodiscard]] bool CanApproximate() const { return m_isMoving && HasLayersAbove() && !m_lacksMemory; }
    /// Shows missing pixels nearly as they are, as far as they are prepared: what lies below and what moves
    /// exactly, and over it what lies above as CLayersAbove has it. They stay missing.
    void Approximate(const CRegion& region, const FrameScene& scene);
    /// Shows the backdrop where nothing else has been shown.
    void StandIn(const Rect& rect);
    /// The pixels, composed or standing in.
    [[nodiscard]] BitmapView Pixels(const Rect& rect) { return m_frame.Part(rect); }

private:
    /// A layer as it was when it was last painted.
    struct Shown {
        uint64_t contentId = 0;
        Point position;
        Size size;
        uint8_t transparency = 0;

        [[nodiscard]] bool IsPlacedLike(const Shown& other) const
        {
            return position == other.position && size == other.size && transparency == other.transparency;
        }
    };
    /// Layers between the lowest and the topmost of some.
    struct LayerRange {
        size_t begin = 0;
        size_t end = 0;

        [[nodiscard]] bool IsEmpty() const { return begin == end; }
        void Add(size_t layer)
        {
            begin = IsEmpty() ? layer : std::min(begin, layer);
            end = std::max(end, layer + 1);
        }
        friend bool operator==(const LayerRange&, const LayerRange&) = default;
    };

    [[nodiscard]] bool Anchor(const Rect& window);
    void ChangeZoom(const FrameScene& scene, bool keepsOutdated);
    /// Finds out what changed since the last painting.
    void Compare(std::span<const DisplayLayer> layers);
    void RemoveLayer(const Shown& layer);
    void BeginMotion(const LayerRange& moving);
    void FollowMotion(const LayerRange& moved);
    void ExpectMotion(std::span<const DisplayLayer> layers);
    void ForgetMotion();
    [[nodiscard]] bool HasLayersAbove() const { return m_moving.end < m_layers.size(); }
    [[nodiscard]] Size WindowSize() const { return {m_window.Width(), m_window.Height()}; }
    [[nodiscard]] bool MakeBelow(const Rect& rect, std::span<const DisplayLayer> layers);
    /// The point of the zoomed frame in the corner of a rectangle.
    [[nodiscard]] Point OriginOf(const Rect& rect) const
    {
        return {m_window.left + rect.left, m_window.top + rect.top};
    }

    Rect m_window; ///< in the zoomed frame
    int m_zoom = 0;
    std::vector<Shown> m_layers;
    std::vector<Shown> m_layersBefore;
    WindowBuffer m_frame;
    WindowBuffer m_below;    ///< backdrop and the layers below m_moving
    CLayersAbove m_above;    ///< the layers above m_moving
    LayerRange m_moving;     ///< the layers that moved twice in a row or are held
    LayerRange m_lastMoved;  ///< those that moved when some last did
    bool m_isMoving = false; ///< whether nothing but m_moving has changed since
    bool m_hasMoved = false;
    bool m_lacksMemory = false; ///< for below and above
    bool m_wasTold = false;     ///< whether Drop was called since the last painting
};
