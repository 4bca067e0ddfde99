// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/Tool.h"

class CEditCommand;

/// Selects and moves objects; a double click changes the text of one.
class CDefaultTool final : public CTool {
public:
    using CTool::CTool;

    void Down(const MouseInput& input) override;
    void Move(const MouseInput& input) override;
    void Up(const MouseInput& input) override;
    /// Asks for another text where an object shows one.
    bool DoubleClick(const MouseInput& input) override;
    void Cancel() override;
    [[nodiscard]] bool IsBusy() const override { return m_state != State::Idle; }
    /// The smallest rectangle around the objects that are moved.
    [[nodiscard]] std::optional<Rect> DraggedRect() const override;
    [[nodiscard]] CursorShape Cursor(Point documentPoint) const override;

private:
    /// Armed: a button went down on an object, nothing has moved yet.
    enum class State { Idle, Armed, Moving };

    State m_state = State::Idle;
    Point m_last;
    Point m_total;
    bool m_wasModified = false;
    const CEditCommand* m_recorded = nullptr; ///< the move under way; compared only
};
