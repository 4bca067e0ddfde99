// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

/// Takes every `step`th pixel, beginning with the first, `count` in all. step: at least 2. soon: where
/// pixels that are wanted next stand; they are brought into the cache meanwhile.
void SampleRow(const uint8_t* from, size_t count, size_t step, uint32_t* to, const uint8_t* soon);
