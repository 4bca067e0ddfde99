// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

/// giflib on files in memory: one picture of 256 colours.
std::vector<uint8_t> EncodeWithGiflib(const std::vector<uint8_t>& indices, int width, int height);
void DecodeWithGiflib(const std::vector<uint8_t>& file);
