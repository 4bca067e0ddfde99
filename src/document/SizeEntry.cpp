// SPDX-License-Identifier: GPL-3.0-or-later
#include "document/SizeEntry.h"

#include <algorithm>

int CSizeEntry::Range::Clamped(int64_t value) const
{
    return static_cast<int>(std::clamp<int64_t>(value, minimum, maximum));
}

CSizeEntry::Side::Side(int entryPixels)
    : entry(entryPixels), pixels(entryPixels), pixelRange{1, std::max(kCommonMaximum, entryPixels)},
      percentRange{(100 + entryPixels - 1) / entryPixels,
                   static_cast<int>(int64_t{std::max(kCommonMaximum, entryPixels)} * 100 / entryPixels)}
{
}

CSizeEntry::CSizeEntry(Size entry) : m_width(entry.width), m_height(entry.height) {}

void CSizeEntry::SetPixels(Side& changed, Side& other, int value, RatioChoice ratio)
{
    changed.pixels = value;
    changed.percent = std::max(1, static_cast<int>(int64_t{value} * 100 / changed.entry));
    if (ratio == RatioChoice::Free)
        return;
    other.percent = other.percentRange.Clamped(changed.percent);
    other.pixels = other.pixelRange.Clamped(int64_t{other.entry} * value / changed.entry);
}

void CSizeEntry::SetPercent(Side& changed, Side& other, int value, RatioChoice ratio)
{
    changed.percent = value;
    changed.pixels = changed.pixelRange.Clamped(int64_t{changed.entry} * value / 100);
    if (ratio == RatioChoice::Free)
        return;
    other.percent = other.percentRange.Clamped(value);
    other.pixels = other.pixelRange.Clamped(int64_t{other.entry} * value / 100);
}
