// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "cli/Arguments.h"
#include "fileio/SaveAs.h"

#include <filesystem>

/// Where and how a Save As command is to write.
struct SaveTarget {
    std::filesystem::path path;
    const SaveFormatRow* format = nullptr; ///< by the path's extension
    SaveAsOptions options = {};
};

/// Reads PATH, [colors=C] and [hotspot=X,Y]. An extension that no Save As command has, and an option that its
/// dialog does not ask for, are errors.
[[nodiscard]] SaveTarget TakeSaveTarget(CArguments& arguments);
