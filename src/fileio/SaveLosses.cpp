// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/SaveLosses.h"

#include "platform/codec/SaveOptions.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace {

/// A choice in a format's panel that changes what it can hold; kAny: all that have no row of their own.
constexpr int kAny = -1;

constexpr int Choice(DibFormat format)
{
    return static_cast<int>(format);
}

constexpr int Choice(TiffCompression compression)
{
    return static_cast<int>(compression);
}

struct LimitsRow {
    SavePanel panel;
    std::string_view extension; ///< where formats share a panel; empty: all of them
    int choice;
    SaveLimits limits;
};

constexpr LimitsRow kLimits[] = {
    {SavePanel::Jpg, "", kAny, {.alpha = KeptAlpha::None, .isExact = false}},
    {SavePanel::Gif, "", kAny, {.alpha = KeptAlpha::OneBit, .mostColours = 256}},
    {SavePanel::Bmp,
     "",
     Choice(DibFormat::BlackAndWhite),
     {.alpha = KeptAlpha::None, .mostColours = 2, .isGray = true}},
    {SavePanel::Bmp, "", Choice(DibFormat::Colors16), {.alpha = KeptAlpha::None, .mostColours = 16}},
    {SavePanel::Bmp, "", Choice(DibFormat::Colors256), {.alpha = KeptAlpha::None, .mostColours = 256}},
    {SavePanel::Bmp, "", Choice(DibFormat::HighColors), {.alpha = KeptAlpha::None, .isExact = false}},
    {SavePanel::Bmp,
     "",
     Choice(DibFormat::Grays16),
     {.alpha = KeptAlpha::None, .mostColours = 16, .isGray = true}},
    {SavePanel::Bmp, "", Choice(DibFormat::Grays256), {.alpha = KeptAlpha::None, .isGray = true}},
    {SavePanel::Bmp, "", kAny, {.alpha = KeptAlpha::None}},
    {SavePanel::Tiff,
     "",
     Choice(TiffCompression::Group3),
     {.alpha = KeptAlpha::None, .mostColours = 2, .isGray = true}},
    {SavePanel::Tiff,
     "",
     Choice(TiffCompression::Group4),
     {.alpha = KeptAlpha::None, .mostColours = 2, .isGray = true}},
    {SavePanel::Tiff, "", Choice(TiffCompression::Jpeg), {.alpha = KeptAlpha::None, .isExact = false}},
    {SavePanel::FillColor, ".pcx", kAny, {.alpha = KeptAlpha::None}},
    {SavePanel::HotSpot, ".ani", kAny, {.keepsFrames = true}},
    {SavePanel::None, ".psd", kAny, {.keepsObjects = true, .keepsFrames = true}},
};

int ChoiceOf(const SaveFormatRow& format, const SaveAsOptions& options, const CSettings& settings)
{
    switch (format.panel) {
    case SavePanel::Bmp:
        return Choice(options.bmpColors);
    case SavePanel::Tiff:
        return settings.Get(Setting::TIFFEncodeMode);
    default:
        return kAny;
    }
}

/// One row a thing that may be lost; a "%s" in its text is the number of colours.
struct LossRow {
    Str text;
    bool (*isLost)(const PictureFacts& facts, const SaveLimits& limits);
};

bool LosesHue(const PictureFacts& facts, const SaveLimits& limits)
{
    return limits.isGray && !facts.isGray;
}

constexpr LossRow kLosses[] = {
    {Str::LossFrames, [](const PictureFacts& facts,
                         const SaveLimits& limits) { return facts.isAnimation && !limits.keepsFrames; }},
    {Str::LossObjects,
     [](const PictureFacts& facts, const SaveLimits& limits) {
         return facts.visibleObjects > 1 && !facts.isAnimation && !limits.keepsObjects && !limits.keepsFrames;
     }},
    {Str::LossHiddenObjects,
     [](const PictureFacts& facts, const SaveLimits& limits) {
         return facts.hiddenObjects > 0 && !limits.keepsObjects;
     }},
    {Str::LossTransparency,
     [](const PictureFacts& facts, const SaveLimits& limits) {
         return facts.isTransparent && limits.alpha == KeptAlpha::None;
     }},
    {Str::LossPartialTransparency,
     [](const PictureFacts& facts, const SaveLimits& limits) {
         return facts.isPartlyTransparent && limits.alpha == KeptAlpha::OneBit;
     }},
    {Str::LossHue, LosesHue},
    {Str::LossColors,
     [](const PictureFacts& facts, const SaveLimits& limits) {
         return limits.mostColours != 0 && facts.colours > limits.mostColours && !LosesHue(facts, limits);
     }},
    {Str::LossExactColors,
     [](const PictureFacts& /*facts*/, const SaveLimits& limits) { return !limits.isExact; }},
};

} // namespace

SaveLimits LimitsOf(const SaveFormatRow& format, const SaveAsOptions& options, const CSettings& settings)
{
    const int choice = ChoiceOf(format, options, settings);
    const auto* row = std::ranges::find_if(kLimits, [&](const LimitsRow& candidate) {
        return candidate.panel == format.panel &&
               (candidate.extension.empty() || candidate.extension == format.extension) &&
               (candidate.choice == kAny || candidate.choice == choice);
    });
    return row == std::end(kLimits) ? SaveLimits() : row->limits;
}

PictureFacts FactsOf(const CObjectCanvas& canvas)
{
    PictureFacts facts;
    facts.visibleObjects = canvas.CountVisible();
    facts.hiddenObjects = static_cast<int>(canvas.objects.Count()) - facts.visibleObjects;
    facts.isAnimation = facts.visibleObjects > 1 && canvas.frameDelay > 0;
    return facts;
}

void AddPixelFacts(PictureFacts& facts, const CPackedDib& frame)
{
    std::vector<bool> isKnown(size_t{1} << 24);
    for (int y = 0; y < frame.Height(); ++y) {
        const uint8_t* pixel = frame.Row(y);
        for (int x = 0; x < frame.Width(); ++x, pixel += 4) {
            const uint8_t alpha = pixel[3];
            facts.isTransparent |= alpha != 255;
            facts.isPartlyTransparent |= alpha != 0 && alpha != 255;
            if (alpha == 0)
                continue;
            const size_t colour = size_t{pixel[2]} << 16 | size_t{pixel[1]} << 8 | pixel[0];
            if (!isKnown[colour]) {
                isKnown[colour] = true;
                ++facts.colours;
                facts.isGray = facts.isGray && pixel[0] == pixel[1] && pixel[1] == pixel[2];
            }
        }
    }
}

std::string DescribeLosses(const PictureFacts& facts, const SaveLimits& limits)
{
    std::string names;
    for (const LossRow& row : kLosses) {
        if (row.isLost(facts, limits))
            names += (names.empty() ? "" : ", ") + Text(row.text, std::to_string(limits.mostColours));
    }
    return names.empty() ? names : Text(Str::NotKept, names);
}
