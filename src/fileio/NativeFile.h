// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/ObjectCanvas.h"
#include "platform/ui/UserInterface.h"

#include <filesystem>

/// The document's own file, .pxd, little-endian: 36 bytes of header, a table of 76 bytes an object, bottom
/// first, and the packed pixels of one object after another.

/// Whether the path's ending is that of native files, in any case.
[[nodiscard]] bool IsNativePath(const std::filesystem::path& path);

/// Writes the canvas; the file at `path` is replaced as a whole or not at all. Names are cut at 48 bytes.
/// Progress after object k of N: k * 100 / N.
[[nodiscard]] bool SaveNativeFile(const CObjectCanvas& canvas, const std::filesystem::path& path,
                                  IUserInterface& ui);

/// Sets the canvas fields and appends the file's objects with their names and flags. False, and the canvas
/// as it was, for a file that is no native one, states sizes or places that it cannot hold, or ends early.
/// Progress after record i, from 0, of N: i * 100 / N.
[[nodiscard]] bool LoadNativeFile(CObjectCanvas& canvas, const std::filesystem::path& path,
                                  IUserInterface& ui);
