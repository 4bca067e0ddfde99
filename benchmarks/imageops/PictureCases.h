// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/Cases.h"
#include "support/Inputs.h"
#include "support/Peers.h"

#include <memory>
#include <utility>

/// Times a kernel of ours on the photo, with one and with all processors.
template <typename Kernel> void AddOurs(const char* operation, int megapixels, Kernel kernel)
{
    for (const Threads threads : kBothThreads) {
        AddCase({operation, SizeName(megapixels), "ours", threads, PixelsOf(megapixels)}, [=] {
            const CPackedDib& photo = PhotoPicture(megapixels);
            return [=, &photo] { kernel(photo); };
        });
    }
}

/// Times an OpenCV call that fills `to` from `from`. type: what the photo is converted to first.
template <typename Call>
void AddOpenCv(const char* operation, int megapixels, const char* who, Call call, int type = CV_8UC4)
{
    for (const Threads threads : kBothThreads) {
        AddCase({operation, SizeName(megapixels), who, threads, PixelsOf(megapixels)}, [=] {
            cv::Mat from = MatOf(PhotoPicture(megapixels));
            if (type != CV_8UC4)
                from.convertTo(from, CV_MAT_DEPTH(type));
            const auto to = std::make_shared<cv::Mat>();
            return [=] { call(from, *to); };
        });
    }
}

/// Times a Qt call on the photo; its result is dropped.
template <typename Call> void AddQt(const char* operation, int megapixels, Threads threads, Call call)
{
    AddCase({operation, SizeName(megapixels), "qt", threads, PixelsOf(megapixels)}, [=] {
        const auto photo = std::make_shared<CPackedDib>(Premultiplied(PhotoPicture(megapixels)));
        return [=] { call(QtImageOf(std::as_const(*photo), QImage::Format_ARGB32_Premultiplied)); };
    });
}
