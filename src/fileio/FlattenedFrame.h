// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/ObjectCanvas.h"

/// The frame with everything transparent filled with a colour (0x00bbggrr), opaque throughout. Empty when
/// memory runs out.
[[nodiscard]] CPackedDib FlattenOver(const CObjectCanvas& canvas, uint32_t colour);
