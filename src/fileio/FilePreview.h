// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fileio/FormatTable.h"
#include "platform/Limits.h"

#include <cstdint>
#include <filesystem>
#include <stop_token>
#include <vector>

enum class PreviewFailure { None, UnknownFormat, TooLong, Unreadable };

/// A file as an open dialog shows it before it is opened.
struct FilePreview {
    PreviewFailure failure = PreviewFailure::Unreadable;
    const FormatRow* format = nullptr;
    uint64_t fileBytes = 0;
    Size size;
    int depth = 0; ///< bits a pixel in the file; 0: it does not say
    bool isOpaque = true;
    size_t parts = 0;        ///< objects, frames or images, as the format calls them
    bool hasMore = false;    ///< frames behind those that were read
    uint16_t frameDelay = 0; ///< hundredths of a second
    /// 32 bits per pixel, reduced to the box; more than one for animations.
    std::vector<CPackedDib> pictures;
};

/// Collects the pictures of a preview while a file is read.
class CPreviewCollector {
public:
    CPreviewCollector(FilePreview& preview, Size box, std::stop_token stop)
        : m_preview(preview), m_box(box), m_stop(std::move(stop))
    {
    }

    /// Takes a reduced copy. False when no more are wanted, because there are enough or nobody waits for
    /// them any more.
    bool Take(const CPackedDib& picture);
    [[nodiscard]] FilePreview& Preview() { return m_preview; }
    [[nodiscard]] bool IsStopped() const { return m_stop.stop_requested(); }

private:
    FilePreview& m_preview;
    Size m_box;
    std::stop_token m_stop;
    int64_t m_pixels = 0;
};

/// Reads as much of a file as a preview needs. box: pixels that the pictures have room in. Needs nothing of
/// the window's thread; `stop` ends it between two frames.
[[nodiscard]] FilePreview ReadFilePreview(const std::filesystem::path& path, Size box,
                                          std::stop_token stop = {});
