// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/FillBrush.h"
#include "canvas/Tool.h"
#include "platform/settings/Settings.h"

#include <algorithm>

/// Which colour a mouse button stands for.
[[nodiscard]] constexpr Setting ColourSettingOf(MouseButton button)
{
    return button == MouseButton::Right ? Setting::PaintBackgndColor : Setting::PaintForeColor;
}

/// The button's colour, as opaque as a transparency setting leaves it.
[[nodiscard]] inline Paint PaintOf(const CSettings& settings, MouseButton button, Setting transparency)
{
    return {ColourOf(settings.Get(ColourSettingOf(button))),
            static_cast<uint8_t>(255 - std::clamp(settings.Get(transparency), 0, 255))};
}
