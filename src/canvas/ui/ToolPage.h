// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/ToolMode.h"
#include "platform/settings/Settings.h"
#include "platform/strings/Strings.h"

#include <QWidget>

#include <functional>
#include <span>
#include <vector>

/// One control of an option page and the setting that it edits.
struct ToolPageRow {
    enum class Kind { Number, Flag, Gradient };
    Kind kind;
    Str label;
    Setting setting;
    int minimum = 0; ///< of a number
    int maximum = 1;
};

/// The rows of a tool's page; none for tools without settings of their own.
[[nodiscard]] std::span<const ToolPageRow> ToolPageRows(ToolMode mode);

/// An option page: edits settings and knows no tool. Every edit is stored at once.
class CToolPage final : public QWidget {
    Q_OBJECT

public:
    CToolPage(CSettings& settings, std::span<const ToolPageRow> rows, QWidget* parent = nullptr);

    /// Shows the settings as they are now.
    void Refresh();

private:
    void AddNumber(const ToolPageRow& row);
    void AddFlag(const ToolPageRow& row);
    void AddGradients(const ToolPageRow& row);

    CSettings& m_settings;
    std::vector<std::function<void()>> m_refreshers; ///< one a control
};
