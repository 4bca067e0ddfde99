// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/ProgramStyle.h"

#include "platform/ui/ThemedIcon.h"

namespace {

constexpr struct {
    QStyle::StandardPixmap icon;
    const char* name;
} kIcons[] = {{QStyle::SP_ArrowBack, "go-back"},
              {QStyle::SP_ArrowForward, "go-forward"},
              {QStyle::SP_FileDialogToParent, "go-up"},
              {QStyle::SP_FileDialogNewFolder, "folder-new"},
              {QStyle::SP_FileDialogListView, "view-list"},
              {QStyle::SP_FileDialogDetailedView, "view-details"},
              {QStyle::SP_MessageBoxInformation, "message-information"},
              {QStyle::SP_MessageBoxQuestion, "message-question"},
              {QStyle::SP_MessageBoxWarning, "message-warning"},
              {QStyle::SP_MessageBoxCritical, "message-critical"}};

} // namespace

QIcon CProgramStyle::standardIcon(StandardPixmap icon, const QStyleOption* option,
                                  const QWidget* widget) const
{
    for (const auto& row : kIcons) {
        if (row.icon == icon)
            return ThemedIcon(row.name);
    }
    return QProxyStyle::standardIcon(icon, option, widget);
}

int CProgramStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                             QStyleHintReturn* returnData) const
{
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons)
        return 0;
    return QProxyStyle::styleHint(hint, option, widget, returnData);
}
