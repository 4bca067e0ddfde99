// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Services.h"
#include "platform/geometry/Geometry.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

/// What is wrong with a file and what of it can be read.
struct FileCheck {
    std::string_view format;         ///< name of the format that the ending chooses; empty for none
    std::vector<std::string> faults; ///< one line a fault
    bool opens = false;              ///< the file can be opened, whole or what is there of it
    Size canvas;                     ///< what it opens as
    size_t objects = 0;              ///< that can be read, also of a document that does not open
    size_t statedObjects = 0;        ///< that the file says it has
};

/// Looks at a file's structure and reads it once. Nothing is kept or changed.
[[nodiscard]] FileCheck CheckFile(const std::filesystem::path& path, AppServices& services);
