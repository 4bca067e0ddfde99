// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/PixoluneDoc.h"

/// Shows why a command is refused; always false, so that a handler can end with it.
bool Refuse(const CPixoluneDoc& document, Str reason);

/// The checks that most commands begin with: the canvas holds an object, and at least one is selected and
/// visible. Says which is not so.
[[nodiscard]] bool RequireActiveObjects(const CPixoluneDoc& document);
