// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/CommandTable.h"

class QWidget;

/// Runs a command that asks the user with a dialog and then changes the document. Whether it changed
/// something; false for other commands. window: the main window.
bool RunDialogCommand(CommandId id, CPixoluneDoc& document, QWidget& window);
