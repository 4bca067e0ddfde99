// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/region/Region.h"
#include "platform/region/RegionBuilder.h"
#include "support/Cases.h"

#include <pixman.h>

#include <memory>
#include <random>

namespace {

constexpr int kSpans = 40'000;

/// Runs of random lengths, forty in a row.
CRegion Speckled(uint32_t seed)
{
    constexpr int kInRow = 40;
    std::minstd_rand random(seed);
    CRegionBuilder builder(kSpans);
    for (int y = 0; y < kSpans / kInRow; ++y) {
        int x = 0;
        for (int run = 0; run < kInRow; ++run) {
            const int left = x + 1 + static_cast<int>(random() % 50);
            x = left + 1 + static_cast<int>(random() % 50);
            builder.AddRun(y, left, x);
        }
    }
    return builder.Finish();
}

using PixmanRegion = std::unique_ptr<pixman_region32_t, void (*)(pixman_region32_t*)>;

PixmanRegion PixmanRegionOf(const CRegion& region)
{
    auto* result = new pixman_region32_t;
    const auto* boxes = reinterpret_cast<const pixman_box32_t*>(region.Rectangles().data());
    pixman_region32_init_rects(result, boxes, static_cast<int>(region.Rectangles().size()));
    return {result, [](pixman_region32_t* used) {
                pixman_region32_fini(used);
                delete used;
            }};
}

template <auto ours, auto theirs> void AddOperation(const char* name)
{
    const std::string operation = std::string("region/") + name;
    AddCase({operation, "40000-spans", "ours"}, [] {
        return [a = Speckled(1), b = Speckled(2)] {
            CRegion result = a;
            (void)(result.*ours)(b);
        };
    });
    AddCase({operation, "40000-spans", "pixman"}, [] {
        return [a = std::shared_ptr(PixmanRegionOf(Speckled(1))),
                b = std::shared_ptr(PixmanRegionOf(Speckled(2)))] {
            pixman_region32_t result;
            pixman_region32_init(&result);
            (void)theirs(&result, a.get(), b.get());
            pixman_region32_fini(&result);
        };
    });
}

const bool kRegistered = [] {
    AddOperation<&CRegion::Unite, pixman_region32_union>("union");
    AddOperation<&CRegion::Subtract, pixman_region32_subtract>("subtraction");
    AddOperation<&CRegion::Intersect, pixman_region32_intersect>("intersection");
    return true;
}();

} // namespace
