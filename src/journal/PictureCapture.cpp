// SPDX-License-Identifier: GPL-3.0-or-later
#include "journal/PictureCapture.h"

#include <algorithm>
#include <array>
#include <utility>

CPictureCapture::CPictureCapture(Ref<CRasterImage> image, Ref<CPictureVersion> base)
    : m_image(std::move(image)), m_base(std::move(base)), m_height(m_image->Height()),
      m_taken(static_cast<size_t>(m_height))
{
    if (!m_base || m_base->Kept() != CPictureVersion::Form::Changed)
        return;
    // What a stroke has changed is known, and little.
    const auto* words = reinterpret_cast<const uint32_t*>(m_image->Dib().Bits().data());
    const Sink early = [this](std::span<const uint8_t> bytes) {
        m_early.insert(m_early.end(), bytes.begin(), bytes.end());
    };
    m_base->Changes().ForEachRun(
        [&](size_t first, size_t count) { TakeRun(first, words + first, count, early); });
    m_taken.assign(m_taken.size(), true);
    m_base = nullptr;
}

void CPictureCapture::TakeRun(size_t first, const uint32_t* words, size_t count, const Sink& sink) const
{
    const std::array<uint32_t, 2> header{static_cast<uint32_t>(first), static_cast<uint32_t>(count)};
    sink({reinterpret_cast<const uint8_t*>(header.data()), sizeof header});
    sink({reinterpret_cast<const uint8_t*>(words), count * sizeof(uint32_t)});
}

const uint32_t* CPictureCapture::BaseRow(int y) const
{
    if (!m_base || m_base->Kept() != CPictureVersion::Form::Whole)
        return nullptr;
    return reinterpret_cast<const uint32_t*>(m_base->Picture().Row(y));
}

void CPictureCapture::TakeRow(int y, const Sink& sink)
{
    m_taken[static_cast<size_t>(y)] = true;
    const auto width = static_cast<size_t>(m_image->Width());
    const size_t first = static_cast<size_t>(m_height - 1 - y) * width;
    const auto* row = reinterpret_cast<const uint32_t*>(m_image->Dib().Row(y));
    const uint32_t* before = BaseRow(y);
    if (before == nullptr) {
        TakeRun(first, row, width, sink);
        return;
    }
    VisitDifferences(row, before, width, [&](size_t at, size_t count) {
        TakeRun(first + at, row + at, count, sink);
        return true;
    });
}

size_t CPictureCapture::BytesToTake(int top, int bottom) const
{
    const int first = std::max(top, m_next);
    const int last = std::min(bottom, m_height);
    const auto rows = first < last ? std::count(m_taken.begin() + first, m_taken.begin() + last, false) : 0;
    return static_cast<size_t>(rows) * static_cast<size_t>(m_image->Width()) * sizeof(uint32_t);
}

void CPictureCapture::TakeRows(int top, int bottom)
{
    const Sink early = [this](std::span<const uint8_t> bytes) {
        m_early.insert(m_early.end(), bytes.begin(), bytes.end());
    };
    for (int y = std::max(top, m_next); y < std::min(bottom, m_height); ++y) {
        if (!m_taken[static_cast<size_t>(y)])
            TakeRow(y, early);
    }
}

void CPictureCapture::Advance(const Sink& sink)
{
    if (!m_early.empty())
        sink(std::exchange(m_early, {}));
    while (!IsDone() && m_taken[static_cast<size_t>(m_next)])
        ++m_next;
    if (!IsDone())
        TakeRow(m_next++, sink);
}
