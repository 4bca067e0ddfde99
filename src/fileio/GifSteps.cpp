// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/GifSteps.h"

#include "fileio/GifTransparency.h"
#include "model/DibOperations.h"
#include "platform/codec/AlphaBytes.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr uint32_t kAlphaMask = 0xFF000000;

uint32_t PixelAt(const uint8_t* row, int x)
{
    uint32_t pixel = 0;
    std::memcpy(&pixel, row + ptrdiff_t{x} * 4, sizeof pixel);
    return pixel;
}

/// The smallest rectangle around the pixels for which `holds` is true of the two pictures' pixels.
template <typename Predicate>
Rect BoundsWhere(const CPackedDib& first, const CPackedDib& second, Predicate holds)
{
    Rect bounds;
    for (int y = 0; y < first.Height(); ++y) {
        const uint8_t* a = first.Row(y);
        const uint8_t* b = second.Row(y);
        const auto holdsAt = [&](int x) { return holds(PixelAt(a, x), PixelAt(b, x)); };
        int left = 0;
        while (left < first.Width() && !holdsAt(left))
            ++left;
        if (left == first.Width())
            continue;
        int right = first.Width();
        while (!holdsAt(right - 1))
            --right;
        bounds = bounds.United({left, y, right, y + 1});
    }
    return bounds;
}

} // namespace

Rect ChangedBounds(const CPackedDib& before, const CPackedDib& after)
{
    return BoundsWhere(before, after, [](uint32_t a, uint32_t b) { return a != b; });
}

CPackedDib CGifSteps::HardFrame(size_t index) const
{
    CPackedDib frame = m_frames.Frame(index);
    for (int y = 0; !frame.IsEmpty() && y < frame.Height(); ++y) {
        uint8_t* pixel = frame.Row(y);
        for (int x = 0; x < frame.Width(); ++x, pixel += 4) {
            if (pixel[3] < kLowestOpaqueAlpha)
                std::memset(pixel, 0, 4);
            else
                pixel[3] = 255;
        }
    }
    return frame;
}

CPackedDib CGifSteps::Disposed(CPackedDib frame, const GifStep& step)
{
    if (step.disposal == kFrameIsCleared) {
        for (int y = step.rect.top; y < step.rect.bottom; ++y)
            std::memset(frame.Row(y) + ptrdiff_t{step.rect.left} * 4, 0,
                        static_cast<size_t>(step.rect.Width()) * 4);
    }
    return frame;
}

bool CGifSteps::Plan()
{
    const Rect whole = Rect::At({0, 0}, m_frames.Size());
    bool beginsClear = false;
    CPackedDib before;
    for (size_t index = 0; index < m_frames.Count(); ++index) {
        CPackedDib frame = HardFrame(index);
        if (frame.IsEmpty())
            return false;
        m_hasClearPixels = m_hasClearPixels || !IsOpaque(frame);
        if (index == 0) {
            beginsClear = m_hasClearPixels;
            m_steps.push_back({whole, kFrameStays});
        } else {
            GifStep& last = m_steps.back();
            const Rect vanished = BoundsWhere(before, frame, [](uint32_t a, uint32_t b) {
                return (a & kAlphaMask) != 0 && (b & kAlphaMask) == 0;
            });
            if (!vanished.IsEmpty()) {
                last.disposal = kFrameIsCleared;
                last.rect = last.rect.United(vanished);
            }
            const Rect changed = ChangedBounds(Disposed(std::move(before), last), frame);
            // A frame that changes nothing takes its time all the same.
            m_steps.push_back({changed.IsEmpty() ? Rect{0, 0, 1, 1} : changed, kFrameStays});
        }
        before = std::move(frame);
    }
    // When the animation begins anew nothing of its end may show through.
    if (beginsClear && m_steps.size() > 1)
        m_steps.back() = {whole, kFrameIsCleared};
    return !m_steps.empty();
}

CPackedDib CGifSteps::Picture(size_t index, Unchanged unchanged) const
{
    CPackedDib frame = HardFrame(index);
    if (frame.IsEmpty())
        return frame;
    if (unchanged == Unchanged::Cleared && index > 0) {
        CPackedDib before = HardFrame(index - 1);
        if (before.IsEmpty())
            return before;
        before = Disposed(std::move(before), m_steps[index - 1]);
        for (int y = 0; y < frame.Height(); ++y) {
            const uint8_t* shown = before.Row(y);
            uint8_t* row = frame.Row(y);
            for (int x = 0; x < frame.Width(); ++x) {
                if (PixelAt(shown, x) == PixelAt(row, x))
                    std::memset(row + ptrdiff_t{x} * 4, 0, 4);
            }
        }
    }
    const Rect& rect = m_steps[index].rect;
    return CropByMargins(frame, rect.left, rect.top, frame.Width() - rect.right,
                         frame.Height() - rect.bottom);
}
