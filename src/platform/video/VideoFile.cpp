// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/video/VideoFile.h"

#include "platform/codec/AlphaBytes.h"
#include "platform/video/VideoLibrary.h"
#include "platform/video/YuvPicture.h"

#include <algorithm>
#include <optional>
#include <string>

namespace {

/// Only what the libraries made is ever used, so they are there.
const VideoLibrary& Video()
{
    return *LoadVideoLibrary();
}

} // namespace

void CVideoFile::Release::operator()(AVCodecContext* codec) const
{
    Video().avcodec_free_context(&codec);
}
void CVideoFile::Release::operator()(AVFormatContext* file) const
{
    Video().avformat_close_input(&file);
}
void CVideoFile::Release::operator()(AVFrame* frame) const
{
    Video().av_frame_free(&frame);
}
void CVideoFile::Release::operator()(AVPacket* packet) const
{
    Video().av_packet_free(&packet);
}
void CVideoFile::Release::operator()(SwsContext* scaler) const
{
    Video().sws_freeContext(scaler);
}

namespace {

AVFormatContext* OpenAvi(const std::filesystem::path& path)
{
    AVDictionary* options = nullptr;
    Video().av_dict_set(&options, "protocol_whitelist", "file", 0);
    Video().av_dict_set(&options, "format_whitelist", "avi", 0);
    AVFormatContext* file = nullptr;
    const std::string url = "file:" + path.string();
    const int failure =
        Video().avformat_open_input(&file, url.c_str(), Video().av_find_input_format("avi"), &options);
    Video().av_dict_free(&options);
    return failure < 0 ? nullptr : file;
}

/// Index of the video stream number `ordinal`, or -1.
int FindVideoStream(const AVFormatContext& file, int ordinal)
{
    for (unsigned index = 0; index < file.nb_streams; ++index) {
        if (file.streams[index]->codecpar->codec_type == AVMEDIA_TYPE_VIDEO && ordinal-- == 0)
            return static_cast<int>(index);
    }
    return -1;
}

bool HasAlpha(int format)
{
    const AVPixFmtDescriptor* const description =
        Video().av_pix_fmt_desc_get(static_cast<AVPixelFormat>(format));
    return description != nullptr && (description->flags & AV_PIX_FMT_FLAG_ALPHA) != 0;
}

/// The frame as most decoders deliver it; none when it is anything else.
std::optional<YuvPicture> YuvPictureOf(const AVFrame& frame)
{
    struct Layout {
        AVPixelFormat format;
        ChromaRows chromaRows;
        SampleRange range;
    };
    constexpr Layout kLayouts[] = {{AV_PIX_FMT_YUV420P, ChromaRows::Halved, SampleRange::Video},
                                   {AV_PIX_FMT_YUV422P, ChromaRows::Every, SampleRange::Video},
                                   {AV_PIX_FMT_YUVJ420P, ChromaRows::Halved, SampleRange::Full},
                                   {AV_PIX_FMT_YUVJ422P, ChromaRows::Every, SampleRange::Full}};
    for (const Layout& layout : kLayouts) {
        if (frame.format != layout.format)
            continue;
        YuvPicture picture{{frame.width, frame.height}, {}, {}, layout.chromaRows, layout.range};
        std::copy_n(frame.data, 3, picture.planes.begin());
        std::copy_n(frame.linesize, 3, picture.strides.begin());
        if (frame.color_range == AVCOL_RANGE_JPEG)
            picture.range = SampleRange::Full;
        return picture;
    }
    return std::nullopt;
}

} // namespace

CVideoFile::CVideoFile() = default;
CVideoFile::~CVideoFile() = default;

bool CVideoFile::Open(const std::filesystem::path& path)
{
    if (LoadVideoLibrary() == nullptr)
        return false;
    // What is wrong with a file is told by the result alone.
    Video().av_log_set_level(AV_LOG_QUIET);
    m_frame.reset(Video().av_frame_alloc());
    m_packet.reset(Video().av_packet_alloc());
    m_path = path;
    m_file.reset(OpenAvi(path));
    return m_file != nullptr && m_frame != nullptr && m_packet != nullptr;
}

bool CVideoFile::Start()
{
    return OpenStream(0);
}

bool CVideoFile::OpenStream(int ordinal)
{
    m_codec.reset();
    if (ordinal > 0)
        m_file.reset(OpenAvi(m_path));
    if (m_file == nullptr)
        return false;
    m_ordinal = ordinal;
    m_streamIndex = FindVideoStream(*m_file, ordinal);
    if (m_streamIndex < 0)
        return false;
    const AVStream& stream = *m_file->streams[m_streamIndex];
    const AVCodec* const decoder = Video().avcodec_find_decoder(stream.codecpar->codec_id);
    if (decoder == nullptr)
        return false;
    m_codec.reset(Video().avcodec_alloc_context3(decoder));
    if (m_codec == nullptr || Video().avcodec_parameters_to_context(m_codec.get(), stream.codecpar) < 0)
        return false;
    m_codec->thread_count = 1;
    m_codec->max_pixels = kMaxPicturePixels;
    m_isDraining = false;
    m_rate = {stream.time_base.den, stream.time_base.num};
    return Video().avcodec_open2(m_codec.get(), decoder, nullptr) == 0;
}

/// Gives the decoder the stream's next packet, or tells it that there are no more.
bool CVideoFile::FeedDecoder()
{
    if (m_isDraining)
        return false;
    while (Video().av_read_frame(m_file.get(), m_packet.get()) == 0) {
        const bool isOurs = m_packet->stream_index == m_streamIndex;
        if (isOurs)
            Video().avcodec_send_packet(m_codec.get(), m_packet.get());
        Video().av_packet_unref(m_packet.get());
        if (isOurs)
            return true;
    }
    m_isDraining = true;
    return Video().avcodec_send_packet(m_codec.get(), nullptr) == 0;
}

bool CVideoFile::DecodeNext()
{
    while (Video().avcodec_receive_frame(m_codec.get(), m_frame.get()) != 0) {
        if (!FeedDecoder())
            return false;
    }
    return true;
}

CPackedDib CVideoFile::Converted()
{
    if (const std::optional<YuvPicture> picture = YuvPictureOf(*m_frame))
        return DibFromYuv(*picture);
    CPackedDib dib = CPackedDib::Create(m_frame->width, m_frame->height, 32);
    m_scaler.reset(Video().sws_getCachedContext(
        m_scaler.release(), m_frame->width, m_frame->height, static_cast<AVPixelFormat>(m_frame->format),
        m_frame->width, m_frame->height, AV_PIX_FMT_BGRA, SWS_BICUBIC | SWS_ACCURATE_RND | SWS_FULL_CHR_H_INT,
        nullptr, nullptr, nullptr));
    if (dib.IsEmpty() || m_scaler == nullptr)
        return {};
    uint8_t* const rows[] = {dib.Row(0)};
    const int strides[] = {-static_cast<int>(dib.Stride())};
    Video().sws_scale(m_scaler.get(), m_frame->data, m_frame->linesize, 0, m_frame->height, rows, strides);
    if (HasAlpha(m_frame->format))
        SettleUnstatedAlpha(dib);
    return dib;
}

CPackedDib CVideoFile::NextFrame()
{
    if (m_codec == nullptr)
        return {};
    while (!DecodeNext()) {
        if (!OpenStream(m_ordinal + 1)) {
            m_codec.reset();
            return {};
        }
    }
    CPackedDib dib = Converted();
    Video().av_frame_unref(m_frame.get());
    return dib;
}
