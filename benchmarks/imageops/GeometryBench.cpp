// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageops/MirrorDib.h"
#include "imageops/PictureCases.h"
#include "imageops/RotateDib.h"
#include "platform/transform/Scale.h"

#include <opencv2/imgproc.hpp>

#include <cmath>

namespace {

void AddTurns(int megapixels)
{
    AddOurs("geometry/mirror", megapixels, MirrorHorizontally);
    AddOpenCv("geometry/mirror", megapixels, "opencv",
              [](const cv::Mat& from, cv::Mat& to) { cv::flip(from, to, 1); });
    AddQt("geometry/mirror", megapixels, Threads::One,
          [](const QImage& image) { return image.mirrored(true, false); });

    AddOurs("geometry/rotate-45", megapixels, [](const CPackedDib& dib) { return RotateDib(dib, 45, 0); });
    AddOpenCv("geometry/rotate-45", megapixels, "opencv", [](const cv::Mat& from, cv::Mat& to) {
        const int side = static_cast<int>(std::ceil((from.cols + from.rows) * std::sqrt(0.5)));
        cv::Mat turn = cv::getRotationMatrix2D(
            {static_cast<float>(from.cols) / 2, static_cast<float>(from.rows) / 2}, 45, 1);
        turn.at<double>(0, 2) += (side - from.cols) / 2.0;
        turn.at<double>(1, 2) += (side - from.rows) / 2.0;
        cv::warpAffine(from, to, turn, {side, side}, cv::INTER_NEAREST, cv::BORDER_CONSTANT);
    });
}

/// The peers do not weigh by alpha; Qt's pixels are premultiplied before.
void AddScale(const char* operation, int megapixels, Size to, int interpolation)
{
    AddOurs(operation, megapixels, [=](const CPackedDib& dib) { return Scale(dib, to.width, to.height); });
    AddOpenCv(operation, megapixels, "opencv", [=](const cv::Mat& from, cv::Mat& scaled) {
        cv::resize(from, scaled, {to.width, to.height}, 0, 0, interpolation);
    });
    AddQt(operation, megapixels, Threads::All, [=](const QImage& image) {
        return image.scaled(to.width, to.height, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    });
}

const bool kRegistered = [] {
    for (const int megapixels : {4, 12})
        AddTurns(megapixels);
    AddScale("geometry/scale-half", 4, {1024, 1024}, cv::INTER_AREA);
    AddScale("geometry/scale-half", 12, {2000, 1500}, cv::INTER_AREA);
    AddScale("geometry/scale-down", 12, {1777, 1333}, cv::INTER_AREA);
    AddScale("geometry/scale-thumbnail", 12, {400, 300}, cv::INTER_AREA);
    AddScale("geometry/scale-up", 1, {1777, 1333}, cv::INTER_CUBIC);
    return true;
}();

} // namespace
