// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fileio/FormatTable.h"

#include <cstdint>
#include <filesystem>
#include <span>

/// How much of a file StoredDepth looks at, from its beginning.
inline constexpr size_t kDepthHeadBytes = size_t{1} << 20;

/// Bits a pixel as the file has them, all channels together; of several pictures those of the deepest one.
/// head: the file, or what of it is no longer than kDepthHeadBytes. 0 when its header is not in there, is
/// damaged, or the format stores no such number.
[[nodiscard]] int StoredDepth(const FormatRow& format, std::span<const uint8_t> head);
/// The same of a file.
[[nodiscard]] int StoredDepth(const FormatRow& format, const std::filesystem::path& path);
