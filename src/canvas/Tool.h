// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/ToolMode.h"
#include "platform/dib/PackedDib.h"
#include "platform/geometry/Geometry.h"

#include <optional>

class CPixoluneView;

enum class MouseButton { None, Left, Right };

/// One mouse message. The keys are those held while it was sent.
struct MouseInput {
    Point client;
    MouseButton button = MouseButton::None;
    bool shift = false;
    bool ctrl = false;
    bool alt = false;
};

/// Keys that a tool may use while something is unfinished.
enum class ToolKey { Enter, Backspace, Delete };

/// One tool of the canvas. It gets the mouse messages while its mode is on and reads its settings when it
/// acts. Down is followed by moves and exactly one Up or Cancel.
class CTool {
public:
    explicit CTool(CPixoluneView& view) : m_view(view) {}
    virtual ~CTool() = default;
    CTool(const CTool&) = delete;
    CTool& operator=(const CTool&) = delete;

    virtual void Down(const MouseInput& /*input*/) {}
    /// With or without a button held.
    virtual void Move(const MouseInput& /*input*/) {}
    virtual void Up(const MouseInput& /*input*/) {}
    /// The second press of a double click. False when it means no more to the tool than any press.
    virtual bool DoubleClick(const MouseInput& /*input*/) { return false; }
    /// True when the tool used the key.
    virtual bool Key(ToolKey /*key*/) { return false; }
    /// Gives up whatever is unfinished and leaves the document as it was before it began.
    virtual void Cancel() {}
    /// Whether something is under way that Cancel would give up.
    [[nodiscard]] virtual bool IsBusy() const { return false; }
    /// Draws the unfinished feedback over the painted view. target shows the client rectangle `area`.
    virtual void PaintFeedback(const BitmapView& /*target*/, const Rect& /*area*/) const {}
    /// Client pixels around the pointer that PaintFeedback draws on, whether or not something is under way.
    [[nodiscard]] virtual Rect PointerArea() const { return {}; }
    /// The rectangle of document pixels that is being drawn or dragged; none without one.
    [[nodiscard]] virtual std::optional<Rect> DraggedRect() const { return std::nullopt; }
    [[nodiscard]] virtual CursorShape Cursor(Point /*documentPoint*/) const { return CursorShape::Arrow; }

protected:
    [[nodiscard]] CPixoluneView& View() const { return m_view; }

private:
    CPixoluneView& m_view;
};
