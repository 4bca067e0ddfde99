// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

/// The text after the last "." of the path in upper case; empty without a ".".
[[nodiscard]] std::string UpperCasedExtension(const std::filesystem::path& path);

/// Whether a list of extensions, separated by blanks, names this one.
[[nodiscard]] bool NamesExtension(std::string_view extensions, std::string_view extension);
