// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/PixoluneDoc.h"

#include <filesystem>

/// Shows why a command is refused; always false, so that a handler can end with it.
bool Refuse(const CPixoluneDoc& document, Str reason);

/// Shows that a file could not be read or written, with its absolute path; always false.
bool RefuseFile(const CPixoluneDoc& document, Str reason, const std::filesystem::path& path);

/// The checks that most commands begin with: the canvas holds an object, and at least one is selected and
/// visible. Says which is not so.
[[nodiscard]] bool RequireActiveObjects(const CPixoluneDoc& document);
