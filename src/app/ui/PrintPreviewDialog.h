// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

#include <functional>

class QLabel;
class QPrinter;
class QPrintPreviewWidget;
class QToolBar;

/// Shows the pages as they will be printed. Accepted when they shall be.
class CPrintPreviewDialog final : public QDialog {
    Q_OBJECT

public:
    /// printer: outlives the dialog. paint: draws the pages. setUpPage: asks how, in a dialog over the one
    /// given, and changes the printer; false when nothing is to change.
    CPrintPreviewDialog(QPrinter& printer, std::function<void(QPrinter&)> paint,
                        std::function<bool(QWidget&)> setUpPage, QWidget* parent);

private:
    void FillBar(QToolBar& bar);
    void Turn(int pages);
    void ShowPageNumber();

    std::function<bool(QWidget&)> m_setUpPage;
    QPrintPreviewWidget* m_pages;
    QLabel* m_number;
    QAction* m_previous = nullptr;
    QAction* m_next = nullptr;
};
