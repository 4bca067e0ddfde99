// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/PrintPreviewDialog.h"

#include "platform/ui/QtText.h"
#include "platform/ui/ThemedIcon.h"

#include <QDialogButtonBox>
#include <QGraphicsView>
#include <QLabel>
#include <QPrintPreviewWidget>
#include <QPushButton>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

CPrintPreviewDialog::CPrintPreviewDialog(QPrinter& printer, std::function<void(QPrinter&)> paint,
                                         std::function<bool(QWidget&)> setUpPage, QWidget* parent)
    : QDialog(parent), m_setUpPage(std::move(setUpPage)), m_pages(new QPrintPreviewWidget(&printer)),
      m_number(new QLabel)
{
    setWindowTitle(ToQString(Str::PrintPreview));
    // The view inside has the keyboard.
    m_pages->findChild<QGraphicsView*>()->setAccessibleName(windowTitle());
    m_number->setContentsMargins(6, 0, 6, 0);
    auto* bar = new QToolBar;
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    QPushButton* print = buttons->addButton(ToQString(Str::PrintPages), QDialogButtonBox::AcceptRole);
    print->setDefault(true);
    print->setFocus();
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(bar);
    layout->addWidget(m_pages, 1);
    layout->addWidget(buttons);
    connect(m_pages, &QPrintPreviewWidget::paintRequested, this,
            [draw = std::move(paint)](QPrinter* target) { draw(*target); });
    connect(m_pages, &QPrintPreviewWidget::previewChanged, this, &CPrintPreviewDialog::ShowPageNumber);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    FillBar(*bar);
    m_pages->fitInView();
}

void CPrintPreviewDialog::FillBar(QToolBar& bar)
{
    const auto add = [&](const char* icon, Str text, QKeySequence keys, auto act) {
        QAction* action = bar.addAction(ThemedIcon(icon), ToQString(text), this, act);
        action->setShortcut(keys);
        // Bars leave their buttons out of the Tab order.
        bar.widgetForAction(action)->setFocusPolicy(Qt::TabFocus);
        return action;
    };
    add("page-setup", Str::ShowPageSetup, {}, [this] {
        if (m_setUpPage(*this))
            m_pages->updatePreview();
    });
    bar.addSeparator();
    add("fit-page", Str::ShowWholePage, {}, [this] { m_pages->fitInView(); });
    add("fit-width", Str::ShowPageWidth, {}, [this] { m_pages->fitToWidth(); });
    add("zoom-in", Str::ZoomIn, QKeySequence::ZoomIn, [this] { m_pages->zoomIn(); });
    add("zoom-out", Str::ZoomOut, QKeySequence::ZoomOut, [this] { m_pages->zoomOut(); });
    bar.addSeparator();
    m_previous = add("go-back", Str::PreviousPage, QKeySequence::MoveToPreviousPage, [this] { Turn(-1); });
    bar.addWidget(m_number);
    m_next = add("go-forward", Str::NextPage, QKeySequence::MoveToNextPage, [this] { Turn(1); });
}

void CPrintPreviewDialog::Turn(int pages)
{
    m_pages->setCurrentPage(m_pages->currentPage() + pages);
    ShowPageNumber();
}

void CPrintPreviewDialog::ShowPageNumber()
{
    const int page = m_pages->currentPage();
    m_previous->setEnabled(page > 1);
    m_next->setEnabled(page < m_pages->pageCount());
    m_number->setText(ToQString(Str::PageOfPages).arg(page).arg(m_pages->pageCount()));
}
