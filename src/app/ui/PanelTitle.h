// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/strings/Strings.h"

#include <QWidget>

#include <functional>
#include <string_view>

class QHBoxLayout;

/// The title line of a panel: its name, and small buttons that are reached with Tab as well.
class CPanelTitle final : public QWidget {
    Q_OBJECT

public:
    CPanelTitle(const QString& name, QWidget* parent);

    void AddButton(std::string_view icon, Str name, std::function<void()> act);

private:
    QHBoxLayout* m_layout;
};
