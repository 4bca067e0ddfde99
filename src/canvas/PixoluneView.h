// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/AnimationPlayback.h"
#include "canvas/ProgressiveFrame.h"
#include "canvas/SelectionOutline.h"
#include "canvas/SelectionState.h"
#include "canvas/Tool.h"
#include "canvas/ToolMode.h"
#include "canvas/ViewGeometry.h"
#include "canvas/ViewPainting.h"
#include "model/PixoluneDoc.h"
#include "platform/paint/PaintText.h"

#include <array>
#include <memory>
#include <optional>
#include <string>

/// The window that shows a view.
class IViewHost {
public:
    virtual ~IViewHost() = default;
    /// Client pixels to be painted again.
    virtual void Invalidate(const Rect& /*client*/) {}
    /// Scroll range or position changed; everything is to be painted again.
    virtual void OnLayoutChanged() {}
    /// The pointer's position for the status bar changed.
    virtual void OnPointerText(const std::string& /*text*/) {}
    /// DraggedRectText changed.
    virtual void OnDraggedRectText(const std::string& /*text*/) {}
    virtual void OnToolModeChanged() {}
    /// IsBusy changed.
    virtual void OnBusyChanged() {}
    /// The text tool was clicked inside the document: the window asks for a text to stand there.
    virtual void OnTextPoint(Point /*documentPoint*/) {}
    /// The text of an object was double-clicked: the window asks for another one.
    virtual void OnTextObject(const Ref<CPicObject>& /*object*/) {}
    virtual void OnCursorChanged(CursorShape /*shape*/) {}
    /// The colour-picking pointer moved over the picture, which shows 0xAARRGGBB there.
    virtual void OnColourUnderPointer(uint32_t /*pixel*/) {}
    /// A paint colour of the settings was picked from the picture.
    virtual void OnPaintColoursChanged() {}
    /// The animation began or ended to play.
    virtual void OnPlaybackChanged() {}
};

/// A document's canvas as one window shows it: zoom, scroll position, tool and selection. Mouse messages
/// come in, invalidations go out; the picture is painted on demand. Knows no window system.
class CPixoluneView final : public IDocumentObserver {
public:
    /// The view must go before its document; the host may be replaced or none.
    explicit CPixoluneView(CPixoluneDoc& document, IViewHost* host = nullptr);
    ~CPixoluneView() override;

    [[nodiscard]] CPixoluneDoc& Document() const { return m_document; }
    void SetHost(IViewHost* host) { m_host = host; }
    /// None without a window.
    [[nodiscard]] IViewHost* Host() const { return m_host; }

    // Geometry
    [[nodiscard]] const ViewGeometry& Geometry() const { return m_geometry; }
    void SetClientSize(Size client);
    /// The nearest position inside the range is taken.
    void SetScroll(Point scroll);
    [[nodiscard]] int Zoom() const { return m_geometry.zoom; }
    /// -8..-2 or 1..8; anything else is ignored.
    void SetZoom(int zoom);
    /// Keeps the document point under a client point where it is.
    void SetZoomAt(int zoom, Point client);

    // Tools
    [[nodiscard]] ToolMode Mode() const { return m_mode; }
    void SetMode(ToolMode mode);
    [[nodiscard]] CTool& CurrentTool() const { return *m_tools[static_cast<size_t>(m_mode)]; }

    // Selection
    /// The selected pixels of the document; empty: nothing is selected.
    [[nodiscard]] const CRegion& Selection() const { return m_selection->region; }
    /// Installs a region, which may reach outside the document, and repaints its outline.
    void SetSelection(CRegion region);
    /// Shows the outline away from its place, in canvas pixels, while the selection is dragged.
    void SetOutlineOffset(Point offset);
    /// Lets the dashes of the outline wander one pixel on; the window calls it from a timer.
    void AdvanceOutline();
    /// Takes over a selection that commands of the document hold, in place of its own.
    void TakeSelection(const Ref<CSelectionState>& selection);
    /// What selection commands hold.
    [[nodiscard]] const Ref<CSelectionState>& SharedSelection() const { return m_selection; }
    /// The document pixels that the window shows.
    [[nodiscard]] Rect VisibleDocumentRect() const;

    // Mouse and keyboard
    void Press(const MouseInput& input);
    void Move(const MouseInput& input);
    void Release(const MouseInput& input);
    /// The second press of a double click; true when the tool used it as such.
    bool DoubleClick(const MouseInput& input);
    bool Key(ToolKey key) { return CurrentTool().Key(key); }
    /// Gives up an unfinished drag or shape; true when there was one.
    bool CancelDrag();
    /// Lets the button of a drag go where the pointer is, since a command is about to run. What several
    /// clicks draw goes on.
    void FinishDrag();
    /// Whether CancelDrag would give something up.
    [[nodiscard]] bool IsBusy() const { return m_drag.button != MouseButton::None || CurrentTool().IsBusy(); }
    /// The pointer came into the window, or left it. Tools show something around it only inside.
    void SetPointerInside(bool inside);
    [[nodiscard]] bool IsPointerInside() const { return m_pointerInside; }
    /// Where the pointer was last, in client pixels.
    [[nodiscard]] Point Pointer() const { return m_pointer; }
    [[nodiscard]] CursorShape Cursor() const;
    /// " x=%d y=%d" of the last pointer position; empty before the first.
    [[nodiscard]] const std::string& PointerText() const { return m_pointerText; }
    /// Size and place of what is being drawn or dragged, or else of the selection; empty when nothing is.
    [[nodiscard]] const std::string& DraggedRectText() const { return m_draggedRectText; }

    // Animation
    [[nodiscard]] bool IsPlaying() const { return m_playback.has_value(); }
    /// Shows the visible objects one after another, bottom first, and nothing else, or ends that. There must
    /// be a visible object. A change of the document and a press of the mouse end it, too; the press does
    /// nothing else.
    void SetPlaying(bool isPlaying);
    /// On to the next object; the window calls it from a timer.
    void StepPlayback();

    // Painting
    /// The colours of the space around the picture, which are those of the desktop.
    void SetSurroundings(const SurroundingColours& colours);
    /// Finds out what the parts of a client rectangle show, which are painted next.
    [[nodiscard]] FrameScene BeginPainting(const Rect& area, FrameRule rule) const;
    /// Paints the client rectangle `area` into `target`, which has its size; every pixel is set, alpha 255.
    void Paint(const BitmapView& target, const Rect& area, const FrameScene& scene) const;
    /// The same of the document as it is.
    void Paint(const BitmapView& target, const Rect& area) const
    {
        Paint(target, area, BeginPainting(area, FrameRule::Exact));
    }
    /// Whether the window shows the document as it is.
    [[nodiscard]] bool IsFrameExact() const { return IsPlaying() || m_frame.IsExact(); }
    /// Whether RefineFrame is to be called again and again while nothing else is to be done.
    [[nodiscard]] bool IsFrameUnfinished() const { return !IsPlaying() && m_frame.IsUnfinished(); }
    /// Goes on composing the frame until a point in time, and invalidates what has become better.
    void RefineFrame(CProgressiveFrame::Clock::time_point until);
    [[nodiscard]] CProgressiveFrame& Frame() const { return m_frame; }
    /// What is painted over the objects has changed in a client rectangle.
    void Invalidate(const Rect& client) const;
    /// Frees what is kept of the last painting: the window is out of sight.
    void ForgetPainting() { m_frame.Forget(); }
    /// What the objects show has changed in a rectangle of the document.
    void InvalidateDocument(const Rect& documentRect) const;
    /// Only the edges of a client rectangle, and so many pixels on both sides of them.
    void InvalidateFrame(const Rect& client, int reach) const;
    void InvalidateAll() const;
    void AskForText(Point documentPoint);
    /// The object shows a text.
    void AskForTextOf(const Ref<CPicObject>& object);
    /// How the last text was written here, for the next one.
    [[nodiscard]] TextStyle& LastTextStyle() { return m_lastTextStyle; }

    void OnFrameChanged(const Rect& rect) override;
    void OnFloatingChanged(const Rect& rect) override;
    void OnObjectsChanged() override { SetPlaying(false); }
    void OnObjectSelectionChanged() override;
    void OnCanvasSizeChanged() override;

private:
    void Relayout();
    [[nodiscard]] FrameScene Scene() const;
    /// Where somebody looks, in the zoomed frame.
    [[nodiscard]] Point Focus(const FrameScene& scene) const;
    void FollowPointer(Point client);
    void InvalidatePointerArea() const { Invalidate(CurrentTool().PointerArea()); }
    /// Tells the window how the current tool looks now: its cursor, and what it drags.
    void TellToolState();
    void InvalidateOutline() const;

    CPixoluneDoc& m_document;
    IViewHost* m_host;
    ViewGeometry m_geometry;
    ToolMode m_mode = ToolMode::Default;
    std::array<std::unique_ptr<CTool>, kToolModeCount> m_tools;
    MouseInput m_drag; ///< the last message of a drag; without one no button
    Point m_pointer;
    bool m_pointerInside = false;
    bool m_toldBusy = false; ///< what the window was told last of IsBusy
    std::string m_pointerText;
    std::string m_draggedRectText;
    std::optional<CAnimationPlayback> m_playback; ///< while the animation plays
    TextStyle m_lastTextStyle;
    Ref<CSelectionState> m_selection = MakeShared<CSelectionState>();
    SurroundingColours m_surroundings;
    CSelectionOutline m_outline;
    Point m_outlineOffset;
    int m_outlinePhase = 0;
    mutable CProgressiveFrame m_frame;
};
