// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/ObjectCanvas.h"
#include "platform/io/ByteReader.h"
#include "platform/ui/UserInterface.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>

/// The bytes of the PNG file that begins here, if one does.
[[nodiscard]] std::optional<std::span<const uint8_t>> PngAt(const CByteReader& reader);

/// Reads one image of an icon or cursor, a bitmap header followed by colours, pixels and AND mask, and
/// appends it at (0, 0), transparent where the mask is set; the canvas grows to its size. A PNG picture in
/// its place keeps its own alpha. False when the image is cut off or of no known kind.
[[nodiscard]] bool ReadIconImage(CObjectCanvas& canvas, CByteReader& reader);

/// Reads every image of an icon or cursor file, one after another from behind the directory, whose entries
/// are not needed. On failure nothing is left on the canvas. Progress after image i, from 0: i * 100 / count.
[[nodiscard]] bool LoadIconFile(CObjectCanvas& canvas, const std::filesystem::path& path,
                                IProgress* progress);
