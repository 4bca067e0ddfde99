// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/region/RegionBuilder.h"
#include "support/Cases.h"
#include "support/Inputs.h"
#include "support/Workbench.h"

#include <memory>

namespace {

/// 100,000 rectangles all over 4000 x 3000 pixels.
CRegion Complicated()
{
    constexpr int kInRow = 100, kRows = 1000;
    CRegionBuilder builder(size_t{kInRow} * kRows);
    for (int row = 0; row < kRows; ++row) {
        for (int column = 0; column < kInRow; ++column)
            builder.AddRun(row * 3, column * 40 + row % 7, column * 40 + row % 7 + 20);
    }
    return builder.Finish();
}

enum class Button { Held, Up };

/// One movement of the pointer by 3 pixels, with the repaint that it asks for.
void AddMoving(const char* operation, ToolMode mode, Button button)
{
    AddCase({operation, "12MP-100000-rectangles", "ours"}, [=] {
        auto bench = std::make_shared<CWorkbench>(BackdropPicture(12).Duplicate());
        CPixoluneView& view = bench->View();
        view.SetSelection(Complicated());
        view.SetMode(mode);
        view.SetPointerInside(true);
        if (button == Button::Held)
            view.Press(CWorkbench::LeftAt({30, 33}));
        bench->PaintInvalidated();
        return [bench, x = 0]() mutable {
            x = (x + 3) % 600;
            bench->View().Move(CWorkbench::LeftAt({200 + x, 300}));
            bench->PaintInvalidated();
        };
    });
}

const bool kRegistered = [] {
    AddMoving("pointer/over-selection", ToolMode::RectangularSelection, Button::Up);
    AddMoving("pointer/brush", ToolMode::Pencil, Button::Up);
    AddMoving("pointer/stroke", ToolMode::Erase, Button::Held);
    AddMoving("pointer/rectangle", ToolMode::Rectangle, Button::Held);
    AddCase({"pointer/selection-outline", "12MP-100000-rectangles", "ours"}, [] {
        auto bench = std::make_shared<CWorkbench>(BackdropPicture(12).Duplicate());
        bench->View().SetSelection(Complicated());
        return [bench] {
            bench->View().AdvanceOutline();
            bench->PaintInvalidated();
        };
    });
    return true;
}();

} // namespace
