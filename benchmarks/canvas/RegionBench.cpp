// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/region/Region.h"
#include "platform/region/RegionBuilder.h"
#include "support/Cases.h"

#include <pixman.h>

#include <cstdlib>
#include <memory>
#include <random>
#include <string>

namespace {

/// Runs of random lengths, forty in a row.
CRegion Speckled(uint32_t seed, int spans)
{
    constexpr int kInRow = 40;
    std::minstd_rand random(seed);
    CRegionBuilder builder(static_cast<size_t>(spans));
    for (int y = 0; y < spans / kInRow; ++y) {
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

template <auto ours, auto theirs> void AddOperation(const char* name, int spans)
{
    const std::string operation = std::string("region/") + name;
    const std::string size = std::to_string(spans) + "-spans";
    AddCase({operation, size, "ours"}, [=] {
        return [a = Speckled(1, spans), b = Speckled(2, spans)] {
            CRegion result = a;
            if (!(result.*ours)(b))
                std::abort();
        };
    });
    AddCase({operation, size, "pixman"}, [=] {
        return [a = std::shared_ptr(PixmanRegionOf(Speckled(1, spans))),
                b = std::shared_ptr(PixmanRegionOf(Speckled(2, spans)))] {
            pixman_region32_t result;
            pixman_region32_init(&result);
            (void)theirs(&result, a.get(), b.get());
            pixman_region32_fini(&result);
        };
    });
}

const bool kRegistered = [] {
    for (const int spans : {40'000, 20'000'000}) {
        AddOperation<&CRegion::Unite, pixman_region32_union>("union", spans);
        AddOperation<&CRegion::Subtract, pixman_region32_subtract>("subtraction", spans);
        AddOperation<&CRegion::Intersect, pixman_region32_intersect>("intersection", spans);
    }
    return true;
}();

} // namespace
