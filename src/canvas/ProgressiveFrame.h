// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/FrameCache.h"

#include <chrono>
#include <optional>
#include <vector>

/// Whether a painting has to show the document as it is, or may show what is at hand when that would take
/// longer than a frame may.
enum class FrameRule { Exact, Prompt };

/// Decides what of the frame is composed at once. What would take longer than the budget stays as it was, or
/// as it was at the zoom before, and is composed in slices while the program is idle (Refine), so that input
/// never waits. Nothing stays outdated for longer than kLongestOutdated, even if input never pauses. While
/// objects move below others, what would take too long is shown nearly as it is instead, and composed when
/// they rest; what that needs is made in slices as well, from the time that a button holds them. The time is
/// estimated from what composing has cost until now.
///
/// Rectangles and points are those of the zoomed frame.
class CProgressiveFrame {
public:
    using Clock = std::chrono::steady_clock;
    static constexpr std::chrono::milliseconds kBudget{9};
    static constexpr std::chrono::milliseconds kLongestOutdated{250};
    static constexpr std::chrono::milliseconds kRest{100};

    /// Decides how the parts of an area are painted, which follow before anything changes.
    void Begin(const FrameScene& scene, const Rect& area, FrameRule rule);
    /// Paints backdrop and objects. origin: of the target's top-left pixel, which the window shows.
    void Paint(const BitmapView& target, Point origin, const FrameScene& scene);

    /// Whether what the window shows is composed.
    [[nodiscard]] bool IsExact() const { return m_missing.IsEmpty(); }
    /// Whether Refine has something to do.
    [[nodiscard]] bool IsUnfinished() const { return !IsExact() || !m_unprepared.IsEmpty(); }
    /// When to begin with that.
    [[nodiscard]] Clock::time_point RefinesFrom() const
    {
        return m_unprepared.IsEmpty() ? m_refinesFrom : Clock::time_point();
    }
    /// Objects are held that may move next.
    void ExpectMotion(const FrameScene& scene, Point focus);
    /// What moved has been put down.
    void EndMotion();
    /// Composes what is not exact and prepares for motion until a point in time, at least a little, beginning
    /// next to `focus`. Returns what is to be painted.
    [[nodiscard]] std::vector<Rect> Refine(const FrameScene& scene, Point focus, Clock::time_point until);

    /// Frees what is kept of the frame.
    void Forget();
    /// What is seen inside the rectangle may have changed.
    void Drop(const Rect& rect) { m_cache.Drop(rect); }
    void DropAll() { m_cache.DropAll(); }
    /// How long a frame may take; 0: everything that can be left for later is.
    void SetBudget(Clock::duration budget) { m_budget = budget; }

private:
    /// What composing costs, by experience; older frames count for less and less.
    class CPace {
    public:
        void Learn(double work, Clock::duration taken);
        [[nodiscard]] double Seconds(double work) const { return m_work > 0 ? work * m_seconds / m_work : 0; }

    private:
        double m_work = 0;
        double m_seconds = 0;
    };

    /// Takes over what is to be shown now.
    void Follow(const FrameScene& scene, bool mayWait);
    void Compose(const CRegion& region, const FrameScene& scene);
    void UpdateMissing(const FrameScene& scene);
    void UpdateUnprepared(const FrameScene& scene);
    /// Whether work takes no longer than a frame may.
    [[nodiscard]] bool IsInTime(double work) const
    {
        return m_pace.Seconds(work) < std::chrono::duration<double>(m_budget).count();
    }
    /// Whether objects moved below others a moment ago.
    [[nodiscard]] bool IsMoving() const { return Clock::now() < m_refinesFrom; }
    /// The part of a region in that tile with some of it that is nearest to the focus.
    [[nodiscard]] CRegion NextTile(const CRegion& region, Size size, const FrameScene& scene) const;
    /// Composes or prepares a tile. Returns what is to be painted.
    CRegion RefineTile(const FrameScene& scene);
    /// A rectangle of the frame as one of the window.
    [[nodiscard]] static Rect InWindow(const Rect& rect, const FrameScene& scene)
    {
        return rect.Moved(-scene.window.left, -scene.window.top);
    }

    CFrameCache m_cache;
    CPace m_pace;
    Clock::duration m_budget = kBudget;
    CRegion m_missing;         ///< of what the window shows, in the window
    CRegion m_unprepared;      ///< of the same, for the motion under way or expected
    Point m_focus;             ///< in the zoomed frame
    double m_workPerPixel = 0; ///< of what is missing
    Clock::time_point m_outdatedSince;
    Clock::time_point m_refinesFrom;
    bool m_isKept = false;       ///< whether the cache has a frame
    bool m_composes = true;      ///< whether Paint makes what is missing
    bool m_approximates = false; ///< whether it shows that nearly as it is otherwise
};
