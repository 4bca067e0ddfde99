// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/AboutDialog.h"

#include "platform/LibraryVersions.h"
#include "platform/ui/QtText.h"
#include "platform/ui/ThemedIcon.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>

#include <fontconfig/fontconfig.h>

namespace {

/// Name, version and licence of every library, for reading only.
QTableWidget* CreateLibraryTable()
{
    std::vector<LibraryVersion> libraries = LibraryVersions();
    libraries.push_back({"Qt", qVersion(), "LGPL-3.0-only"});
    libraries.push_back({"Fontconfig", DottedVersion(FcGetVersion()), "HPND"});
    auto* table = new QTableWidget(static_cast<int>(libraries.size()), 3);
    table->setHorizontalHeaderLabels(
        {ToQString(Str::Library), ToQString(Str::LibraryVersion), ToQString(Str::LibraryLicence)});
    table->verticalHeader()->hide();
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setTabKeyNavigation(false);
    table->setShowGrid(false);
    table->setAccessibleName(ToQString(Str::Libraries));
    int line = 0;
    for (const LibraryVersion& library : libraries) {
        const QString version =
            library.version.empty() ? ToQString(Str::LibraryMissing) : ToQString(library.version);
        int column = 0;
        for (const QString& text : {ToQString(library.name), version, ToQString(library.licence)})
            table->setItem(line, column++, new QTableWidgetItem(text));
        ++line;
    }
    table->resizeColumnsToContents();
    table->horizontalHeader()->setStretchLastSection(true);
    constexpr int kRowsShown = 6;
    table->setMinimumHeight(table->rowHeight(0) * kRowsShown +
                            table->horizontalHeader()->sizeHint().height());
    return table;
}

} // namespace

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
    name->setTextInteractionFlags(Qt::TextSelectableByMouse);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);

    auto* layout = new QGridLayout(this);
    layout->setHorizontalSpacing(18);
    layout->setVerticalSpacing(10);
    layout->addWidget(icon, 0, 0, 3, 1, Qt::AlignTop);
    layout->addWidget(name, 0, 1);
    layout->addWidget(new QLabel(ToQString(Str::AboutPurpose)), 1, 1);
    layout->addWidget(new QLabel(ToQString(Str::AboutLicence)), 2, 1);
    layout->addWidget(new QLabel(ToQString(Str::Libraries)), 3, 0, 1, 2);
    layout->addWidget(CreateLibraryTable(), 4, 0, 1, 2);
    layout->addWidget(buttons, 5, 0, 1, 2);
    layout->setRowStretch(4, 1);
    buttons->button(QDialogButtonBox::Ok)->setFocus();
}
