// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/SampleRow.h"

#include "platform/dib/Pixel.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "model/SampleRow.cpp"
#include <hwy/foreach_target.h>
// After foreach_target.h.
#include <hwy/cache_control.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace {
namespace HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

constexpr size_t kPixelBytes = 4;
constexpr size_t kCacheLine = 64;

void Sample(const uint8_t* HWY_RESTRICT from, size_t count, size_t step, uint32_t* HWY_RESTRICT to,
            [[maybe_unused]] const uint8_t* soon)
{
#if HWY_TARGET != HWY_SCALAR
    const hn::ScalableTag<uint32_t> pixels;
    const hn::RebindToSigned<decltype(pixels)> indices;
    const size_t lanes = hn::Lanes(pixels);
    const auto order = hn::Mul(hn::Iota(indices, 0), hn::Set(indices, static_cast<int32_t>(step)));
    // The last samples are left to the plain loop, since halving reads one pixel past its last sample.
    for (; count > lanes; count -= lanes, from += lanes * step * kPixelBytes, to += lanes) {
        for (size_t at = 0; at < lanes * step * kPixelBytes; at += kCacheLine)
            hwy::Prefetch(soon + at);
        soon += lanes * step * kPixelBytes;
        const auto* source = reinterpret_cast<const uint32_t*>(from);
        const auto taken =
            step == 2 ? hn::ConcatEven(pixels, hn::LoadU(pixels, source + lanes), hn::LoadU(pixels, source))
                      : hn::GatherIndex(pixels, source, order);
        hn::StoreU(taken, pixels, to);
    }
#endif
    for (size_t i = 0; i < count; ++i)
        to[i] = LoadPixel(from + i * step * kPixelBytes);
}

} // namespace HWY_NAMESPACE
} // namespace
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace {
HWY_EXPORT(Sample);
} // namespace

void SampleRow(const uint8_t* from, size_t count, size_t step, uint32_t* to, const uint8_t* soon)
{
    HWY_DYNAMIC_DISPATCH(Sample)(from, count, step, to, soon);
}

#endif
