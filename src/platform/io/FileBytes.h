// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Limits.h"
#include "platform/memory/HeapBlock.h"

#include <cstdint>
#include <filesystem>
#include <optional>

/// The whole of a regular file. Nothing when it is absent, cannot be read, is no regular file, is longer than
/// `limitBytes`, or memory runs out. An empty file gives a block of size 0.
[[nodiscard]] std::optional<CHeapBlock> ReadFileBytes(const std::filesystem::path& path,
                                                      int64_t limitBytes = kMaxFileBytes);
