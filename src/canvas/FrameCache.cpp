// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/FrameCache.h"

#include "canvas/ViewPainting.h"
#include "model/Placement.h"

#include <algorithm>
#include <cassert>
#include <cstring>
#include <utility>

namespace {

void CopyPixels(const BitmapView& to, const ConstBitmapView& from)
{
    for (int y = 0; y < to.height; ++y)
        std::memcpy(to.Row(y), from.Row(y), static_cast<size_t>(to.width) * 4);
}

void DrawOnBackdrop(const BitmapView& part, Point origin, std::span<const DisplayLayer> layers, int zoom)
{
    PaintBackdrop(part, origin);
    CompositeLayers(part, origin, layers, zoom);
}

} // namespace

void CFrameCache::Buffer::Remove(const Rect& rect)
{
    if (!valid.Subtract(CRegion(rect)))
        valid = {};
}

void CFrameCache::Drop(const Rect& rect)
{
    const Rect seen = rect.Intersected(m_window);
    m_wasTold = true;
    if (!seen.IsEmpty())
        m_frame.Remove(seen.Moved(-m_window.left, -m_window.top));
}

void CFrameCache::DropAll()
{
    m_wasTold = true;
    m_frame.Clear();
    m_below.Clear();
}

void CFrameCache::Buffer::Shift(int dx, int dy)
{
    if (pixels.IsEmpty() || valid.IsEmpty())
        return;
    const BitmapView all = ViewOf(pixels);
    const Rect whole{0, 0, all.width, all.height};
    const Rect kept = whole.Intersected(whole.Moved(dx, dy));
    if (kept.IsEmpty() || !valid.Intersect(CRegion(kept)) || !valid.Translate(-dx, -dy)) {
        Clear();
        return;
    }
    const auto moveRow = [&](int y) {
        std::memmove(all.Row(y - dy) + ptrdiff_t{kept.left - dx} * 4, all.Row(y) + ptrdiff_t{kept.left} * 4,
                     static_cast<size_t>(kept.Width()) * 4);
    };
    if (dy >= 0) {
        for (int y = kept.top; y < kept.bottom; ++y)
            moveRow(y);
    } else {
        for (int y = kept.bottom - 1; y >= kept.top; --y)
            moveRow(y);
    }
}

bool CFrameCache::Anchor(const Rect& window)
{
    if (m_frame.pixels.IsEmpty() || window.Width() != m_window.Width() ||
        window.Height() != m_window.Height()) {
        m_frame = {CPackedDib::CreateForOverwrite(window.Width(), window.Height()), {}};
        m_below = {};
        m_window = window;
        return !m_frame.pixels.IsEmpty();
    }
    if (window != m_window) {
        const int dx = window.left - m_window.left;
        const int dy = window.top - m_window.top;
        m_frame.Shift(dx, dy);
        m_below.Shift(dx, dy);
        m_window = window;
    }
    return true;
}

void CFrameCache::RemoveLayer(const Shown& layer)
{
    const Rect area =
        Place(layer.size, layer.position, m_zoom, {m_window.Width(), m_window.Height()}, m_window.Corner())
            .area;
    if (!area.IsEmpty())
        m_frame.Remove(area);
}

void CFrameCache::Follow(size_t first)
{
    // What changes twice in a row at one place of the stack is likely to go on.
    if (first == m_lastMoved && first != m_belowCount) {
        m_belowCount = first;
        m_below.Clear();
    }
    m_lastMoved = first;
}

void CFrameCache::Compare(std::span<const DisplayLayer> layers, int zoom)
{
    std::vector<Shown> now;
    now.reserve(layers.size());
    for (const DisplayLayer& layer : layers)
        now.push_back({layer.contentId, layer.position, layer.dib->Size(), layer.transparency});
    std::swap(now, m_layers);
    const std::vector<Shown>& before = now;
    const bool wasTold = std::exchange(m_wasTold, false);
    if (zoom != m_zoom) {
        m_zoom = zoom;
        m_frame.Clear();
        m_below.Clear();
        return;
    }
    const size_t both = std::min(before.size(), m_layers.size());
    size_t firstChanged = both;
    size_t firstMoved = both;
    for (size_t i = 0; i < both; ++i) {
        const bool isMoved = !m_layers[i].IsPlacedLike(before[i]);
        const bool isOther = m_layers[i].contentId != before[i].contentId;
        if (isMoved)
            firstMoved = std::min(firstMoved, i);
        if (isMoved || isOther || m_layers[i].contentId == 0)
            firstChanged = std::min(firstChanged, i);
        // Who paints into a picture says where; who does not has changed all of it.
        if (isMoved || (isOther && !wasTold)) {
            RemoveLayer(before[i]);
            RemoveLayer(m_layers[i]);
        }
    }
    for (size_t i = both; i < before.size(); ++i)
        RemoveLayer(before[i]);
    for (size_t i = both; i < m_layers.size(); ++i)
        RemoveLayer(m_layers[i]);
    if (firstChanged < m_belowCount) {
        m_belowCount = 0;
        m_below.Clear();
    }
    if (before.size() == m_layers.size() && firstMoved < both)
        Follow(firstMoved);
}

bool CFrameCache::MakeBelow(const Rect& rect, std::span<const DisplayLayer> layers)
{
    if (m_belowCount == 0 || m_belowCount > layers.size())
        return false;
    if (m_below.pixels.IsEmpty())
        m_below = {CPackedDib::CreateForOverwrite(m_window.Width(), m_window.Height()), {}};
    CRegion missing(rect);
    if (m_below.pixels.IsEmpty() || !missing.Subtract(m_below.valid))
        return false;
    for (const Rect& part : missing.Rectangles())
        DrawOnBackdrop(m_below.Part(part), OriginOf(part), layers.first(m_belowCount), m_zoom);
    if (!m_below.valid.Unite(CRegion(rect)))
        m_below.Clear();
    return true;
}

void CFrameCache::Compose(const Rect& rect, std::span<const DisplayLayer> layers)
{
    const BitmapView part = m_frame.Part(rect);
    if (!MakeBelow(rect, layers)) {
        DrawOnBackdrop(part, OriginOf(rect), layers, m_zoom);
        return;
    }
    CopyPixels(part, m_below.Part(rect));
    CompositeLayers(part, OriginOf(rect), layers.subspan(m_belowCount), m_zoom);
}

void CFrameCache::Paint(const BitmapView& target, Point origin, const Rect& window,
                        const CObjectCanvas& canvas, int zoom, const FloatingImage& floating)
{
    // Without vector instructions compositing writes into the objects' pictures: nothing can be kept.
    const bool canKeep = ProbePixelPath() == PixelPath::Weighted;
    const Rect wanted = Rect::At({origin.x - window.left, origin.y - window.top}, target.Extent());
    assert(wanted.Intersected({0, 0, window.Width(), window.Height()}) == wanted);
    if (!canKeep || !Anchor(window)) {
        PaintBackdrop(target, origin);
        CompositeForDisplay(target, origin, canvas, zoom, floating);
        return;
    }
    const std::vector<DisplayLayer> layers = DisplayLayers(canvas, floating);
    Compare(layers, zoom);
    CRegion missing(wanted);
    if (!missing.Subtract(m_frame.valid))
        missing = CRegion(wanted);
    for (const Rect& rect : missing.Rectangles())
        Compose(rect, layers);
    if (!m_frame.valid.Unite(CRegion(wanted)))
        m_frame.Clear();
    CopyPixels(target, m_frame.Part(wanted));
}
