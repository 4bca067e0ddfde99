// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/Compositing.h"
#include "platform/region/Region.h"

#include <span>
#include <vector>

/// The frame as a window shows it, kept so that only what changed is composited again: scrolling needs the
/// strips that come into sight, and an object that moves needs itself and what lies above it, since what lies
/// below is kept as well. Shows to the last bit what compositing everything would. Holds at most two pictures
/// of the window's size; without memory for them everything is composited each time.
class CFrameCache {
public:
    /// Paints the backdrop and the objects into `target`. Points are those of the zoomed frame.
    /// origin: of the target's top-left pixel. window: all that the window shows, which holds the target.
    void Paint(const BitmapView& target, Point origin, const Rect& window, const CObjectCanvas& canvas,
               int zoom, const FloatingImage& floating);
    /// What is seen inside the rectangle of the zoomed frame may have changed.
    void Drop(const Rect& rect);
    void DropAll();

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
    /// Pixels of the window and which of them are right, both from its top-left corner.
    struct Buffer {
        CPackedDib pixels;
        CRegion valid;

        [[nodiscard]] BitmapView Part(const Rect& rect) { return ViewOf(pixels).Part(rect); }
        void Remove(const Rect& rect);
        void Clear() { valid = {}; }
        /// The window moved over the frame by so much.
        void Shift(int dx, int dy);
    };

    [[nodiscard]] bool Anchor(const Rect& window);
    /// Finds out what changed since the last painting.
    void Compare(std::span<const DisplayLayer> layers, int zoom);
    void RemoveLayer(const Shown& layer);
    void Follow(size_t first);
    /// Makes a rectangle of the window anew.
    void Compose(const Rect& rect, std::span<const DisplayLayer> layers);
    [[nodiscard]] bool MakeBelow(const Rect& rect, std::span<const DisplayLayer> layers);
    /// The point of the frame in the corner of a rectangle of the window.
    [[nodiscard]] Point OriginOf(const Rect& rect) const
    {
        return {m_window.left + rect.left, m_window.top + rect.top};
    }

    Rect m_window;
    int m_zoom = 0;
    std::vector<Shown> m_layers;
    Buffer m_frame;
    Buffer m_below;          ///< backdrop and the lowest m_belowCount layers
    size_t m_belowCount = 0; ///< 0: nothing is kept
    size_t m_lastMoved = 0;  ///< the lowest layer that moved when one last did
    bool m_wasTold = false;  ///< whether Drop was called since the last painting
};
