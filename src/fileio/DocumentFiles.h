// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/PixoluneDoc.h"

#include <filesystem>
#include <span>

/// Reads any supported file into an empty canvas; the reader is chosen by the path's extension. On failure
/// the canvas may hold what was read until then.
[[nodiscard]] bool LoadFile(CObjectCanvas& canvas, const std::filesystem::path& path, AppServices& services);

/// Opens a file into a document: unnamed objects get default names, the topmost one is selected, the
/// history is empty and the document not modified. False, with a message, when the file cannot be loaded;
/// the document is then as it was and no name is used up.
bool OpenIntoDocument(CPixoluneDoc& document, const std::filesystem::path& path);

/// Writes the native file and makes it the document's own. False, with a message, when that fails; the old
/// file is then whole and the document still modified.
bool SaveDocument(CPixoluneDoc& document, const std::filesystem::path& path);

enum class AddKind { ImageFiles, Avi };

/// Appends the objects of all files, newly named and selected, under one command. When a file cannot be
/// loaded its failure is shown and the objects of earlier files stay, with nothing to undo.
bool AddFiles(CPixoluneDoc& document, std::span<const std::filesystem::path> paths, AddKind kind);
