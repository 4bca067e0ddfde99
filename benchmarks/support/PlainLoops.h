// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

/// What a compiler makes of the obvious code, with the project's own flags.
namespace plain {

/// Straight alpha over an opaque picture.
void OverOpaque(uint8_t* destination, const uint8_t* source, size_t pixels);
/// Straight alpha over a picture with alpha of its own.
void OverWithAlpha(uint8_t* destination, const uint8_t* source, size_t pixels);
/// A copy that goes past the caches; where the processor has no such stores, a plain one.
void StreamingCopy(uint8_t* destination, const uint8_t* source, size_t bytes);

} // namespace plain
