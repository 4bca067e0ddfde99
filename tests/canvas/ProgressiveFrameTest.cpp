// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/ProgressiveFrame.h"

#include "canvas/ViewGeometry.h"
#include "canvas/ViewPainting.h"
#include "support/TestPictures.h"

#include <random>

namespace {

/// Changes a canvas at random, tells the frame what a view would, and compares what it paints with a plain
/// composite.
class CFrameCheck {
public:
    CFrameCheck(uint32_t seed, Size window, Size canvas) : m_random(seed), m_window(window)
    {
        m_frame.SetBudget({}); // nothing that can be left for later is composed at once
        m_canvas.width = canvas.width;
        m_canvas.height = canvas.height;
        for (int i = 0; i < 6; ++i)
            AddObject();
    }

    void Change()
    {
        const int kind = Below(20);
        if (kind < 8)
            MoveObject(m_moved);
        else if (kind < 10)
            Hold(Below(static_cast<int>(m_canvas.objects.Count())));
        else if (kind < 12)
            PaintInto(Any());
        else if (kind < 14)
            m_scroll = {Below(m_canvas.width + 40) - 60, Below(m_canvas.height + 30) - 50};
        else if (kind == 14)
            Any().visible = Below(3) != 0;
        else if (kind == 15)
            Any().transparency = static_cast<uint8_t>(Below(256));
        else if (kind == 16)
            Any().image->Attach(Picture()); // nobody is told
        else if (kind == 17)
            m_canvas.objects.Swap(static_cast<size_t>(m_moved), 0);
        else if (kind == 18)
            ChangeFloating();
        else
            ChangeZoom();
    }

    void MoveObject(int index)
    {
        CPicObject& object = *m_canvas.objects.At(static_cast<size_t>(index));
        const Rect before = object.Rectangle();
        object.x += Below(9) - 4;
        object.y += Below(9) - 4;
        if (Below(2) == 0)
            m_frame.Drop(Zoomed(before.United(object.Rectangle())));
    }

    void SetZoom(int zoom) { m_zoom = zoom; }

    /// Paints some part of the window.
    void Paint(FrameRule rule)
    {
        const FrameScene scene = Scene();
        const Rect visible = scene.Visible();
        if (visible.IsEmpty())
            return;
        const int left = Below(visible.Width());
        const int top = Below(visible.Height());
        const Rect part =
            Rect::At({left, top}, {1 + Below(visible.Width() - left), 1 + Below(visible.Height() - top)})
                .Moved(visible.left, visible.top);
        const CPackedDib painted = Painted(scene, part, rule);
        if (rule == FrameRule::Exact) {
            ASSERT_TRUE(SameBytes(painted, Expected(part)));
        }
    }

    void RefineALittle()
    {
        for (int slices = Below(3); slices > 0; --slices)
            static_cast<void>(m_frame.Refine(Scene(), Focus(), {}));
    }

    /// Drags an object below others about; what is shown meanwhile is nearly right, at once when a button has
    /// been holding it.
    void ExpectNearWhileMoving(bool isHeld)
    {
        m_moved = 2;
        m_isHeld = isHeld;
        m_canvas.objects.At(2)->SetSelected(isHeld);
        if (isHeld) {
            m_frame.ExpectMotion(Scene(), Focus());
            EXPECT_TRUE(m_frame.IsExact());
            ExpectToBePrepared();
        }
        for (int step = 0; step < 8; ++step) {
            CPicObject& object = *m_canvas.objects.At(2);
            m_frame.Drop(Zoomed(object.Rectangle()));
            object.x += 5;
            object.y -= 3;
            m_frame.Drop(Zoomed(object.Rectangle()));
            const FrameScene scene = Scene();
            const CPackedDib painted = Painted(scene, scene.Visible(), FrameRule::Prompt);
            const CPackedDib expected = Expected(scene.Visible());
            int most = 0;
            for (size_t i = 0; i < painted.Bits().size(); ++i)
                most = std::max(most, std::abs(painted.Bits()[i] - expected.Bits()[i]));
            if (step == 1 && !isHeld) {
                ExpectToBePrepared();
            } else if (step > 1 || isHeld) {
                EXPECT_FALSE(m_frame.IsExact());
                EXPECT_LE(most, 8);
                EXPECT_GT(m_frame.RefinesFrom(), CProgressiveFrame::Clock::now());
            }
        }
        m_isHeld = false;
        m_frame.EndMotion();
        EXPECT_LT(m_frame.RefinesFrom(), CProgressiveFrame::Clock::now());
        ExpectExactAtRest();
    }

    void ExpectExactWithoutMemory()
    {
        const FrameScene scene = Scene();
        const Rect visible = scene.Visible();
        const CPackedDib expected = Expected(visible);
        CPackedDib painted = CPackedDib::Create(visible.Width(), visible.Height(), 32);
        {
            const CAllocationFailure outOfMemory(0);
            for (int slices = 0; slices == 0 || (slices < 100 && !m_frame.IsExact()); ++slices) {
                m_frame.Begin(scene, visible, FrameRule::Prompt);
                m_frame.Paint(ViewOf(painted), visible.Corner(), scene);
                static_cast<void>(m_frame.Refine(scene, {}, {}));
            }
            m_frame.Begin(scene, visible, FrameRule::Prompt);
            m_frame.Paint(ViewOf(painted), visible.Corner(), scene);
        }
        EXPECT_TRUE(SameBytes(painted, expected));
    }

    /// What is shown once nothing else happens.
    void ExpectExactAtRest()
    {
        const FrameScene scene = Scene();
        const Rect visible = scene.Visible();
        if (visible.IsEmpty())
            return;
        CPackedDib screen = Painted(scene, visible, FrameRule::Prompt);
        for (int slices = 0; !m_frame.IsExact(); ++slices) {
            ASSERT_LT(slices, 100);
            for (const Rect& rect : m_frame.Refine(scene, Focus(), {})) {
                const Rect part = rect.Intersected(visible);
                const BitmapView target = ViewOf(screen).Part(part.Moved(-visible.left, -visible.top));
                m_frame.Begin(scene, part, FrameRule::Prompt);
                m_frame.Paint(target, part.Corner(), scene);
            }
        }
        ASSERT_TRUE(SameBytes(screen, Expected(visible)));
    }

private:
    /// Lets the slices before a motion, or early in it, be made.
    void ExpectToBePrepared()
    {
        for (int slices = 0; m_frame.RefinesFrom() == CProgressiveFrame::Clock::time_point(); ++slices) {
            ASSERT_LT(slices, 100);
            if (!m_frame.IsUnfinished())
                return;
            static_cast<void>(m_frame.Refine(Scene(), Focus(), {}));
        }
    }
    void Hold(int index)
    {
        m_moved = index;
        m_isHeld = Below(2) == 0;
        for (size_t i = 0; i < m_canvas.objects.Count(); ++i)
            m_canvas.objects.At(i)->SetSelected(i == static_cast<size_t>(index));
        if (m_isHeld)
            m_frame.ExpectMotion(Scene(), Focus());
    }
    int Below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }
    Point Focus() { return {Below(m_canvas.width), Below(m_canvas.height)}; }
    [[nodiscard]] FrameScene Scene() const
    {
        return {&m_canvas,
                m_floating,
                DisplayLayers(m_canvas, m_floating),
                ViewGeometry{m_canvas.Size(), m_zoom, {}, {}}.ScaledSize(),
                Rect::At(m_scroll, m_window),
                m_zoom,
                m_isHeld};
    }
    [[nodiscard]] CPackedDib Painted(const FrameScene& scene, const Rect& part, FrameRule rule)
    {
        CPackedDib painted = CPackedDib::Create(part.Width(), part.Height(), 32);
        m_frame.Begin(scene, part, rule);
        m_frame.Paint(ViewOf(painted), part.Corner(), scene);
        return painted;
    }
    [[nodiscard]] CPackedDib Expected(const Rect& part) const
    {
        CPackedDib expected = CPackedDib::Create(part.Width(), part.Height(), 32);
        PaintBackdrop(ViewOf(expected), part.Corner());
        CompositeForDisplay(ViewOf(expected), part.Corner(), m_canvas, m_zoom, m_floating);
        return expected;
    }
    CPicObject& Any() { return *m_canvas.objects.At(static_cast<size_t>(Below(6))); }
    CPackedDib Picture()
    {
        return RandomDib(20 + Below(m_canvas.width), 20 + Below(m_canvas.height),
                         static_cast<uint32_t>(m_random()));
    }
    void AddObject() { m_canvas.objects.Append(ObjectAt(Picture(), Below(60) - 20, Below(60) - 20)); }

    void PaintInto(CPicObject& object)
    {
        const Rect spot = Rect::At({Below(object.image->Width()), Below(object.image->Height())}, {1, 1});
        object.image->AnnounceChange(spot);
        CPackedDib& dib = object.image->AnnouncedDib();
        std::fill_n(dib.Row(spot.top) + ptrdiff_t{spot.left} * 4, 4, static_cast<uint8_t>(Below(256)));
        m_frame.Drop(Zoomed(spot.Moved(object.x, object.y)));
    }

    void ChangeFloating()
    {
        m_floatingPicture = Picture();
        m_floating = {&m_floatingPicture,
                      {Below(50), Below(50)},
                      static_cast<uint8_t>(Below(40)),
                      Below(2) == 0 ? &Any() : nullptr};
        m_frame.Drop({-10'000, -10'000, 10'000, 10'000});
    }

    void ChangeZoom()
    {
        constexpr int kZooms[] = {1, 2, 3, -2, -3};
        SetZoom(kZooms[Below(5)]);
    }

    /// All that a change inside the rectangle can touch.
    [[nodiscard]] Rect Zoomed(const Rect& rect) const
    {
        const int times = std::max(1, m_zoom);
        const int parts = std::max(1, -m_zoom);
        return Rect{rect.left * times / parts, rect.top * times / parts, rect.right * times / parts,
                    rect.bottom * times / parts}
            .Inflated(2);
    }

    std::mt19937 m_random;
    CObjectCanvas m_canvas;
    CPackedDib m_floatingPicture;
    FloatingImage m_floating;
    CProgressiveFrame m_frame;
    Size m_window;
    Point m_scroll;
    int m_zoom = 1;
    int m_moved = 0;
    bool m_isHeld = false; ///< the selected objects
};

TEST(ProgressiveFrame, PaintsWhatAPlainCompositeDoesAfterAnyChanges)
{
    for (uint32_t seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE(seed);
        CFrameCheck check(seed, {70, 50}, {120, 90});
        for (int step = 0; step < 150 && !testing::Test::HasFailure(); ++step) {
            SCOPED_TRACE(step);
            check.Change();
            check.Paint(FrameRule::Exact);
        }
    }
}

TEST(ProgressiveFrame, EndsExactWhateverHappensWhileItIsRefined)
{
    for (uint32_t seed = 0; seed < 12; ++seed) {
        SCOPED_TRACE(seed);
        CFrameCheck check(seed, {1100, 150}, {1300, 260});
        for (int step = 0; step < 60 && !testing::Test::HasFailure(); ++step) {
            check.Change();
            check.Paint(step % 7 == 3 ? FrameRule::Exact : FrameRule::Prompt);
            check.RefineALittle();
            if (step % 5 == 4)
                check.ExpectExactAtRest();
        }
    }
}

TEST(ProgressiveFrame, ShowsWhatMovesBelowOthersAtOnce)
{
    for (uint32_t seed = 0; seed < 6; ++seed) {
        CFrameCheck check(seed, {600, 150}, {700, 260});
        check.Paint(FrameRule::Exact);
        check.ExpectExactAtRest();
        check.ExpectNearWhileMoving(seed % 2 == 0);
    }
}

TEST(ProgressiveFrame, BecomesExactWithoutMemory)
{
    CFrameCheck check(3, {600, 150}, {700, 260});
    check.ExpectExactAtRest();
    check.SetZoom(3);
    check.ExpectExactWithoutMemory();
    check.MoveObject(2);
    check.ExpectExactAtRest();
    check.MoveObject(2);
    check.ExpectExactWithoutMemory();
}

} // namespace
