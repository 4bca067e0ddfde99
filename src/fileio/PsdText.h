// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// Appends a character in UTF-8.
void AppendUtf8(std::string& text, uint32_t character);

/// UTF-16 of UTF-8; a byte that belongs to no character becomes U+FFFD.
[[nodiscard]] std::u16string Utf16Of(std::string_view text);
