// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>
#include <QPixmap>

#include <string_view>

/// The icon of that name from the program's own family. Its strokes take the text colour of the palette in
/// use, greyed out while disabled; it is drawn at the exact size asked for, in device pixels, and not
/// before something shows it. An empty name gives a null icon.
[[nodiscard]] QIcon ThemedIcon(std::string_view name);

/// One picture of the icon. size: device pixels.
[[nodiscard]] QPixmap IconPixmap(std::string_view name, const QSize& size, const QColor& stroke);

/// The program's own icon, in its own colours.
[[nodiscard]] QIcon ApplicationIcon();
