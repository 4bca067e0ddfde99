// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/PixoluneDoc.h"

#include <cstdint>
#include <string>

/// The lines in which scripts and `info` describe a document.

/// "canvas W H parameter P background B delay D transparent T control C descriptor I objects N"
[[nodiscard]] std::string CanvasLine(const CObjectCanvas& canvas);
/// "K X Y W H visible=V locked=L selected=S transparency=T "NAME""
[[nodiscard]] std::string ObjectLine(size_t index, const CPicObject& object);
/// "R G B A" of a pixel with alpha in the high byte.
[[nodiscard]] std::string PixelLine(uint32_t pixel);
/// A number for all that the document holds: canvas, objects, flags, names, every byte of its pictures, and
/// whether it is modified. FNV-1a with 64 bits over the texts above and the packed pictures.
[[nodiscard]] uint64_t ChecksumOf(const CPixoluneDoc& document);
