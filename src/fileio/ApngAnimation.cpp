// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/ApngAnimation.h"

#include "fileio/GifSteps.h"
#include "platform/codec/AlphaBytes.h"
#include "platform/codec/ApngWriter.h"

namespace {

/// Empty when memory ran out.
std::optional<PngColour> ColourOfAll(const CAnimationFrames& frames)
{
    for (size_t index = 0; index < frames.Count(); ++index) {
        const CPackedDib frame = frames.Frame(index);
        if (frame.IsEmpty())
            return std::nullopt;
        if (!IsOpaque(frame))
            return PngColour::Rgba;
    }
    return PngColour::Rgb;
}

} // namespace

bool SaveApngAnimation(const CAnimationFrames& frames, const std::filesystem::path& path,
                       const AnimationOptions& options, IProgress* progress)
{
    const std::optional<PngColour> colour = ColourOfAll(frames);
    if (!colour)
        return false;
    CApngWriter writer(path, frames.Count(), options.plays);
    CPackedDib before;
    for (size_t index = 0; index < frames.Count(); ++index) {
        CPackedDib frame = frames.Frame(index);
        if (frame.IsEmpty())
            return false;
        Rect changed = Rect::At({0, 0}, frames.Size());
        if (index > 0)
            changed = ChangedBounds(before, frame);
        // A frame that changes nothing takes its time all the same.
        if (changed.IsEmpty())
            changed = {0, 0, 1, 1};
        const PngPicture picture = PngPictureOf(ViewOf(frame).Part(changed), *colour);
        if (!writer.AddFrame(picture, {changed.left, changed.top}, options.delay))
            return false;
        if (progress != nullptr)
            progress->SetPosition(static_cast<int>((index + 1) * 100 / frames.Count()));
        before = std::move(frame);
    }
    return writer.Commit();
}
