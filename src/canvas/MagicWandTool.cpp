// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/MagicWandTool.h"

#include "canvas/MagicWand.h"
#include "canvas/PixoluneView.h"
#include "platform/settings/Settings.h"

CSelectionTool::Gesture CMagicWandTool::Begin(const MouseInput& input)
{
    const CObjectCanvas& canvas = View().Document().Canvas();
    const CSettings& settings = View().Document().Services().settings;
    const Point point = View().Geometry().ToDocument(input.client);
    if (!canvas.Rectangle().Contains(point)) {
        if (!View().Selection().IsEmpty())
            CompleteWithNothing();
        return Gesture::Click;
    }
    const CPackedDib frame = Flatten(canvas);
    if (frame.IsEmpty())
        return Gesture::Click;
    CRegion found = WandRegion(frame, point, settings.Get(Setting::Similarity),
                               settings.IsOn(Setting::ConnectedPixelsMagicWand) ? WandReach::Connected
                                                                                : WandReach::Everywhere);
    if (!found.IsEmpty())
        Complete(std::move(found), input);
    return Gesture::Click;
}
