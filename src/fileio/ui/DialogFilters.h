// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

#include <string_view>

/// Filters as the file dialogs of the toolkit want them: "Name (*.a *.b)".

/// From "name|*.a;*.b||".
[[nodiscard]] QString ToDialogFilter(std::string_view filter);
/// From a name and upper-case extensions, separated by blanks.
[[nodiscard]] QString FilterOf(std::string_view name, std::string_view extensions);
/// All formats that can be opened together, each on its own, and all files.
[[nodiscard]] QStringList OpenFilters();
