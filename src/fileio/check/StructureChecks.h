// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/io/ByteReader.h"

#include <string>
#include <vector>

/// One line for each fault that was found, in the file's order.
using Faults = std::vector<std::string>;

/// Each walks through the blocks of one format without decoding a pixel, stops at the first block that it
/// cannot step over, and allocates nothing but the lines.

/// Chunks by their lengths and checksums, up to IEND.
void CheckPng(CByteReader file, Faults& faults);
/// Segments up to the first scan, then the mark at the end of the picture.
void CheckJpg(CByteReader file, Faults& faults);
/// Blocks and their sub-blocks, up to the trailer.
void CheckGif(CByteReader file, Faults& faults);
/// The chunks of an animated cursor or a video, and the length that the first one states.
void CheckRiff(CByteReader file, Faults& faults);
/// The pixels that a bitmap without compression must have.
void CheckBmp(CByteReader file, Faults& faults);
