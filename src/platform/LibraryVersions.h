// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>
#include <vector>

/// A library that the program works with.
struct LibraryVersion {
    std::string_view name;
    std::string version; ///< at run time where the library tells it, else the one compiled against
    std::string_view licence;
};

/// Those below the windows, in alphabetical order. Loads the video libraries; where they are missing, their
/// version is empty.
[[nodiscard]] std::vector<LibraryVersion> LibraryVersions();
/// Of a version whose three numbers are one: 21700 is "2.17.0".
[[nodiscard]] std::string DottedVersion(int version);
