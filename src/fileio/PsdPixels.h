// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fileio/PsdFile.h"
#include "platform/memory/HeapBlock.h"

#include <span>
#include <vector>

/// Samples of one channel as 8 bits, the top row first, and the slack of the row code; empty when it is
/// absent.
using PsdPlane = CHeapBlock;

/// Unpacks `count` planes of width x height samples that are stored together: a compression word, for the row
/// code the packed length of every row, then the samples. Memory is asked for only when the data is long
/// enough for the claim. Empty when it is not, or damaged.
[[nodiscard]] std::vector<PsdPlane> ReadPsdPlanes(CByteReader data, int depth, int width, int height,
                                                  int stored, int count);

/// Makes colours of planes. planes: the mode's colours, then alpha, each of the picture's size; an empty
/// colour plane is black, an empty alpha opaque. Ink is mixed without a profile. Empty when memory runs out.
[[nodiscard]] CPackedDib ComposePsdPicture(const PsdHeader& header, std::span<const PsdPlane> planes,
                                           int width, int height);
