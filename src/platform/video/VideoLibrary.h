// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/avutil.h>
#include <libavutil/log.h>
#include <libavutil/pixdesc.h>
#include <libswscale/swscale.h>
}

/// What the program calls of the video libraries: library, function.
#define PIXOLUNE_VIDEO_CALLS(CALL)                                                                           \
    CALL(avutil, av_dict_free)                                                                               \
    CALL(avutil, av_dict_set)                                                                                \
    CALL(avutil, av_frame_alloc)                                                                             \
    CALL(avutil, av_frame_free)                                                                              \
    CALL(avutil, av_frame_unref)                                                                             \
    CALL(avutil, av_log_set_level)                                                                           \
    CALL(avutil, av_pix_fmt_desc_get)                                                                        \
    CALL(avutil, av_version_info)                                                                            \
    CALL(avcodec, av_packet_alloc)                                                                           \
    CALL(avcodec, av_packet_free)                                                                            \
    CALL(avcodec, av_packet_unref)                                                                           \
    CALL(avcodec, avcodec_alloc_context3)                                                                    \
    CALL(avcodec, avcodec_find_decoder)                                                                      \
    CALL(avcodec, avcodec_free_context)                                                                      \
    CALL(avcodec, avcodec_open2)                                                                             \
    CALL(avcodec, avcodec_parameters_to_context)                                                             \
    CALL(avcodec, avcodec_receive_frame)                                                                     \
    CALL(avcodec, avcodec_send_packet)                                                                       \
    CALL(avformat, av_find_input_format)                                                                     \
    CALL(avformat, av_read_frame)                                                                            \
    CALL(avformat, avformat_close_input)                                                                     \
    CALL(avformat, avformat_open_input)                                                                      \
    CALL(swscale, sws_freeContext)                                                                           \
    CALL(swscale, sws_getCachedContext)                                                                      \
    CALL(swscale, sws_scale)

/// The video libraries, loaded when the first video is opened: together with what they need they are a
/// hundred files, which every start of the program would otherwise wait for.
struct VideoLibrary {
#define PIXOLUNE_DECLARE_CALL(library, function) decltype(&::function) function = nullptr;
    PIXOLUNE_VIDEO_CALLS(PIXOLUNE_DECLARE_CALL)
#undef PIXOLUNE_DECLARE_CALL
};

/// None when the libraries are not installed.
[[nodiscard]] const VideoLibrary* LoadVideoLibrary();
