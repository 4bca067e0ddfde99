// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

#include <cstdint>
#include <filesystem>
#include <memory>

struct AVCodecContext;
struct AVFormatContext;
struct AVFrame;
struct AVPacket;
struct SwsContext;

/// Units of time of a video stream: one frame lasts scale / rate seconds.
struct FrameRate {
    int rate = 0;
    int scale = 0;
};

/// Delivers the frames of all video streams of an AVI file, one stream after another. Nothing but local files
/// in this one format is ever opened, whatever a file refers to. Decoding runs on the calling thread.
class CVideoFile {
public:
    CVideoFile();
    ~CVideoFile();
    CVideoFile(const CVideoFile&) = delete;
    CVideoFile& operator=(const CVideoFile&) = delete;

    /// False when the file cannot be opened as AVI.
    [[nodiscard]] bool Open(const std::filesystem::path& path);
    /// Begins with the first video stream; false when there is none that can be decoded.
    [[nodiscard]] bool Start();
    /// The next frame, 32 bits per pixel; goes on to the next stream at a stream's end. A frame that cannot
    /// be decoded is left out. Empty at the end, and when memory runs out.
    [[nodiscard]] CPackedDib NextFrame();
    /// Of the stream that the last frame came from.
    [[nodiscard]] FrameRate Rate() const { return m_rate; }

private:
    struct Release {
        void operator()(AVCodecContext* codec) const;
        void operator()(AVFormatContext* file) const;
        void operator()(AVFrame* frame) const;
        void operator()(AVPacket* packet) const;
        void operator()(SwsContext* scaler) const;
    };

    /// Opens the decoder of video stream number `ordinal` at the beginning of the file.
    [[nodiscard]] bool OpenStream(int ordinal);
    [[nodiscard]] bool DecodeNext();
    [[nodiscard]] bool FeedDecoder();
    [[nodiscard]] CPackedDib Converted();

    std::filesystem::path m_path;
    std::unique_ptr<AVFormatContext, Release> m_file;
    std::unique_ptr<AVCodecContext, Release> m_codec;
    std::unique_ptr<AVFrame, Release> m_frame;
    std::unique_ptr<AVPacket, Release> m_packet;
    std::unique_ptr<SwsContext, Release> m_scaler;
    int m_ordinal = 0;     ///< among the video streams
    int m_streamIndex = 0; ///< among all streams
    bool m_isDraining = false;
    FrameRate m_rate;
};
