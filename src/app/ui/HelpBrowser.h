// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTextBrowser>

class CShortcuts;

/// Shows help pages. The page on the keyboard ends with the keys that commands have now.
class CHelpBrowser final : public QTextBrowser {
    Q_OBJECT

public:
    explicit CHelpBrowser(const CShortcuts& shortcuts, QWidget* parent = nullptr);

    /// Shows a page afresh, with the keys of now.
    void ShowPage(const QUrl& page);
    QVariant loadResource(int type, const QUrl& name) override;

private:
    /// Gives tables thin lines and some air.
    void StyleTables();

    const CShortcuts& m_shortcuts;
};

/// The keys of all commands by menu, as a part of a page.
[[nodiscard]] QString KeyTables(const CShortcuts& shortcuts);
