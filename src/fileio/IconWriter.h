// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/ObjectCanvas.h"
#include "platform/io/ByteWriter.h"
#include "platform/ui/UserInterface.h"

#include <filesystem>

/// The values stand in the file.
enum class IconKind : uint16_t { Icon = 1, Cursor = 2 };

/// Bytes of a file with one picture of this size: directory, header, 32-bit pixels and AND mask.
[[nodiscard]] uint64_t IconFileBytes(Size size);

/// Directory, header, pixels with their alpha, and the mask, which is set where alpha is below 128.
/// hotSpot: of a cursor.
void WriteIcon(CByteWriter& writer, const CPackedDib& picture, IconKind kind, Point hotSpot);

/// Writes the frame as one picture of 32 bits per pixel. False, and the old file as it was, on failure.
[[nodiscard]] bool SaveIconFile(const CObjectCanvas& canvas, const std::filesystem::path& path, IconKind kind,
                                Point hotSpot, IProgress* progress);
