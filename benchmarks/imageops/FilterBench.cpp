// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageops/BoxBlur.h"
#include "imageops/EmbossDib.h"
#include "imageops/GaussianBlur.h"
#include "imageops/PictureCases.h"
#include "imageops/SharpenDib.h"
#include "imageops/SunspotDib.h"

#include <opencv2/imgproc.hpp>

namespace {

const cv::Point kMiddle{-1, -1};

void AddBlurs(int megapixels)
{
    for (const int side : {3, 15, 49}) {
        const std::string operation = "filter/box-" + std::to_string(side);
        AddOurs(operation.c_str(), megapixels, [=](const CPackedDib& dib) { return BoxBlur(dib, side); });
        AddOpenCv(operation.c_str(), megapixels, "opencv", [=](const cv::Mat& from, cv::Mat& to) {
            cv::blur(from, to, {side, side}, kMiddle, cv::BORDER_REPLICATE);
        });
    }
    constexpr int kTaps = 49;
    const char* gaussian = "filter/gaussian-49";
    AddOurs(gaussian, megapixels, [](const CPackedDib& dib) { return GaussianBlur(dib, kTaps); });
    const cv::Mat taps = cv::getGaussianKernel(kTaps, 8.0, CV_64F);
    AddOpenCv(
        gaussian, megapixels, "opencv-double",
        [=](const cv::Mat& from, cv::Mat& to) {
            cv::sepFilter2D(from, to, -1, taps, taps, kMiddle, 0, cv::BORDER_REPLICATE);
        },
        CV_64FC4);
}

void AddFilters(int megapixels)
{
    AddOurs("filter/sharpen", megapixels, [](const CPackedDib& dib) { return SharpenDib(dib, 100); });
    const cv::Mat kernel = (cv::Mat_<float>(3, 3) << -1, -1, -1, -1, 16, -1, -1, -1, -1) / 8;
    AddOpenCv("filter/sharpen", megapixels, "opencv", [=](const cv::Mat& from, cv::Mat& to) {
        cv::filter2D(from, to, -1, kernel, kMiddle, 0, cv::BORDER_REPLICATE);
    });
    AddOurs("filter/emboss", megapixels, [](const CPackedDib& dib) { return EmbossDib(dib, 128, 1, 45); });
    AddOpenCv("filter/emboss", megapixels, "opencv-difference", [](const cv::Mat& from, cv::Mat& to) {
        const cv::Rect here(0, 0, from.cols - 1, from.rows - 1);
        cv::addWeighted(from(here), 1, from(here + cv::Point(1, 1)), -1, 128, to);
    });
    AddOurs("filter/sunspot", megapixels, [](const CPackedDib& dib) { return SunspotDib(dib, 20, 80, 45); });
}

const bool kRegistered = [] {
    for (const int megapixels : {4, 12}) {
        AddBlurs(megapixels);
        AddFilters(megapixels);
    }
    return true;
}();

} // namespace
