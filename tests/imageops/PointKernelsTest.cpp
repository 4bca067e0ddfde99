// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageops/GrayDib.h"
#include "support/KernelSupport.h"
#include "imageops/NegativeDib.h"

namespace reference {

template <typename Change> CPackedDib MapPixels(const CPackedDib& dib, Change change)
{
    CPackedDib changed = dib.Duplicate();
    for (size_t at = 0; at < changed.Bits().size(); at += 4)
        change(changed.Bits().data() + at);
    return changed;
}

CPackedDib GrayDib(const CPackedDib& dib)
{
    return MapPixels(dib, [](uint8_t* pixel) {
        const double level = pixel[0] * 0.11 + pixel[1] * 0.59 + pixel[2] * 0.3;
        pixel[0] = pixel[1] = pixel[2] = static_cast<uint8_t>(level);
    });
}

CPackedDib NegativeDib(const CPackedDib& dib)
{
    return MapPixels(dib, [](uint8_t* pixel) {
        for (int channel = 0; channel < 3; ++channel)
            pixel[channel] = static_cast<uint8_t>(255 - pixel[channel]);
    });
}

} // namespace reference

namespace {

TEST(PointKernels, EqualReferences)
{
    ExpectSameResults(GrayDib, reference::GrayDib);
    ExpectSameResults(NegativeDib, reference::NegativeDib);
}

TEST(PointKernels, EmptyWhenMemoryRunsOut)
{
    ExpectEmptyWhenMemoryRunsOut(GrayDib);
    ExpectEmptyWhenMemoryRunsOut(NegativeDib);
}

/// Sums that would be whole numbers fall below them by rounding for some colours: every colour is tried.
TEST(GrayDib, EqualsReferenceForEveryColour)
{
    CPackedDib colours = CPackedDib::Create(4096, 4096, 32);
    auto* pixels = reinterpret_cast<uint32_t*>(colours.Bits().data());
    for (uint32_t colour = 0; colour < 1u << 24; ++colour)
        pixels[colour] = colour;
    ExpectEverywhere(GrayDib, colours, reference::GrayDib(colours));
    EXPECT_TRUE(SameBytes(GrayDib(DibOf(3, 1, {0x80000064, 0x00C80000, 0xFF006400})),
                          DibOf(3, 1, {0x800B0B0B, 0x003C3C3C, 0xFF3B3B3B})));
}

} // namespace
