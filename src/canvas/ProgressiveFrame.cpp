// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/ProgressiveFrame.h"

#include "canvas/ViewPainting.h"

#include <algorithm>

namespace {

/// What is composed at a time when slices are made: wide, since pictures are stored in rows, and short.
constexpr Size kTile{1024, 128};
/// What is prepared at a time, which takes longer.
constexpr Size kPreparedTile{1024, 64};
/// Missing pixels that are composed before any part is painted: the parts would cut the strips that come into
/// sight into pieces too small to be shared out among processors.
constexpr int64_t kComposedAtOnce = 1 << 17;
/// Pixels of layers after which half of what was learnt is forgotten: a few windows of a deep stack.
constexpr double kRememberedWork = 2e8;

/// Pieces of rows that are narrower take as long: they lie far from each other in memory.
constexpr int kLeastWidth = 64;

/// What to multiply the work for a pixel by, to have that for a region.
double PixelsToCompose(const CRegion& region)
{
    double pixels = 0;
    for (const Rect& rect : region.Rectangles())
        pixels += static_cast<double>(std::max(rect.Width(), kLeastWidth)) * rect.Height();
    return pixels;
}

/// The tile with missing pixels whose middle is nearest to a point.
Rect NearestTile(const CRegion& missing, Size size, const Rect& window, Point focus)
{
    Rect nearest;
    int64_t least = INT64_MAX;
    for (int top = window.top; top < window.bottom; top += size.height) {
        for (int left = window.left; left < window.right; left += size.width) {
            const Rect tile = Rect::At({left, top}, size).Intersected(window);
            const int64_t dx = (left + tile.right) / 2 - focus.x;
            const int64_t dy = (top + tile.bottom) / 2 - focus.y;
            if (dx * dx + dy * dy >= least)
                continue;
            CRegion part = missing;
            if (!part.Intersect(CRegion(tile)) || !part.IsEmpty()) {
                least = dx * dx + dy * dy;
                nearest = tile;
            }
        }
    }
    return nearest;
}

} // namespace

void CProgressiveFrame::CPace::Learn(double work, Clock::duration taken)
{
    m_work += work;
    m_seconds += std::chrono::duration<double>(taken).count();
    if (m_work > kRememberedWork) {
        m_work /= 2;
        m_seconds /= 2;
    }
}

void CProgressiveFrame::Forget()
{
    m_cache = {};
    m_missing = {};
    m_unprepared = {};
    m_isKept = false;
}

void CProgressiveFrame::ExpectMotion(const FrameScene& scene, Point focus)
{
    if (!m_isKept)
        return;
    m_focus = focus;
    Follow(scene, true);
    UpdateUnprepared(scene);
}

void CProgressiveFrame::EndMotion()
{
    m_refinesFrom = {};
    m_unprepared = {};
}

void CProgressiveFrame::UpdateMissing(const FrameScene& scene)
{
    m_missing = m_isKept ? m_cache.Missing(InWindow(scene.Visible(), scene)) : CRegion();
}

void CProgressiveFrame::UpdateUnprepared(const FrameScene& scene)
{
    m_unprepared = {};
    if (!m_isKept || !(scene.isHeld || IsMoving()))
        return;
    const Rect visible = InWindow(scene.Visible(), scene);
    // What can be composed in time needs no preparation.
    if (m_approximates || !IsInTime(m_cache.Work(CRegion(visible), scene)))
        m_unprepared = m_cache.Unprepared(visible);
}

void CProgressiveFrame::Follow(const FrameScene& scene, bool mayWait)
{
    const bool wasExact = IsExact();
    m_isKept = m_cache.Follow(scene, mayWait);
    UpdateMissing(scene);
    if (IsExact())
        return;
    if (wasExact)
        m_outdatedSince = Clock::now();
    m_workPerPixel = m_cache.Work(m_missing, scene) / static_cast<double>(m_missing.Area());
}

void CProgressiveFrame::Begin(const FrameScene& scene, const Rect& area, FrameRule rule)
{
    const bool mayWait =
        rule == FrameRule::Prompt && (IsExact() || Clock::now() - m_outdatedSince < kLongestOutdated);
    Follow(scene, mayWait);
    CRegion wanted = m_missing;
    if (!wanted.Intersect(CRegion(InWindow(area, scene))))
        wanted = m_missing;
    m_composes = !mayWait || !m_cache.HasOutdated() || IsInTime(m_workPerPixel * PixelsToCompose(wanted));
    m_approximates = !m_composes && m_cache.CanApproximate();
    if (m_cache.HasMoved() || !m_approximates)
        m_refinesFrom = m_approximates ? Clock::now() + kRest : Clock::time_point();
    UpdateUnprepared(scene);
    if (m_approximates && m_unprepared.IsEmpty())
        m_outdatedSince = Clock::now();
    if (m_composes && !wanted.IsEmpty() && wanted.Area() <= kComposedAtOnce)
        Compose(wanted, scene);
}

void CProgressiveFrame::Compose(const CRegion& region, const FrameScene& scene)
{
    const Clock::time_point begin = Clock::now();
    for (const Rect& rect : region.Rectangles())
        m_cache.Compose(rect, scene);
    m_pace.Learn(m_workPerPixel * PixelsToCompose(region), Clock::now() - begin);
    UpdateMissing(scene);
}

void CProgressiveFrame::Paint(const BitmapView& target, Point origin, const FrameScene& scene)
{
    if (!m_isKept) {
        PaintBackdrop(target, origin);
        CompositeForDisplay(target, origin, *scene.canvas, scene.zoom, scene.floating);
        return;
    }
    const Rect rect = InWindow(Rect::At(origin, target.Extent()), scene);
    if (const CRegion missing = m_cache.Missing(rect); !missing.IsEmpty()) {
        if (m_composes) {
            Compose(missing, scene);
        } else {
            if (m_approximates)
                m_cache.Approximate(missing, scene);
            m_cache.StandIn(rect);
        }
    }
    CopyPixels(target, m_cache.Pixels(rect));
}

CRegion CProgressiveFrame::NextTile(const CRegion& region, Size size, const FrameScene& scene) const
{
    const Rect window = Rect::At({0, 0}, {scene.window.Width(), scene.window.Height()});
    const Point focus{m_focus.x - scene.window.left, m_focus.y - scene.window.top};
    const Rect tile = NearestTile(region, size, window, focus);
    CRegion part = region;
    return part.Intersect(CRegion(tile)) ? part : CRegion(tile.Intersected(InWindow(scene.Visible(), scene)));
}

CRegion CProgressiveFrame::RefineTile(const FrameScene& scene)
{
    const bool prepares = !m_unprepared.IsEmpty() && (IsExact() || IsMoving());
    CRegion part =
        prepares ? NextTile(m_unprepared, kPreparedTile, scene) : NextTile(m_missing, kTile, scene);
    if (!prepares) {
        Compose(part, scene);
        return part;
    }
    for (const Rect& rect : part.Rectangles())
        m_cache.Prepare(rect, scene);
    UpdateUnprepared(scene);
    m_outdatedSince = Clock::now();
    return part.Intersect(m_missing) ? part : m_missing; // what is missing there can be shown better
}

std::vector<Rect> CProgressiveFrame::Refine(const FrameScene& scene, Point focus, Clock::time_point until)
{
    std::vector<Rect> refined;
    m_focus = focus;
    Follow(scene, true);
    UpdateUnprepared(scene);
    Clock::time_point now;
    do {
        if (!IsUnfinished())
            break;
        if (const CRegion tile = RefineTile(scene); !tile.IsEmpty())
            refined.push_back(tile.Bounds().Moved(scene.window.left, scene.window.top));
        now = Clock::now();
    } while (now < until && now >= RefinesFrom());
    return refined;
}
