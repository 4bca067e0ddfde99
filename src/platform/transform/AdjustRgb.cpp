// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/transform/AdjustRgb.h"

#include "platform/parallel/PictureBands.h"
#include "platform/ui/UserInterface.h"

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "platform/transform/AdjustRgb.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#ifndef PIXOLUNE_CHANNEL_STEPS
#define PIXOLUNE_CHANNEL_STEPS
namespace {

/// What is added to and then taken from the bytes of four pixels; one of both is 0.
struct ChannelSteps {
    alignas(16) uint8_t raise[16] = {};
    alignas(16) uint8_t lower[16] = {};
};

} // namespace
#endif

HWY_BEFORE_NAMESPACE();
namespace {
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

void StepRow(const ChannelSteps& steps, const uint8_t* HWY_RESTRICT source, uint8_t* HWY_RESTRICT result,
             size_t count)
{
    size_t at = 0;
#if HWY_TARGET != HWY_SCALAR
    const hn::ScalableTag<uint8_t> bytes;
    const auto raise = hn::LoadDup128(bytes, steps.raise);
    const auto lower = hn::LoadDup128(bytes, steps.lower);
    for (; at + hn::Lanes(bytes) <= count; at += hn::Lanes(bytes)) {
        const auto raised = hn::SaturatedAdd(hn::LoadU(bytes, source + at), raise);
        hn::StoreU(hn::SaturatedSub(raised, lower), bytes, result + at);
    }
#endif
    for (; at < count; ++at) {
        const int sum = source[at] + steps.raise[at % 4] - steps.lower[at % 4];
        result[at] = static_cast<uint8_t>(std::clamp(sum, 0, 255));
    }
}

} // namespace HWY_NAMESPACE
} // namespace
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace {
HWY_EXPORT(StepRow);
constexpr int kPixelsPerMicrosecond = 2000;
} // namespace

CPackedDib AdjustDIBRGB(const CPackedDib& dib, int red, int green, int blue, IProgress* progress,
                        int /*flag*/)
{
    ChannelSteps steps;
    const int values[] = {blue, green, red, 0};
    for (size_t at = 0; at < 16; ++at) {
        steps.raise[at] = static_cast<uint8_t>(std::clamp(values[at % 4], 0, 255));
        steps.lower[at] = static_cast<uint8_t>(std::clamp(-values[at % 4], 0, 255));
    }
    const auto stepRow = HWY_DYNAMIC_DISPATCH(StepRow);
    CPackedDib adjusted = MapPictureRows(dib, kPixelsPerMicrosecond,
                                         [&](const uint32_t* source, uint32_t* result, size_t pixels) {
                                             stepRow(steps, reinterpret_cast<const uint8_t*>(source),
                                                     reinterpret_cast<uint8_t*>(result), pixels * 4);
                                         });
    if (progress != nullptr)
        progress->SetPosition(100);
    return adjusted;
}

#endif
