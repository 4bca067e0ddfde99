// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Cases.h"
#include "support/Inputs.h"
#include "support/PlainLoops.h"

#include <tbb/parallel_for.h>

#include <cstring>
#include <memory>

namespace {

using Pass = void (*)(uint8_t* to, const uint8_t* from, size_t bytes);

/// Bands of rows from one picture to another, or only inside the other.
void AddPass(const char* operation, const char* who, Pass pass)
{
    for (const int megapixels : kMegapixels) {
        for (const Threads threads : kBothThreads) {
            const double pixels = PixelsOf(megapixels);
            AddCase({operation, SizeName(megapixels), who, threads, pixels}, [=] {
                const auto to = std::make_shared<CPackedDib>(BackdropPicture(megapixels).Duplicate());
                const CPackedDib& from = PhotoPicture(megapixels);
                return [=, &from] {
                    tbb::parallel_for(tbb::blocked_range<int>(0, from.Height(), 128),
                                      [&](const tbb::blocked_range<int>& rows) {
                                          pass(to->Row(rows.end() - 1), from.Row(rows.end() - 1),
                                               from.Stride() * rows.size());
                                      });
                };
            });
        }
    }
}

void Invert(uint8_t* pixels, size_t bytes)
{
    auto* const words = reinterpret_cast<uint64_t*>(pixels);
    for (size_t i = 0; i < bytes / sizeof *words; ++i)
        words[i] = ~words[i];
}

const bool kRegistered = [] {
    AddPass("memory/copy", "limit-memcpy",
            [](uint8_t* to, const uint8_t* from, size_t bytes) { std::memcpy(to, from, bytes); });
    AddPass("memory/copy", "limit-streaming", plain::StreamingCopy);
    AddPass("memory/modify-in-place", "limit-invert",
            [](uint8_t* to, const uint8_t* /*from*/, size_t bytes) { Invert(to, bytes); });
    return true;
}();

} // namespace
