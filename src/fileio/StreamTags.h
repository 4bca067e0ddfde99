// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/io/ByteReader.h"

#include <algorithm>
#include <string_view>

/// What the native file and the clipboard stream begin with.
inline constexpr std::string_view kStreamTags = "PXD 2000";

/// Reads a fixed run of characters; false when they are others or missing.
[[nodiscard]] inline bool ReadTag(CByteReader& reader, std::string_view tag)
{
    std::span<const uint8_t> bytes;
    return reader.ReadBytes(tag.size(), bytes) && std::ranges::equal(bytes, tag);
}
