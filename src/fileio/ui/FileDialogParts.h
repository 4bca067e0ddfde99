// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QFileDialog;
class QLineEdit;

/// Parts of the toolkit's own file dialog, which it keeps to itself.

/// Gives sizes and dates the room that they need, and the names the rest.
void FitColumns(QFileDialog& dialog);
/// Where the name is typed; none in the window system's dialog.
[[nodiscard]] QLineEdit* NameEdit(const QFileDialog& dialog);
