// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/FloodFill.h"
#include "canvas/MagicWand.h"
#include "support/Cases.h"
#include "support/Inputs.h"
#include "support/Peers.h"

#include <opencv2/imgproc.hpp>

#include <cstring>
#include <memory>
#include <random>
#include <vector>

namespace {

constexpr int kSizeInMegapixels = 12;

uint32_t PixelAt(const CPackedDib& dib, Point point)
{
    uint32_t pixel = 0;
    std::memcpy(&pixel, dib.Row(point.y) + ptrdiff_t{point.x} * 4, sizeof pixel);
    return pixel;
}

CPackedDib Opaque(const CPackedDib& dib)
{
    CPackedDib result = dib.Duplicate();
    for (size_t at = 3; at < result.Bits().size(); at += 4)
        result.Bits()[at] = 255;
    return result;
}

/// Every pixel on its own: 65 of 100 white, the others black.
CPackedDib Noise()
{
    CPackedDib dib = Opaque(BackdropPicture(kSizeInMegapixels));
    std::minstd_rand random(1);
    for (size_t at = 0; at < dib.Bits().size(); at += 4)
        std::memset(dib.Bits().data() + at, random() % 100 < 65 ? 255 : 0, 3);
    return dib;
}

/// Seeds lie in the largest area of their picture.
struct Subject {
    const char* name;
    CPackedDib (*make)();
    Point seed;
    int tolerance;
};
constexpr Subject kSubjects[] = {
    {"flat", [] { return Opaque(FlatArtPicture(kSizeInMegapixels)); }, {3850, 500}, 32},
    {"photo", [] { return Opaque(BackdropPicture(kSizeInMegapixels)); }, {2111, 1593}, 60},
    {"noise", Noise, {2038, 1532}, 32},
};

/// The seed's own colour is painted: the first call makes the area plain, every later one finds the same.
void AddFill(const Subject& subject, Threads threads)
{
    const std::string operation = std::string("flood/connected-") + subject.name;
    const double pixels = PixelsOf(kSizeInMegapixels);
    AddCase({operation, SizeName(kSizeInMegapixels), "ours", threads, pixels}, [&subject] {
        auto dib = std::make_shared<CPackedDib>(subject.make());
        return [dib, &subject] {
            const uint32_t seed = PixelAt(*dib, subject.seed);
            (void)FillConnected(*dib, {seed, subject.tolerance}, {seed & 0xFFFFFF, 255}, subject.seed, {});
        };
    });
    AddCase({operation, SizeName(kSizeInMegapixels), "opencv", threads, pixels}, [&subject] {
        cv::Mat bgr;
        cv::cvtColor(MatOf(subject.make()), bgr, cv::COLOR_BGRA2BGR);
        return [bgr, &subject]() mutable {
            const cv::Point seed(subject.seed.x, bgr.rows - 1 - subject.seed.y);
            const cv::Vec3b colour = bgr.at<cv::Vec3b>(seed);
            const cv::Scalar difference = cv::Scalar::all(subject.tolerance);
            cv::floodFill(bgr, seed, cv::Scalar(colour), nullptr, difference, difference,
                          4 | cv::FLOODFILL_FIXED_RANGE);
        };
    });
}

void AddConnectedWand(const Subject& subject, Threads threads)
{
    const std::string operation = std::string("wand/connected-") + subject.name;
    const double pixels = PixelsOf(kSizeInMegapixels);
    AddCase({operation, SizeName(kSizeInMegapixels), "ours", threads, pixels}, [&subject] {
        auto dib = std::make_shared<CPackedDib>(subject.make());
        return [dib, &subject] {
            (void)WandRegion(*dib, subject.seed, subject.tolerance, WandReach::Connected);
        };
    });
    AddCase({operation, SizeName(kSizeInMegapixels), "opencv", threads, pixels}, [&subject] {
        cv::Mat bgr;
        cv::cvtColor(MatOf(subject.make()), bgr, cv::COLOR_BGRA2BGR);
        cv::Mat mask(bgr.rows + 2, bgr.cols + 2, CV_8UC1);
        return [bgr, mask, &subject]() mutable {
            mask.setTo(0);
            const cv::Scalar difference = cv::Scalar::all(subject.tolerance);
            cv::floodFill(bgr, mask, {subject.seed.x, bgr.rows - 1 - subject.seed.y}, {}, nullptr, difference,
                          difference, 4 | cv::FLOODFILL_FIXED_RANGE | cv::FLOODFILL_MASK_ONLY | 255 << 8);
        };
    });
}

std::vector<pixman_box32_t> RunsOf(const cv::Mat& mask)
{
    std::vector<pixman_box32_t> boxes;
    for (int y = 0; y < mask.rows; ++y) {
        const uint8_t* row = mask.ptr(y);
        for (int x = 0; x < mask.cols;) {
            const auto* start =
                static_cast<const uint8_t*>(std::memchr(row + x, 255, static_cast<size_t>(mask.cols - x)));
            if (start == nullptr)
                break;
            const int from = static_cast<int>(start - row);
            const void* end = std::memchr(start, 0, static_cast<size_t>(mask.cols - from));
            x = end == nullptr ? mask.cols : static_cast<int>(static_cast<const uint8_t*>(end) - row);
            boxes.push_back({from, y, x, y + 1});
        }
    }
    return boxes;
}

void AddGlobalWand(const Subject& subject, Threads threads)
{
    const std::string operation = std::string("wand/everywhere-") + subject.name;
    const double pixels = PixelsOf(kSizeInMegapixels);
    AddCase({operation, SizeName(kSizeInMegapixels), "ours", threads, pixels}, [&subject] {
        auto dib = std::make_shared<CPackedDib>(subject.make());
        return [dib, &subject] {
            (void)WandRegion(*dib, subject.seed, subject.tolerance, WandReach::Everywhere);
        };
    });
    AddCase({operation, SizeName(kSizeInMegapixels), "opencv+pixman", threads, pixels}, [&subject] {
        auto dib = std::make_shared<CPackedDib>(subject.make());
        return [dib, &subject] {
            const cv::Mat picture = MatOf(*dib);
            const cv::Vec4b seed = picture.at<cv::Vec4b>(picture.rows - 1 - subject.seed.y, subject.seed.x);
            const int t = subject.tolerance;
            cv::Mat mask;
            cv::inRange(picture, cv::Scalar(seed[0] - t, seed[1] - t, seed[2] - t, 128),
                        cv::Scalar(seed[0] + t, seed[1] + t, seed[2] + t, 255), mask);
            const std::vector<pixman_box32_t> boxes = RunsOf(mask);
            pixman_region32_t region;
            pixman_region32_init_rects(&region, boxes.data(), static_cast<int>(boxes.size()));
            pixman_region32_fini(&region);
        };
    });
}

const bool kRegistered = [] {
    for (const Threads threads : kBothThreads) {
        for (const Subject& subject : kSubjects) {
            AddFill(subject, threads);
            AddConnectedWand(subject, threads);
            AddGlobalWand(subject, threads);
        }
    }
    return true;
}();

} // namespace
