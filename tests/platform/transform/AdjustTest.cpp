// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/transform/AdjustBrightContrast.h"
#include "platform/transform/AdjustHsl.h"
#include "platform/transform/AdjustRgb.h"
#include "support/KernelSupport.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace reference {

template <typename Change> CPackedDib MapPixels(const CPackedDib& dib, Change change)
{
    CPackedDib changed = dib.Duplicate();
    for (size_t at = 0; at < changed.Bits().size(); at += 4)
        change(changed.Bits().data() + at);
    return changed;
}

CPackedDib AdjustRgb(const CPackedDib& dib, int red, int green, int blue)
{
    return MapPixels(dib, [=](uint8_t* pixel) {
        const int steps[] = {blue, green, red};
        for (int channel = 0; channel < 3; ++channel)
            pixel[channel] = static_cast<uint8_t>(std::clamp(pixel[channel] + steps[channel], 0, 255));
    });
}

CPackedDib AdjustBrightContrast(const CPackedDib& dib, int brightness, int contrast)
{
    const auto c = static_cast<float>(contrast);
    const float gain = contrast == 127 ? 255 : contrast <= 0 ? (127 + c) / 127 : 127 / (127 - c);
    return MapPixels(dib, [=](uint8_t* pixel) {
        for (int channel = 0; channel < 3; ++channel) {
            const float spread = (pixel[channel] - 127.5f) * gain + (127.5f + static_cast<float>(brightness));
            pixel[channel] = static_cast<uint8_t>(std::clamp(spread, 0.0f, 255.0f) + 0.5f);
        }
    });
}

CPackedDib AdjustHsl(const CPackedDib& dib, int degrees, int saturationPercent, int lightnessPercent)
{
    const auto drawn = [](float value, int percent, float largest) {
        const float share = static_cast<float>(percent) / 100;
        return share <= 0 ? value * (1 + share) + 0 : value * (1 - share) + share * largest;
    };
    return MapPixels(dib, [=](uint8_t* pixel) {
        const float blue = pixel[0], green = pixel[1], red = pixel[2];
        const float most = std::max({red, green, blue});
        const float least = std::min({red, green, blue});
        const float chroma = most - least;
        float hue = most == red     ? (green - blue) / std::max(chroma, 1.0f)
                    : most == green ? (blue - red) / std::max(chroma, 1.0f) + 2
                                    : (red - green) / std::max(chroma, 1.0f) + 4;
        hue += static_cast<float>(degrees) / 60;
        hue = hue < 0 ? hue + 6 : hue;
        hue = hue >= 6 ? hue - 6 : hue;
        const float sum = most + least;
        const float room = 255 - std::abs(sum - 255);
        const float saturation = chroma > 0 ? drawn(chroma / room, saturationPercent, 1) : 0;
        const float newSum = drawn(sum, lightnessPercent, 510);
        const float newChroma = saturation * (255 - std::abs(newSum - 255));
        const float floor = (newSum - newChroma) * 0.5f + 0.5f;
        const float places[] = {2 - std::abs(hue - 4), 2 - std::abs(hue - 2), std::abs(hue - 3) - 1};
        for (int channel = 0; channel < 3; ++channel) {
            const float value = floor + newChroma * std::clamp(places[channel], 0.0f, 1.0f);
            pixel[channel] = static_cast<uint8_t>(std::min(value, 255.5f));
        }
    });
}

} // namespace reference

namespace {

/// All 2^24 colours, with an alpha that tells a changed one.
const CPackedDib& EveryColour()
{
    static const CPackedDib colours = [] {
        CPackedDib dib = CPackedDib::Create(4096, 4096, 32);
        auto* pixels = reinterpret_cast<uint32_t*>(dib.Bits().data());
        std::iota(pixels, pixels + (1 << 24), 0xA5000000u);
        return dib;
    }();
    return colours;
}

struct Row {
    int first, second, third;
};

TEST(AdjustDIBRGB, EqualsReference)
{
    for (const Row& row : {Row{0, 0, 0}, {255, -255, 1}, {-1, 100, -100}}) {
        ExpectSameResults(
            [&](const CPackedDib& dib) { return AdjustDIBRGB(dib, row.first, row.second, row.third); },
            [&](const CPackedDib& dib) {
                return reference::AdjustRgb(dib, row.first, row.second, row.third);
            });
    }
    ExpectEmptyWhenMemoryRunsOut([](const CPackedDib& dib) { return AdjustDIBRGB(dib, 1, 2, 3); });
}

TEST(AdjustDIBBrightAndConstract, EqualsReferenceAndReachesItsEnds)
{
    CPackedDib levels = CPackedDib::Create(256, 1, 32);
    for (int at = 0; at < 256; ++at)
        std::fill_n(levels.Row(0) + ptrdiff_t{at} * 4, 4, static_cast<uint8_t>(at));
    for (int contrast = -127; contrast <= 127; contrast += contrast == 126 ? 1 : 11) {
        for (const int brightness : {-255, -100, 0, 3, 255}) {
            SCOPED_TRACE(std::to_string(brightness) + ", " + std::to_string(contrast));
            const CPackedDib expected = reference::AdjustBrightContrast(levels, brightness, contrast);
            ExpectEverywhere(
                [&](const CPackedDib& dib) { return AdjustDIBBrightAndConstract(dib, brightness, contrast); },
                levels, expected);
            for (int at = 1; at < 256; ++at)
                EXPECT_LE(PixelOf(expected, at - 1, 0) & 255, PixelOf(expected, at, 0) & 255);
        }
    }
    EXPECT_TRUE(SameBytes(AdjustDIBBrightAndConstract(EveryColour(), 0, 0), EveryColour()));
    const CPackedDib two = DibOf(2, 1, {0x01007F80, 0x02FF1020});
    EXPECT_TRUE(SameBytes(AdjustDIBBrightAndConstract(two, 0, 127), DibOf(2, 1, {0x010000FF, 0x02FF0000})));
    EXPECT_TRUE(SameBytes(AdjustDIBBrightAndConstract(two, 0, -127), DibOf(2, 1, {0x01808080, 0x02808080})));
    EXPECT_TRUE(SameBytes(AdjustDIBBrightAndConstract(two, 255, 0), DibOf(2, 1, {0x01FFFFFF, 0x02FFFFFF})));
    ExpectEmptyWhenMemoryRunsOut(
        [](const CPackedDib& dib) { return AdjustDIBBrightAndConstract(dib, 1, 2); });
}

TEST(AdjustDIBHSL, EqualsReference)
{
    for (const Row& row : {Row{0, 0, 0}, {30, 0, 0}, {180, 50, -50}, {330, -33, 7}, {61, 100, 99}}) {
        SCOPED_TRACE(row.first);
        ExpectSameResults(
            [&](const CPackedDib& dib) { return AdjustDIBHSL(dib, row.first, row.second, row.third); },
            [&](const CPackedDib& dib) {
                return reference::AdjustHsl(dib, row.first, row.second, row.third);
            });
    }
    ExpectEmptyWhenMemoryRunsOut([](const CPackedDib& dib) { return AdjustDIBHSL(dib, 1, 2, 3); });
}

TEST(AdjustDIBHSL, NothingIsTheIdentityAndAWholeTurnComesBack)
{
    EXPECT_TRUE(SameBytes(AdjustDIBHSL(EveryColour(), 0, 0, 0), EveryColour()));
    EXPECT_TRUE(SameBytes(AdjustDIBHSL(EveryColour(), -180, 20, 0), AdjustDIBHSL(EveryColour(), 180, 20, 0)));
    EXPECT_TRUE(SameBytes(AdjustDIBHSL(AdjustDIBHSL(EveryColour(), 120, 0, 0), -120, 0, 0), EveryColour()));
}

TEST(AdjustDIBHSL, ReachesItsEnds)
{
    const CPackedDib picture = DibOf(3, 1, {0x40FF0000, 0x80604020, 0xC0808080});
    EXPECT_TRUE(
        SameBytes(AdjustDIBHSL(picture, 120, 0, 0), DibOf(3, 1, {0x4000FF00, 0x80206040, 0xC0808080})));
    EXPECT_TRUE(
        SameBytes(AdjustDIBHSL(picture, 0, 100, 0), DibOf(3, 1, {0x40FF0000, 0x80804000, 0xC0808080})));
    EXPECT_TRUE(
        SameBytes(AdjustDIBHSL(picture, 0, -100, 0), DibOf(3, 1, {0x40808080, 0x80404040, 0xC0808080})));
    EXPECT_TRUE(
        SameBytes(AdjustDIBHSL(picture, 0, 0, 100), DibOf(3, 1, {0x40FFFFFF, 0x80FFFFFF, 0xC0FFFFFF})));
    EXPECT_TRUE(
        SameBytes(AdjustDIBHSL(picture, 0, 0, -100), DibOf(3, 1, {0x40000000, 0x80000000, 0xC0000000})));
}

} // namespace
