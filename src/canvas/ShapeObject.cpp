// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/ShapeObject.h"

#include "document/Refusal.h"
#include "platform/settings/Settings.h"
#include "platform/transform/ColourFill.h"

#include <utility>

bool AddShapeObject(CPixoluneDoc& document, ShapeCoverage coverage, ObjectListKind kind, MouseButton button)
{
    if (coverage.dib.IsEmpty())
        return false;
    const CSettings& settings = document.Services().settings;
    ColourFill fill{static_cast<uint32_t>(settings.Get(Setting::PaintForeColor)),
                    static_cast<uint32_t>(settings.Get(Setting::PaintBackgndColor)),
                    settings.Get(Setting::FillShapeMode)};
    if (button == MouseButton::Right)
        std::swap(fill.first, fill.second);
    CPackedDib dib = ColourCoverage(coverage.dib, fill);
    if (dib.IsEmpty())
        return Refuse(document, Str::OutOfMemory);

    CObjectCanvas& canvas = document.Canvas();
    auto command = std::make_unique<CObjectListCommand>(kind, canvas);
    auto object = MakeShared<CPicObject>(document.NewImage(std::move(dib)));
    object->x = coverage.corner.x;
    object->y = coverage.corner.y;
    object->transparency = static_cast<uint8_t>(settings.Get(Setting::ShapeOpacity));
    object->visible = true;
    canvas.DeselectAll();
    object->SetSelected(true);
    canvas.objects.Append(object);
    document.Record(std::move(command));
    document.NotifyObjectsChanged();
    document.NotifyObjectSelectionChanged();
    document.NotifyFrameChanged(object->Rectangle());
    return true;
}
