// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QScreen>
#include <QWidget>

/// Moves a shown dialog so that its right and bottom edges lie on those of its main window, where it hides
/// the least of the picture.
inline void MoveToCorner(QWidget& dialog)
{
    if (const QWidget* window = dialog.parentWidget())
        dialog.move(dialog.pos() + window->window()->frameGeometry().bottomRight() -
                    dialog.frameGeometry().bottomRight());
}

/// Gives a dialog its natural size, or less where the screen is smaller.
inline void FitOnScreen(QWidget& dialog)
{
    constexpr QSize kTitleAndFrame(8, 40);
    dialog.resize(dialog.sizeHint().boundedTo(dialog.screen()->availableSize() - kTitleAndFrame));
}
