// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/ObjectCanvas.h"
#include "platform/ui/UserInterface.h"
#include "platform/video/VideoFile.h"

#include <cstdint>
#include <filesystem>
#include <optional>

/// What the main header states.
struct AviHeader {
    uint32_t frameCount = 0;
    Size size;
};

/// None unless the header stands at the very front and states a size that a picture can have.
[[nodiscard]] std::optional<AviHeader> ReadAviHeader(const std::filesystem::path& path);

/// Hundredths of a second a frame; 0 when the file does not say.
[[nodiscard]] uint16_t FrameDelayOf(FrameRate rate);

/// Appends every frame of every video stream, one stream after another, as an object at (0, 0). The canvas
/// takes its size from the main header, which must stand at the very front, and its delay from the stream of
/// the last frame. False for a file without that header and for one that cannot be opened; a frame that
/// cannot be decoded ends nothing, and what was imported by the end stays.
[[nodiscard]] bool LoadAviFile(CObjectCanvas& canvas, const std::filesystem::path& path, IProgress* progress);
