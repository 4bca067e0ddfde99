// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/PixoluneView.h"

#include "canvas/ToolFactory.h"

namespace {

/// Whether a button holds objects, which are likely to be dragged.
bool HoldsObjects(const CPixoluneView& view)
{
    return view.Mode() == ToolMode::Default && view.CurrentTool().IsBusy();
}

} // namespace

CPixoluneView::CPixoluneView(CPixoluneDoc& document, IViewHost* host) : m_document(document), m_host(host)
{
    m_geometry.document = document.Canvas().Size();
    m_selection->view = this;
    for (int mode = 0; mode < kToolModeCount; ++mode)
        m_tools[static_cast<size_t>(mode)] = CreateTool(static_cast<ToolMode>(mode), *this);
    m_document.AddObserver(this);
}

CPixoluneView::~CPixoluneView()
{
    m_host = nullptr;
    CancelDrag();
    m_document.RemoveObserver(this);
    m_selection->view = nullptr;
}

void CPixoluneView::SetClientSize(Size client)
{
    m_geometry.client = client;
    Relayout();
}

void CPixoluneView::SetScroll(Point scroll)
{
    const Point clamped = m_geometry.ClampedScroll(scroll);
    if (clamped == m_geometry.scroll)
        return;
    m_geometry.scroll = clamped;
    if (m_host != nullptr)
        m_host->OnLayoutChanged();
}

void CPixoluneView::SetZoom(int zoom)
{
    if (!IsZoom(zoom) || zoom == m_geometry.zoom)
        return;
    m_geometry.zoom = zoom;
    Relayout();
}

void CPixoluneView::SetZoomAt(int zoom, Point client)
{
    if (!IsZoom(zoom) || zoom == m_geometry.zoom)
        return;
    const Point kept = m_geometry.ToDocument(client);
    m_geometry.zoom = zoom;
    const Point canvas = m_geometry.ToCanvas(kept);
    m_geometry.scroll = {AddClamped(canvas.x, -client.x), AddClamped(canvas.y, -client.y)};
    Relayout();
}

void CPixoluneView::Relayout()
{
    m_geometry.document = m_document.Canvas().Size();
    m_geometry.scroll = m_geometry.ClampedScroll(m_geometry.scroll);
    if (m_host != nullptr)
        m_host->OnLayoutChanged();
}

void CPixoluneView::SetMode(ToolMode mode)
{
    CancelDrag();
    InvalidatePointerArea();
    m_mode = mode;
    InvalidatePointerArea();
    TellToolState();
    if (m_host != nullptr)
        m_host->OnToolModeChanged();
}

void CPixoluneView::TakeSelection(const Ref<CSelectionState>& selection)
{
    m_selection->view = nullptr;
    m_selection = selection;
    m_selection->view = this;
    SetSelection(m_selection->region);
}

void CPixoluneView::SetSelection(CRegion region)
{
    InvalidateOutline();
    m_selection->region = std::move(region);
    m_outline.Build(m_selection->region);
    m_outlineOffset = {};
    InvalidateOutline();
    TellToolState();
}

void CPixoluneView::SetOutlineOffset(Point offset)
{
    InvalidateOutline();
    m_outlineOffset = offset;
    InvalidateOutline();
}

void CPixoluneView::AdvanceOutline()
{
    if (m_outline.IsEmpty())
        return;
    m_outlinePhase = (m_outlinePhase + 1) % CSelectionOutline::kPeriod;
    InvalidateOutline();
}

void CPixoluneView::InvalidateOutline() const
{
    if (m_host == nullptr)
        return;
    m_outline.VisitCovered(m_geometry, m_outlineOffset, [this](const Rect& rect) { Invalidate(rect); });
}

Rect CPixoluneView::VisibleDocumentRect() const
{
    const Rect shown = m_geometry.ImageInClient().Intersected(Rect::At({0, 0}, m_geometry.client));
    if (shown.IsEmpty())
        return {};
    const Point corner = m_geometry.ToDocument(shown.Corner());
    const Point last = m_geometry.ToDocument(Point{shown.right - 1, shown.bottom - 1});
    return {corner.x, corner.y, last.x + 1, last.y + 1};
}

void CPixoluneView::Press(const MouseInput& input)
{
    // A second button during a drag is not a new drag.
    if (m_drag.button != MouseButton::None)
        return;
    if (IsPlaying()) {
        SetPlaying(false);
        return;
    }
    m_drag = input;
    FollowPointer(input.client);
    CurrentTool().Down(input);
    TellToolState();
    if (HoldsObjects(*this)) {
        const FrameScene scene = Scene();
        m_frame.ExpectMotion(scene, Focus(scene));
    }
}

void CPixoluneView::Move(const MouseInput& input)
{
    FollowPointer(input.client);
    MouseInput held = input;
    held.button = m_drag.button;
    m_drag.client = input.client;
    m_drag.shift = input.shift;
    CurrentTool().Move(held);
    const Point point = m_geometry.ToDocument(input.client);
    m_pointerText = Text(Str::PointerPosition, point.x, point.y);
    if (m_host != nullptr)
        m_host->OnPointerText(m_pointerText);
    TellToolState();
}

void CPixoluneView::Release(const MouseInput& input)
{
    if (m_drag.button == MouseButton::None || input.button != m_drag.button)
        return;
    m_drag.button = MouseButton::None;
    FollowPointer(input.client);
    CurrentTool().Up(input);
    m_frame.EndMotion();
    TellToolState();
}

bool CPixoluneView::DoubleClick(const MouseInput& input)
{
    FollowPointer(input.client);
    const bool isUsed = CurrentTool().DoubleClick(input);
    TellToolState();
    return isUsed;
}

bool CPixoluneView::CancelDrag()
{
    const bool wasBusy = IsBusy();
    m_drag.button = MouseButton::None;
    CurrentTool().Cancel();
    TellToolState();
    return wasBusy;
}

void CPixoluneView::FinishDrag()
{
    // Ctrl may be down for the command's sake: whether the drag has it was settled by the press.
    Release(MouseInput(m_drag));
}

void CPixoluneView::SetPointerInside(bool inside)
{
    InvalidatePointerArea();
    m_pointerInside = inside;
    InvalidatePointerArea();
}

void CPixoluneView::FollowPointer(Point client)
{
    InvalidatePointerArea();
    m_pointer = client;
    InvalidatePointerArea();
}

CursorShape CPixoluneView::Cursor() const
{
    return CurrentTool().Cursor(m_geometry.ToDocument(m_pointer));
}

void CPixoluneView::TellToolState()
{
    if (m_host == nullptr)
        return;
    m_host->OnCursorChanged(Cursor());
    if (IsBusy() != m_toldBusy) {
        m_toldBusy = IsBusy();
        m_host->OnBusyChanged();
    }
    std::string text;
    std::optional<Rect> rect = CurrentTool().DraggedRect();
    if (!rect && !m_selection->region.IsEmpty())
        rect = m_selection->region.Bounds();
    if (rect)
        text = Text(Str::DraggedSize, rect->Width(), rect->Height()) +
               Text(Str::PointerPosition, rect->left, rect->top);
    if (text == m_draggedRectText)
        return;
    m_draggedRectText = std::move(text);
    m_host->OnDraggedRectText(m_draggedRectText);
}

void CPixoluneView::SetSurroundings(const SurroundingColours& colours)
{
    m_surroundings = colours;
    InvalidateAll();
}

FrameScene CPixoluneView::Scene() const
{
    const Rect image = m_geometry.ImageInClient();
    FrameScene scene{&m_document.Canvas(),
                     m_document.Floating(),
                     DisplayLayers(m_document.Canvas(), m_document.Floating()),
                     {image.Width(), image.Height()},
                     Rect::At({-image.left, -image.top}, m_geometry.client),
                     m_geometry.zoom,
                     HoldsObjects(*this)};
    for (const Ref<CPicObject>& object : m_document.Canvas().objects) {
        if (object->IsActive())
            scene.active.push_back(object->Rectangle());
    }
    return scene;
}

Point CPixoluneView::Focus(const FrameScene& scene) const
{
    const Size client = m_geometry.client;
    const Point focus = m_pointerInside ? m_pointer : Point{client.width / 2, client.height / 2};
    return {scene.window.left + focus.x, scene.window.top + focus.y};
}

FrameScene CPixoluneView::BeginPainting(const Rect& area, FrameRule rule) const
{
    if (m_playback)
        return {};
    FrameScene scene = Scene();
    m_frame.Begin(scene, area.Moved(scene.window.left, scene.window.top), rule);
    return scene;
}

void CPixoluneView::RefineFrame(CProgressiveFrame::Clock::time_point until)
{
    if (m_playback)
        return;
    const FrameScene scene = Scene();
    for (const Rect& rect : m_frame.Refine(scene, Focus(scene), until))
        Invalidate(rect.Moved(-scene.window.left, -scene.window.top));
}

void CPixoluneView::Paint(const BitmapView& target, const Rect& area, const FrameScene& scene) const
{
    PaintSurroundings(target, area, m_geometry, m_surroundings);
    const Rect image = m_geometry.ImageInClient();
    const Rect shown = image.Intersected(area);
    if (!shown.IsEmpty()) {
        const BitmapView part = target.Part(shown.Moved(-area.left, -area.top));
        const Point origin{shown.left - image.left, shown.top - image.top};
        if (m_playback) {
            PaintBackdrop(part, origin);
            CompositeForDisplay(part, origin, m_playback->Shown(), m_geometry.zoom);
        } else {
            m_frame.Paint(part, origin, scene);
        }
    }
    if (m_playback)
        return;
    for (const Rect& rect : scene.active)
        PaintFrame(target, area, m_geometry.ToClient(rect).Inflated(1));
    m_outline.Paint(target, area, m_geometry, m_outlineOffset, m_outlinePhase);
    CurrentTool().PaintFeedback(target, area);
}

void CPixoluneView::SetPlaying(bool isPlaying)
{
    if (isPlaying == IsPlaying())
        return;
    m_playback.reset();
    if (isPlaying) {
        FinishDrag();
        m_playback.emplace(m_document.Canvas());
    }
    InvalidateAll();
    if (m_host != nullptr)
        m_host->OnPlaybackChanged();
}

void CPixoluneView::StepPlayback()
{
    if (!m_playback)
        return;
    m_playback->Step();
    InvalidateDocument(m_document.Canvas().Rectangle());
}

void CPixoluneView::InvalidateDocument(const Rect& documentRect) const
{
    const Rect client = m_geometry.Touched(documentRect);
    const Rect image = m_geometry.ImageInClient();
    m_frame.Drop(client.Moved(-image.left, -image.top));
    Invalidate(client);
}

void CPixoluneView::Invalidate(const Rect& client) const
{
    const Rect shown = client.Intersected(Rect::At({0, 0}, m_geometry.client));
    if (m_host != nullptr && !shown.IsEmpty())
        m_host->Invalidate(shown);
}

void CPixoluneView::InvalidateFrame(const Rect& client, int reach) const
{
    const Rect outer = client.Inflated(reach);
    const Rect inner = client.Inflated(-reach);
    if (inner.IsEmpty()) {
        Invalidate(outer);
        return;
    }
    Invalidate({outer.left, outer.top, outer.right, inner.top});
    Invalidate({outer.left, inner.bottom, outer.right, outer.bottom});
    Invalidate({outer.left, inner.top, inner.left, inner.bottom});
    Invalidate({inner.right, inner.top, outer.right, inner.bottom});
}

void CPixoluneView::InvalidateAll() const
{
    Invalidate(Rect::At({0, 0}, m_geometry.client));
}

void CPixoluneView::AskForText(Point documentPoint)
{
    // The window's dialog takes over: nothing is held any more.
    m_drag.button = MouseButton::None;
    if (m_host != nullptr)
        m_host->OnTextPoint(documentPoint);
}

void CPixoluneView::AskForTextOf(const Ref<CPicObject>& object)
{
    m_drag.button = MouseButton::None;
    if (m_host != nullptr)
        m_host->OnTextObject(object);
}

void CPixoluneView::OnFrameChanged(const Rect& rect)
{
    SetPlaying(false);
    if (!rect.IsEmpty())
        InvalidateDocument(rect);
}

void CPixoluneView::OnFloatingChanged(const Rect& rect)
{
    if (!rect.IsEmpty())
        InvalidateDocument(rect);
}

void CPixoluneView::OnObjectSelectionChanged()
{
    InvalidateAll(); // only the frames around objects
}

void CPixoluneView::OnCanvasSizeChanged()
{
    SetPlaying(false);
    m_frame.DropAll();
    Relayout();
}
