// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

/// Moves a shown dialog so that its right and bottom edges lie on those of its main window, where it hides
/// the least of the picture.
inline void MoveToCorner(QWidget& dialog)
{
    if (const QWidget* window = dialog.parentWidget())
        dialog.move(dialog.pos() + window->window()->frameGeometry().bottomRight() -
                    dialog.frameGeometry().bottomRight());
}
