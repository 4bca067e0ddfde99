// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Cases.h"
#include "support/Inputs.h"
#include "support/PlainLoops.h"

#include <tbb/parallel_for.h>

#include <cstring>
#include <memory>

namespace {

using Copy = void (*)(uint8_t*, const uint8_t*, size_t);

void AddCopy(const char* who, Copy copy)
{
    for (const int megapixels : kMegapixels) {
        for (const Threads threads : kBothThreads) {
            const double pixels = PixelsOf(megapixels);
            AddCase({"memory/copy", SizeName(megapixels), who, threads, pixels}, [=] {
                const auto to = std::make_shared<CPackedDib>(BackdropPicture(megapixels).Duplicate());
                const CPackedDib& from = PhotoPicture(megapixels);
                return [=, &from] {
                    tbb::parallel_for(tbb::blocked_range<int>(0, from.Height(), 128),
                                      [&](const tbb::blocked_range<int>& rows) {
                                          copy(to->Row(rows.end() - 1), from.Row(rows.end() - 1),
                                               from.Stride() * rows.size());
                                      });
                };
            });
        }
    }
}

const bool kRegistered = [] {
    AddCopy("limit-memcpy",
            [](uint8_t* to, const uint8_t* from, size_t bytes) { std::memcpy(to, from, bytes); });
    AddCopy("limit-streaming", plain::StreamingCopy);
    return true;
}();

} // namespace
