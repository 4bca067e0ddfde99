// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/ToolBarKeys.h"

#include <QKeyEvent>
#include <QToolBar>
#include <QToolButton>

CToolBarKeys::CToolBarKeys(QToolBar& bar) : QObject(&bar), m_bar(bar)
{
    for (QAction* action : bar.actions()) {
        if (auto* button = qobject_cast<QToolButton*>(bar.widgetForAction(action))) {
            button->setFocusPolicy(Qt::TabFocus);
            button->installEventFilter(this);
        }
    }
}

/// Those that can be reached now, in the order of the bar.
QList<QWidget*> CToolBarKeys::Buttons() const
{
    QList<QWidget*> buttons;
    for (QAction* action : m_bar.actions()) {
        QWidget* button = m_bar.widgetForAction(action);
        if (button && button->focusPolicy() != Qt::NoFocus && button->isEnabled() && button->isVisible())
            buttons.append(button);
    }
    return buttons;
}

bool CToolBarKeys::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    auto& button = static_cast<QWidget&>(*watched);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Tab || key == Qt::Key_Backtab)
        return Leave(button, key == Qt::Key_Tab);
    return Step(button, key);
}

bool CToolBarKeys::Step(QWidget& from, int key) const
{
    const QList<QWidget*> buttons = Buttons();
    const qsizetype at = buttons.indexOf(&from);
    qsizetype next = at;
    switch (key) {
    case Qt::Key_Left:
    case Qt::Key_Up:
        next = at - 1;
        break;
    case Qt::Key_Right:
    case Qt::Key_Down:
        next = at + 1;
        break;
    case Qt::Key_Home:
        next = 0;
        break;
    case Qt::Key_End:
        next = buttons.size() - 1;
        break;
    default:
        return false;
    }
    if (next >= 0 && next < buttons.size())
        buttons[next]->setFocus(Qt::OtherFocusReason);
    return true;
}

/// Goes on behind, or before, the whole bar.
bool CToolBarKeys::Leave(QWidget& from, bool forward) const
{
    const auto beside = [forward](QWidget* widget) {
        return forward ? widget->nextInFocusChain() : widget->previousInFocusChain();
    };
    for (QWidget* next = beside(&from); next != &from; next = beside(next)) {
        if ((next->focusPolicy() & Qt::TabFocus) && next->isEnabled() && next->isVisible() &&
            !m_bar.isAncestorOf(next)) {
            next->setFocus(forward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
            return true;
        }
    }
    return false;
}
