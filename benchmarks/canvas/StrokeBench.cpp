// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/EraseStroke.h"
#include "canvas/InPlaceStroke.h"
#include "canvas/PencilStroke.h"
#include "platform/region/Region.h"
#include "support/Cases.h"
#include "support/Inputs.h"
#include "support/Workbench.h"

#include <opencv2/imgproc.hpp>

#include <memory>

namespace {

constexpr int kSizeInMegapixels = 12;
constexpr Point kFrom{1000, 1000};
constexpr Point kTo{1040, 1030}; ///< 50 pixels away
constexpr Pen kPen{20, PenCap::Round, 20};

const bool kRegistered = [] {
    AddCase({"stroke/rasterise-soft-50", SizeName(kSizeInMegapixels), "ours"}, [] {
        return [target = Rect::At({0, 0}, BackdropPicture(kSizeInMegapixels).Size())] {
            (void)RasteriseSegment(target, kFrom, kTo, kPen, {});
        };
    });
    // What a blurred line costs that is drawn and softened inside its box.
    AddCase({"stroke/rasterise-soft-50", SizeName(kSizeInMegapixels), "opencv"}, [] {
        return [] {
            constexpr int kMargin = 20;
            cv::Mat mask(kTo.y - kFrom.y + 2 * kMargin, kTo.x - kFrom.x + 2 * kMargin, CV_8UC1,
                         cv::Scalar(0));
            cv::line(mask, {kMargin, kMargin}, {kTo.x - kFrom.x + kMargin, kTo.y - kFrom.y + kMargin},
                     cv::Scalar(255), kPen.width, cv::LINE_8);
            cv::blur(mask, mask, {kPen.softness, kPen.softness});
        };
    });
    AddCase({"stroke/erase-from-press-50", SizeName(kSizeInMegapixels), "ours"}, [] {
        auto image = std::make_shared<Ref<CRasterImage>>(
            MakeShared<CRasterImage>(BackdropPicture(kSizeInMegapixels).Duplicate(), ""));
        return [image] {
            const Rect target{0, 0, (*image)->Width(), (*image)->Height()};
            CInPlaceStroke stroke(*image);
            const auto mask = RasteriseSegment(target, kFrom, kTo, kPen, {});
            if (mask && stroke.Prepare(mask->Bounds()))
                ErasePixels(stroke.Pixels(), *mask, 100);
            stroke.Restore();
        };
    });
    // Through the tools: the cost is that of the segment's box, whatever the object's size.
    const struct {
        const char* name;
        ToolMode mode;
        int allowsTransparence;
    } tools[] = {{"pencil-layer", ToolMode::Pencil, 1},
                 {"pencil-in-place", ToolMode::Pencil, 0},
                 {"eraser", ToolMode::Erase, 1}};
    for (const auto& tool : tools) {
        for (const int megapixels : kMegapixels) {
            const auto add = [&](const char* what, Point to) {
                AddCase({std::string("stroke/") + tool.name + what, SizeName(megapixels), "ours"}, [=] {
                    auto bench = std::make_shared<CWorkbench>(BackdropPicture(megapixels).Duplicate());
                    for (const Setting width : {Setting::PaintLineWidth, Setting::EraseLineWidth})
                        bench->Settings().Set(width, 50);
                    bench->Settings().Set(Setting::AllowPaintTransparence, tool.allowsTransparence);
                    bench->View().SetMode(tool.mode);
                    return [bench, to] {
                        bench->View().Press(CWorkbench::LeftAt({400, 400}));
                        bench->View().Move(CWorkbench::LeftAt(to));
                        bench->View().CancelDrag();
                    };
                });
            };
            add("-segment-200", {560, 520});
            add("-first-dab", {401, 400});
        }
    }
    return true;
}();

} // namespace
