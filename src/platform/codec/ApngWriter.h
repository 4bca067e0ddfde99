// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/codec/PngWriter.h"
#include "platform/geometry/Geometry.h"
#include "platform/io/AtomicFile.h"

#include <cstdint>
#include <filesystem>
#include <span>

/// Writes an animated PNG frame by frame. The first frame is the whole picture; each further one replaces a
/// part of what is shown, alpha included.
/// Source: PNG, third edition, chunks acTL, fcTL and fdAT.
class CApngWriter {
public:
    /// plays: times the animation is shown, 0 for without end.
    CApngWriter(const std::filesystem::path& path, size_t frames, int plays)
        : m_file(path), m_frames(frames), m_plays(plays)
    {
    }

    /// All frames have the colour of the first. delay: hundredths of a second, at most 65535. False when
    /// writing fails or memory runs out.
    [[nodiscard]] bool AddFrame(const PngPicture& picture, Point position, int delay);
    /// Ends the file and puts it in its place.
    [[nodiscard]] bool Commit();

private:
    using Bytes = std::span<const uint8_t>;

    [[nodiscard]] bool PutChunk(const char (&name)[5], Bytes head, Bytes body = {});
    [[nodiscard]] bool PutFrameControl(const PngPicture& picture, Point position, int delay);
    /// The picture data of a whole PNG file as the frame's.
    [[nodiscard]] bool PutFrameData(Bytes png);

    CAtomicFile m_file;
    size_t m_frames;
    int m_plays;
    size_t m_framesDone = 0;
    uint32_t m_sequence = 0;
};
