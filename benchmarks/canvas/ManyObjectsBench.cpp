// SPDX-License-Identifier: GPL-3.0-or-later
#include "document/PanelOperations.h"
#include "document/PlacementOperations.h"
#include "document/StackingOperations.h"
#include "support/Cases.h"
#include "support/Workbench.h"

#include <functional>
#include <memory>

namespace {

/// One operation on a document whose every second object is selected, and its undoing. Ten times the objects
/// may cost ten times as much and no more.
void AddOperation(const char* operation, const std::function<void(CPixoluneDoc&)>& operate)
{
    for (const int count : {1000, 10'000}) {
        AddCase({operation, std::to_string(count) + "-objects", "ours"}, [=] {
            auto bench = std::make_shared<CWorkbench>(CPackedDib::CreateTransparent(640, 480));
            bench->AddObjects(count);
            CObjectList everySecond;
            for (size_t i = 1; i < bench->Document().Canvas().objects.Count(); i += 2)
                everySecond.Append(bench->Document().Canvas().objects.At(i));
            SelectObjects(bench->Document(), everySecond);
            return [bench, operate] {
                operate(bench->Document());
                bench->Document().Undo();
                bench->ForgetInvalidated();
            };
        });
    }
}

const bool kRegistered = [] {
    AddOperation("objects/move-to-front", [](CPixoluneDoc& d) { Restack(d, StackingKind::MoveToFront); });
    AddOperation("objects/move-forward", [](CPixoluneDoc& d) { Restack(d, StackingKind::MoveForward); });
    AddOperation("objects/drop-in-list", [](CPixoluneDoc& d) {
        MoveObjectsTo(d, d.Canvas().ActiveObjects(), d.Canvas().objects.Count() / 2);
    });
    AddOperation("objects/nudge", [](CPixoluneDoc& d) { NudgeObjects(d, 1, 0); });
    AddOperation("objects/hide", [](CPixoluneDoc& d) { SetVisible(d, d.Canvas().ActiveObjects(), false); });
    AddOperation("objects/select", [](CPixoluneDoc& d) { SelectObjects(d, d.Canvas().ActiveObjects()); });
    return true;
}();

} // namespace
