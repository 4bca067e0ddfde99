// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/AboutDialog.h"

#include "platform/ui/QtText.h"
#include "platform/ui/ThemedIcon.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>

CAboutDialog::CAboutDialog(QWidget* parent) : QDialog(parent)
{
    const QString title = ToQString(Str::ApplicationTitle);
    setWindowTitle(ToQString(Text(Str::About, Text(Str::ApplicationTitle))));

    constexpr int kIconSize = 72;
    auto* icon = new QLabel;
    icon->setPixmap(ApplicationIcon().pixmap(QSize(kIconSize, kIconSize), devicePixelRatioF()));
    auto* name = new QLabel(title + QLatin1Char(' ') + QCoreApplication::applicationVersion());
    QFont font = name->font();
    font.setPointSizeF(font.pointSizeF() * 1.4);
    font.setBold(true);
    name->setFont(font);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);

    auto* layout = new QGridLayout(this);
    layout->setHorizontalSpacing(18);
    layout->setVerticalSpacing(10);
    layout->addWidget(icon, 0, 0, 3, 1, Qt::AlignTop);
    layout->addWidget(name, 0, 1);
    layout->addWidget(new QLabel(ToQString(Str::AboutPurpose)), 1, 1);
    layout->addWidget(new QLabel(ToQString(Str::AboutLicence)), 2, 1);
    layout->addWidget(buttons, 3, 0, 1, 2);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}
