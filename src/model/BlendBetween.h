// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

/// What layers make of a background, told by what they make of black (all four bytes 0) and of white (255):
/// every byte of the background becomes the value that stands as far between those two as the byte does
/// between 0 and 255. Layers round at every mixing, so after many of them a byte may be some steps off.
void BlendBetween(uint8_t* background, const uint8_t* onBlack, const uint8_t* onWhite, size_t pixels);
