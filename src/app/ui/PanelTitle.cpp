// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/PanelTitle.h"

#include "platform/ui/QtText.h"
#include "platform/ui/ThemedIcon.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

CPanelTitle::CPanelTitle(const QString& name, QWidget* parent)
    : QWidget(parent), m_layout(new QHBoxLayout(this))
{
    m_layout->setContentsMargins(6, 2, 2, 2);
    m_layout->setSpacing(0);
    auto* label = new QLabel(name);
    // A narrow panel keeps its buttons rather than its name.
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_layout->addWidget(label, 1);
}

void CPanelTitle::AddButton(std::string_view icon, Str name, std::function<void()> act)
{
    auto* button = new QToolButton;
    button->setIcon(ThemedIcon(icon));
    const int edge = fontMetrics().height();
    button->setIconSize({edge, edge});
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    button->setToolTip(ToQString(name));
    button->setAccessibleName(button->toolTip());
    connect(button, &QToolButton::clicked, this, std::move(act));
    m_layout->addWidget(button);
}
