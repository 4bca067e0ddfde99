// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageops/GrayDib.h"
#include "imageops/NegativeDib.h"
#include "imageops/PictureCases.h"
#include "platform/transform/AdjustBrightContrast.h"
#include "platform/transform/AdjustHsl.h"
#include "platform/transform/AdjustRgb.h"

#include <opencv2/imgproc.hpp>

namespace {

void AddColours(int megapixels)
{
    AddOurs("colour/negative", megapixels, NegativeDib);
    AddOpenCv("colour/negative", megapixels, "opencv", [](const cv::Mat& from, cv::Mat& to) {
        cv::bitwise_xor(from, cv::Scalar(255, 255, 255, 0), to);
    });
    AddOurs("colour/gray", megapixels, GrayDib);

    AddOurs("colour/brightness-contrast", megapixels,
            [](const CPackedDib& dib) { return AdjustDIBBrightAndConstract(dib, 20, 40); });
    cv::Mat table(1, 256, CV_8UC4);
    for (int level = 0; level < 256; ++level) {
        const auto changed = static_cast<uint8_t>(level * level / 255);
        table.at<cv::Vec4b>(level) = cv::Vec4b(changed, changed, changed, static_cast<uint8_t>(level));
    }
    AddOpenCv("colour/brightness-contrast", megapixels, "opencv-table",
              [=](const cv::Mat& from, cv::Mat& to) { cv::LUT(from, table, to); });
    AddOurs("colour/channels", megapixels,
            [](const CPackedDib& dib) { return AdjustDIBRGB(dib, 20, -30, 40); });

    AddOurs("colour/hsl", megapixels, [](const CPackedDib& dib) { return AdjustDIBHSL(dib, 40, 20, -10); });
    for (const Threads threads : kBothThreads) {
        AddCase({"colour/hsl", SizeName(megapixels), "opencv-3-channels", threads, PixelsOf(megapixels)},
                [=] {
                    cv::Mat from;
                    cv::cvtColor(MatOf(PhotoPicture(megapixels)), from, cv::COLOR_BGRA2BGR);
                    const auto turned = std::make_shared<cv::Mat>();
                    const auto to = std::make_shared<cv::Mat>();
                    return [=] {
                        cv::cvtColor(from, *turned, cv::COLOR_BGR2HLS_FULL);
                        cv::cvtColor(*turned, *to, cv::COLOR_HLS2BGR_FULL);
                    };
                });
    }
}

const bool kRegistered = [] {
    for (const int megapixels : {4, 12})
        AddColours(megapixels);
    return true;
}();

} // namespace
