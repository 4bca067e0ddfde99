// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/ObjectCanvas.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// What a damaged native file still holds.
struct NativeSalvage {
    CObjectCanvas canvas;            ///< the canvas fields, and every object that is whole
    uint32_t statedObjects = 0;      ///< as the header says
    std::vector<std::string> faults; ///< one line a fault, in the file's order; none for a whole file
};

/// Reads every object whose entry and pixels stand in the file as a whole; damaged ones, and those behind the
/// end of the table, are passed over. A canvas size that cannot be held becomes the smallest one that holds
/// the objects. Memory stays within what the file can fill. None when the file is absent, or has no header
/// of the native format.
[[nodiscard]] std::optional<NativeSalvage> SalvageNativeFile(const std::filesystem::path& path);
