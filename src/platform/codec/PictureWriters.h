// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"
#include "platform/io/AtomicFile.h"
#include "platform/ui/UserInterface.h"

#include <cstdint>

/// Puts a whole picture into an open file; what the option value means stands in SaveOptions.h. False when
/// the picture does not fit the format, or writing fails.
using PictureWriter = bool(CAtomicFile& file, const CPackedDib& dib, uint32_t option, IProgress* progress);

PictureWriter PutBmp;
PictureWriter PutJpg;
PictureWriter PutPcx;
PictureWriter PutPng;
PictureWriter PutTga;
PictureWriter PutTiff;
