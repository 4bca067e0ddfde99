// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/ObjectCanvas.h"
#include "platform/Services.h"
#include "platform/ui/UserInterface.h"

#include <filesystem>
#include <span>
#include <string>
#include <string_view>

/// Fills an empty canvas from a file. Objects come visible unless the file says otherwise, and without a
/// name unless it gives them one. False when the file cannot be loaded.
using FileReader = bool (*)(CObjectCanvas& canvas, const std::filesystem::path& path, AppServices& services);

class CPreviewCollector;
/// Reads what a preview needs, where that is less than the whole file or something else than its objects.
using PreviewReader = bool (*)(CPreviewCollector& collector, const std::filesystem::path& path);

/// What the objects of a file are.
enum class FileContents {
    Picture, ///< a single one
    Objects, ///< layers that make one picture together
    Frames,  ///< of an animation
    Images,  ///< the same picture in several sizes
};

/// One row a file format.
struct FormatRow {
    std::string_view name;       ///< as file dialogs and the command line show it
    std::string_view extensions; ///< upper case, separated by blanks; the first one is the usual one
    FileReader read;
    FileContents contents = FileContents::Picture;
    PreviewReader preview = nullptr; ///< none: the file is read as for opening
    bool keepsNames = false;         ///< objects have the file's names, empty ones too
    bool previewsBeginning = false;  ///< a preview is quick however long the file is
};

/// All formats that can be opened, in the order in which extensions are compared.
[[nodiscard]] std::span<const FormatRow> FormatTable();

/// The format of a path: by the text after its last ".", whatever its case. None without one.
[[nodiscard]] const FormatRow* FindFormat(const std::filesystem::path& path);
