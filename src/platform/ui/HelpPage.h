// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>
#include <QVariant>

inline constexpr const char* kHelpPageProperty = "helpPage";

/// Names the page that describes a part of the program, or the command of a menu entry; it is shown when help
/// is asked for in there.
inline void SetHelpPage(QObject& part, const QString& page)
{
    part.setProperty(kHelpPageProperty, page);
}

/// Empty for a part without a page of its own.
[[nodiscard]] inline QString HelpPageOf(const QObject& part)
{
    return part.property(kHelpPageProperty).toString();
}
