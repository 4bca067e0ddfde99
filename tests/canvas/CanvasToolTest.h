// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/PixoluneView.h"
#include "support/TestDocument.h"

#include <initializer_list>

/// Drives a view's tools with document coordinates, at actual size unless a test zooms.
struct CanvasToolTest : testing::Test {
    CanvasToolTest() : view(test.doc) { view.SetClientSize({44, 34}); }

    MouseInput At(Point point, MouseButton button = MouseButton::Left) const
    {
        return {view.Geometry().ToClient(point), button};
    }
    /// Press at the first point, moves through the others, release at the last. `keys` brings Shift and Ctrl.
    void Stroke(std::initializer_list<Point> points, MouseButton button = MouseButton::Left,
                const MouseInput& keys = {})
    {
        MouseInput input = keys;
        input.button = button;
        for (const Point& point : points) {
            input.client = At(point).client;
            if (&point == points.begin())
                view.Press(input);
            else
                view.Move(input);
        }
        view.Release(input);
    }
    [[nodiscard]] std::string UndoName() const { return test.doc.History().UndoItem().text; }
    [[nodiscard]] size_t Steps() const { return test.doc.History().UndoList().size(); }

    TestDocument test;
    CPixoluneView view;
};
