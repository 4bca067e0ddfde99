// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/FrameCache.h"

#include "canvas/ViewPainting.h"
#include "support/TestPictures.h"

#include <random>

namespace {

/// Changes a canvas at random, tells the cache what a view would, and compares what it paints with a plain
/// composite.
class CFrameCacheCheck {
public:
    explicit CFrameCacheCheck(uint32_t seed) : m_random(seed)
    {
        m_canvas.width = 120;
        m_canvas.height = 90;
        for (int i = 0; i < 6; ++i)
            AddObject();
    }

    void Change()
    {
        const int kind = Below(20);
        if (kind < 8)
            MoveObject(m_moved);
        else if (kind < 10)
            m_moved = Below(static_cast<int>(m_canvas.objects.Count()));
        else if (kind < 12)
            PaintInto(Any());
        else if (kind < 14)
            m_scroll = {Below(160) - 60, Below(120) - 50};
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

    void ExpectSamePixels()
    {
        const Rect window = Rect::At(m_scroll, {70, 50});
        const int left = Below(60);
        const int top = Below(40);
        const Rect part{left, top, left + 1 + Below(70 - left), top + 1 + Below(50 - top)};
        CPackedDib painted = CPackedDib::Create(part.Width(), part.Height(), 32);
        CPackedDib expected = painted.Duplicate();
        const Point origin{window.left + part.left, window.top + part.top};
        m_cache.Paint(ViewOf(painted), origin, window, m_canvas, m_zoom, m_floating);
        PaintBackdrop(ViewOf(expected), origin);
        CompositeForDisplay(ViewOf(expected), origin, m_canvas, m_zoom, m_floating);
        ASSERT_TRUE(SameBytes(painted, expected));
    }

private:
    int Below(int limit) { return static_cast<int>(m_random() % static_cast<unsigned>(limit)); }
    CPicObject& Any() { return *m_canvas.objects.At(static_cast<size_t>(Below(6))); }
    CPackedDib Picture()
    {
        return RandomDib(20 + Below(100), 20 + Below(80), static_cast<uint32_t>(m_random()));
    }
    void AddObject() { m_canvas.objects.Append(ObjectAt(Picture(), Below(60) - 20, Below(60) - 20)); }

    void MoveObject(int index)
    {
        CPicObject& object = *m_canvas.objects.At(static_cast<size_t>(index));
        const Rect before = object.Rectangle();
        object.x += Below(9) - 4;
        object.y += Below(9) - 4;
        if (Below(2) == 0)
            m_cache.Drop(Zoomed(before.United(object.Rectangle())));
    }

    void PaintInto(CPicObject& object)
    {
        const Rect spot = Rect::At({Below(object.image->Width()), Below(object.image->Height())}, {1, 1});
        object.image->AnnounceChange(spot);
        CPackedDib& dib = object.image->AnnouncedDib();
        std::fill_n(dib.Row(spot.top) + ptrdiff_t{spot.left} * 4, 4, static_cast<uint8_t>(Below(256)));
        m_cache.Drop(Zoomed(spot.Moved(object.x, object.y)));
    }

    void ChangeFloating()
    {
        m_floatingPicture = Picture();
        m_floating = {&m_floatingPicture,
                      {Below(50), Below(50)},
                      static_cast<uint8_t>(Below(40)),
                      Below(2) == 0 ? &Any() : nullptr};
        m_cache.Drop({-10'000, -10'000, 10'000, 10'000});
    }

    void ChangeZoom()
    {
        constexpr int kZooms[] = {1, 2, 3, -2, -3};
        m_zoom = kZooms[Below(5)];
        m_cache.DropAll();
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
    CFrameCache m_cache;
    Point m_scroll;
    int m_zoom = 1;
    int m_moved = 0;
};

TEST(FrameCache, PaintsWhatAPlainCompositeDoesAfterAnyChanges)
{
    for (uint32_t seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE(seed);
        CFrameCacheCheck check(seed);
        for (int step = 0; step < 150 && !testing::Test::HasFailure(); ++step) {
            check.Change();
            check.ExpectSamePixels();
        }
    }
}

} // namespace
