// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/GifAnimation.h"

#include "fileio/GifSteps.h"
#include "fileio/GifTransparency.h"
#include "fileio/GifWriter.h"
#include "platform/io/AtomicFile.h"
#include "platform/transform/ColorReduction.h"
#include "platform/transform/SharedPalette.h"

#include <optional>

namespace {

constexpr int kMostColours = 256;

/// How the pixels of all frames become indices.
struct Colouring {
    std::optional<CSharedPalette> shared; ///< none: each frame has a palette of its own
    CGifSteps::Unchanged unchanged = CGifSteps::Unchanged::Cleared;
};

bool MakeSharedPalette(const CGifSteps& steps, Colouring& colouring)
{
    const auto make = [&](int colours) {
        colouring.shared.emplace(static_cast<size_t>(colours));
        for (size_t index = 0; index < steps.Steps().size(); ++index) {
            const CPackedDib picture = steps.Picture(index, colouring.unchanged);
            if (picture.IsEmpty() || !colouring.shared->Add(picture))
                return false;
        }
        return colouring.shared->Make();
    };
    // One index is for pixels that are not drawn, unless every one is needed for a colour and all are drawn.
    if (!make(kMostColours - 1))
        return false;
    if (colouring.shared->Taken() != kMostColours || steps.HasClearPixels())
        return true;
    colouring.unchanged = CGifSteps::Unchanged::Stored;
    return make(kMostColours);
}

bool WriteStep(CGifWriter& writer, const CGifSteps& steps, size_t index, Colouring& colouring, int delay)
{
    CPackedDib picture = steps.Picture(index, colouring.unchanged);
    bool outOfMemory = picture.IsEmpty();
    CPackedDib mask = outOfMemory ? CPackedDib() : TakeTransparency(picture, outOfMemory);
    if (outOfMemory)
        return false;
    const GifStep& step = steps.Steps()[index];
    // Some programs clear the place of a frame to the background colour if nothing of it is transparent.
    const bool isTransparent = !mask.IsEmpty() || step.disposal == kFrameIsCleared;
    const CPackedDib indexed =
        colouring.shared ? colouring.shared->Apply(picture)
                         : ReduceColorQuantity(picture, 8, kMostColours - (isTransparent ? 1 : 0), nullptr);
    if (indexed.IsEmpty())
        return false;
    const auto colours = static_cast<uint32_t>(indexed.ColourTable().size());
    GifFrameOptions options;
    options.position = {step.rect.left, step.rect.top};
    options.disposal = step.disposal;
    options.delay = static_cast<uint16_t>(delay);
    options.hasLocalPalette = !colouring.shared;
    options.isTransparent = isTransparent;
    options.transparentIndex = static_cast<uint8_t>(isTransparent ? colours : 0);
    // A shared palette has one size for all frames, with room for the transparent index.
    const bool hasSpare = isTransparent || (colouring.shared && colours < kMostColours);
    options.tableSize = GifTableSize(colours + (hasSpare ? 1 : 0));
    writer.WriteFrame(indexed, mask, options, nullptr);
    return true;
}

} // namespace

bool SaveGifAnimation(const CAnimationFrames& frames, const std::filesystem::path& path,
                      const AnimationOptions& options, IProgress* progress)
{
    constexpr int kMaxSide = 65535;
    if (frames.Size().width > kMaxSide || frames.Size().height > kMaxSide)
        return false;
    CGifSteps steps(frames);
    Colouring colouring;
    if (!steps.Plan() ||
        (options.palette == AnimationPalette::OneForAll && !MakeSharedPalette(steps, colouring)))
        return false;
    CGifWriter writer;
    if (colouring.shared) {
        const auto& colours = colouring.shared->Colours();
        const auto count = static_cast<uint32_t>(colours.size());
        writer.WriteHeader(frames.Size(), colours, GifTableSize(count + (count < kMostColours ? 1 : 0)), 8,
                           0);
    } else {
        writer.WriteHeader(frames.Size(), {}, kMostColours, 8, 0);
    }
    // Files state how often an animation is repeated; without a word it is shown once.
    if (options.plays != 1)
        writer.WriteRepetitions(static_cast<uint16_t>(options.plays == 0 ? 0 : options.plays - 1));
    for (size_t index = 0; index < frames.Count(); ++index) {
        if (!WriteStep(writer, steps, index, colouring, options.delay))
            return false;
        if (progress != nullptr)
            progress->SetPosition(static_cast<int>((index + 1) * 100 / frames.Count()));
    }
    writer.WriteTrailer();
    return WriteFileAtomically(path, writer.Bytes());
}
