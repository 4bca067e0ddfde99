// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"
#include "platform/ui/UserInterface.h"

#include <cstdint>
#include <span>

/// The quick way to read the usual PNG file: 8 bits a channel, RGB with or without alpha, not interlaced, no
/// transparent colour, complete, and not too large to be inflated at once. The result has 32 bits per pixel.
/// Empty for every other file, which is left to the library that knows them all. Checksums are not verified.
[[nodiscard]] CPackedDib DecodePlainPng(std::span<const uint8_t> file, IProgress* progress);
