// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/ShapeObject.h"

#include "document/ObjectOperations.h"
#include "document/Refusal.h"
#include "platform/settings/Settings.h"
#include "platform/transform/ColourFill.h"

#include <utility>

bool AddShapeObject(CPixoluneDoc& document, ShapeCoverage coverage, ObjectListKind kind, MouseButton button)
{
    if (coverage.dib.IsEmpty())
        return coverage.outOfMemory ? Refuse(document, Str::OutOfMemory) : false;
    const CSettings& settings = document.Services().settings;
    ColourFill fill{static_cast<uint32_t>(settings.Get(Setting::PaintForeColor)),
                    static_cast<uint32_t>(settings.Get(Setting::PaintBackgndColor)),
                    settings.Get(Setting::FillShapeMode)};
    if (button == MouseButton::Right)
        std::swap(fill.first, fill.second);
    CPackedDib dib = ColourCoverage(coverage.dib, fill);
    if (dib.IsEmpty())
        return Refuse(document, Str::OutOfMemory);

    AddObject(document, kind, std::move(dib), coverage.corner,
              static_cast<uint8_t>(settings.Get(Setting::ShapeOpacity)));
    return true;
}
