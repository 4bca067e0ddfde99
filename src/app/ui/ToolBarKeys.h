// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

class QToolBar;
class QWidget;

/// Lets the keyboard into a tool bar: Tab enters and leaves it, the arrow keys, Home and End go from button
/// to button.
class CToolBarKeys final : public QObject {
    Q_OBJECT

public:
    /// The bar owns the object; the buttons it has by now are served.
    explicit CToolBarKeys(QToolBar& bar);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    [[nodiscard]] QList<QWidget*> Buttons() const;
    bool Step(QWidget& from, int key) const;
    bool Leave(QWidget& from, bool forward) const;

    QToolBar& m_bar;
};
