// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/FrameCache.h"

#include "canvas/StretchFrame.h"
#include "canvas/ViewPainting.h"
#include "model/Placement.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace {

double AreaOf(const Rect& rect)
{
    return rect.IsEmpty() ? 0 : static_cast<double>(rect.Width()) * rect.Height();
}

void DrawOnBackdrop(const BitmapView& part, Point origin, std::span<const DisplayLayer> layers, int zoom)
{
    PaintBackdrop(part, origin);
    CompositeLayers(part, origin, layers, zoom);
}

} // namespace

void CFrameCache::Drop(const Rect& frameRect)
{
    const Rect seen = frameRect.Intersected(m_window);
    m_wasTold = true;
    if (!seen.IsEmpty())
        m_frame.Remove(seen.Moved(-m_window.left, -m_window.top));
}

void CFrameCache::DropAll()
{
    m_wasTold = true;
    m_frame.valid = {};
    m_below.Clear();
    m_above.Clear();
}

bool CFrameCache::Follow(const FrameScene& scene, bool keepsOutdated)
{
    // Without vector instructions compositing writes into the objects' pictures: nothing can be kept.
    if (ProbePixelPath() != PixelPath::Weighted)
        return false;
    if (scene.zoom != m_zoom)
        ChangeZoom(scene, keepsOutdated);
    if (!Anchor(scene.window))
        return false;
    Compare(scene.layers);
    if (scene.isHeld && !m_isMoving)
        ExpectMotion(scene.layers);
    return true;
}

bool CFrameCache::Anchor(const Rect& window)
{
    if (window.Width() != m_window.Width() || window.Height() != m_window.Height()) {
        m_frame = {};
        ForgetMotion();
    } else if (window != m_window) {
        const int dx = window.left - m_window.left;
        const int dy = window.top - m_window.top;
        m_frame.Shift(dx, dy);
        m_below.Shift(dx, dy);
        m_above.Shift(dx, dy);
    }
    m_window = window;
    return m_frame.Allocate(WindowSize());
}

void CFrameCache::ForgetMotion()
{
    m_below = {};
    m_above = {};
    m_moving = {};
    m_isMoving = false;
    m_lacksMemory = false;
}

void CFrameCache::ChangeZoom(const FrameScene& scene, bool keepsOutdated)
{
    const int before = std::exchange(m_zoom, scene.zoom);
    ForgetMotion();
    const Rect shown = m_frame.shown.Bounds();
    const Rect wanted = scene.Visible().Moved(-scene.window.left, -scene.window.top);
    WindowBuffer stretched;
    if (!keepsOutdated || !HasOutdated() || wanted.IsEmpty() ||
        !stretched.Allocate({scene.window.Width(), scene.window.Height()})) {
        m_frame.Clear();
        return;
    }
    StandIn(shown);
    const Rect covered = StretchFrame({stretched.Part(wanted), scene.Visible().Corner(), scene.zoom},
                                      {m_frame.Part(shown), OriginOf(shown), before});
    if (!covered.IsEmpty())
        stretched.shown = CRegion(covered.Moved(wanted.left, wanted.top));
    m_frame = std::move(stretched);
    m_window = scene.window;
}

void CFrameCache::RemoveLayer(const Shown& layer)
{
    const Rect area =
        Place(layer.size, layer.position, m_zoom, {m_window.Width(), m_window.Height()}, m_window.Corner())
            .area;
    if (!area.IsEmpty())
        m_frame.Remove(area);
}

void CFrameCache::BeginMotion(const LayerRange& moving)
{
    m_isMoving = true;
    m_lacksMemory = false;
    if (moving == m_moving)
        return;
    m_below.Clear();
    m_above.Clear();
    m_moving = moving;
}

void CFrameCache::FollowMotion(const LayerRange& moved)
{
    // What moves twice in a row at one place of the stack is likely to go on.
    if (moved == m_moving || moved == m_lastMoved)
        BeginMotion(moved);
    m_lastMoved = moved;
}

void CFrameCache::ExpectMotion(std::span<const DisplayLayer> layers)
{
    LayerRange held;
    for (size_t i = 0; i < layers.size(); ++i) {
        if (layers[i].contentId == 0)
            return; // what changes at any time cannot be prepared for
        if (layers[i].isSelected)
            held.Add(i);
    }
    if (!held.IsEmpty())
        BeginMotion(held);
}

void CFrameCache::Compare(std::span<const DisplayLayer> layers)
{
    std::swap(m_layers, m_layersBefore);
    m_layers.clear();
    for (const DisplayLayer& layer : layers)
        m_layers.push_back({layer.contentId, layer.position, layer.dib->Size(), layer.transparency});
    const std::vector<Shown>& before = m_layersBefore;
    const bool wasTold = std::exchange(m_wasTold, false);
    const size_t both = std::min(before.size(), m_layers.size());
    LayerRange changed;
    LayerRange moved;
    for (size_t i = 0; i < both; ++i) {
        const bool isMoved = !m_layers[i].IsPlacedLike(before[i]);
        const bool isOther = m_layers[i].contentId != before[i].contentId;
        if (isMoved)
            moved.Add(i);
        if (isMoved || isOther || m_layers[i].contentId == 0)
            changed.Add(i);
        // Who paints into a picture says where; who does not has changed all of it.
        if (isMoved || (isOther && !wasTold)) {
            RemoveLayer(before[i]);
            RemoveLayer(m_layers[i]);
        }
    }
    for (size_t i = both; i < std::max(before.size(), m_layers.size()); ++i) {
        changed.Add(i);
        RemoveLayer(i < before.size() ? before[i] : m_layers[i]);
    }
    m_hasMoved = before.size() == m_layers.size() && !moved.IsEmpty();
    if (changed.IsEmpty())
        return;
    m_isMoving = false;
    if (changed.begin < m_moving.begin) {
        m_below.Clear();
        m_above.Clear();
        m_moving = {};
    } else if (changed.end > m_moving.end) {
        m_above.Clear();
    }
    if (m_hasMoved)
        FollowMotion(moved);
}

bool CFrameCache::MakeBelow(const Rect& rect, std::span<const DisplayLayer> layers)
{
    if (!m_below.Allocate(WindowSize()))
        return false;
    const CRegion missing = m_below.Missing(rect);
    for (const Rect& part : missing.Rectangles())
        DrawOnBackdrop(m_below.Part(part), OriginOf(part), layers.first(m_moving.begin), m_zoom);
    m_below.Add(rect);
    return true;
}

double CFrameCache::Work(const CRegion& region, const FrameScene& scene) const
{
    const Rect& bounds = region.Bounds();
    if (bounds.IsEmpty())
        return 0;
    std::span drawn(scene.layers);
    if (m_below.valid.Contains(bounds))
        drawn = drawn.subspan(m_moving.begin);
    double pixels = AreaOf(bounds);
    for (const DisplayLayer& layer : drawn) {
        const Placement placement = Place(layer.dib->Size(), layer.position, m_zoom,
                                          {bounds.Width(), bounds.Height()}, OriginOf(bounds));
        pixels += AreaOf(placement.area) * placement.step;
    }
    return pixels * static_cast<double>(region.Area()) / AreaOf(bounds);
}

void CFrameCache::Compose(const Rect& rect, const FrameScene& scene)
{
    const BitmapView part = m_frame.Part(rect);
    const std::span layers(scene.layers);
    if (m_moving.begin > 0 && MakeBelow(rect, layers)) {
        CopyPixels(part, m_below.Part(rect));
        CompositeLayers(part, OriginOf(rect), layers.subspan(m_moving.begin), m_zoom);
    } else {
        DrawOnBackdrop(part, OriginOf(rect), layers, m_zoom);
    }
    m_frame.Add(rect);
}

CRegion CFrameCache::Unprepared(const Rect& rect) const
{
    if (!m_isMoving || m_lacksMemory)
        return {};
    CRegion unprepared = m_below.Missing(rect);
    if (HasLayersAbove()) {
        CRegion below(rect);
        if (!below.Subtract(m_above.Made()) || !unprepared.Unite(below))
            return CRegion(rect);
    }
    return unprepared;
}

void CFrameCache::Prepare(const Rect& rect, const FrameScene& scene)
{
    const std::span layers(scene.layers);
    m_lacksMemory = !MakeBelow(rect, layers) || (HasLayersAbove() && !m_above.Allocate(WindowSize()));
    if (!m_lacksMemory && HasLayersAbove())
        m_above.Make(rect, layers.subspan(m_moving.end), m_window, m_zoom);
}

void CFrameCache::Approximate(const CRegion& region, const FrameScene& scene)
{
    CRegion prepared = region;
    if (!prepared.Intersect(m_below.valid) || !prepared.Intersect(m_above.Made()))
        return;
    for (const Rect& rect : prepared.Rectangles()) {
        const BitmapView part = m_frame.Part(rect);
        CopyPixels(part, m_below.Part(rect));
        CompositeLayers(part, OriginOf(rect),
                        std::span(scene.layers).subspan(m_moving.begin, m_moving.end - m_moving.begin),
                        m_zoom);
        m_above.BlendOnto(part, rect);
    }
    static_cast<void>(m_frame.shown.Unite(prepared)); // or it is painted again
}

void CFrameCache::StandIn(const Rect& rect)
{
    CRegion blank(rect);
    if (!blank.Subtract(m_frame.shown))
        blank = CRegion(rect);
    for (const Rect& part : blank.Rectangles())
        PaintBackdrop(m_frame.Part(part), OriginOf(part));
    static_cast<void>(m_frame.shown.Unite(blank)); // or it is painted again
}
