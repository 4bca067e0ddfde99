// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

/// What Scale makes of a picture with even sides at half of both: to the last bit the same as through its
/// weights, which are powers of two here, but with sums of whole numbers.
[[nodiscard]] CPackedDib HalvePicture(const CPackedDib& dib);
