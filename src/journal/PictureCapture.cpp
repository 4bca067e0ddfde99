// SPDX-License-Identifier: GPL-3.0-or-later
#include "journal/PictureCapture.h"

#include <array>
#include <utility>

namespace {

/// More is not copied at once: whoever paints would notice.
constexpr size_t kMostEarlyBytes = size_t{2} << 20;

void TakeRun(size_t first, const uint32_t* words, size_t count, const CPictureCapture::Sink& sink)
{
    const std::array<uint32_t, 2> header{static_cast<uint32_t>(first), static_cast<uint32_t>(count)};
    sink({reinterpret_cast<const uint8_t*>(header.data()), sizeof header});
    sink({reinterpret_cast<const uint8_t*>(words), count * sizeof(uint32_t)});
}

} // namespace

CPictureCapture::CPictureCapture(const Ref<CRasterImage>& image, Ref<CPictureVersion> base, size_t mostAtOnce)
    : m_base(std::move(base)), m_width(image->Width()), m_height(image->Height())
{
    if (m_base && m_base->Kept() == CPictureVersion::Form::Changed)
        TakeChanges(*image);
    if (!IsDone())
        m_snapshot = std::make_unique<CPictureSnapshot>(image, mostAtOnce);
}

void CPictureCapture::TakeChanges(const CRasterImage& image)
{
    const auto* words = reinterpret_cast<const uint32_t*>(image.Dib().Bits().data());
    const CPixelChanges& changes = m_base->Changes();
    if (changes.HeldBytes() <= kMostEarlyBytes) {
        m_early.reserve(changes.HeldBytes());
        changes.ForEachRun([&](size_t first, size_t count) {
            TakeRun(first, words + first, count, [this](std::span<const uint8_t> bytes) {
                m_early.insert(m_early.end(), bytes.begin(), bytes.end());
            });
        });
        m_next = m_height;
    } else {
        m_differs.resize(static_cast<size_t>(m_height));
        const auto width = static_cast<size_t>(m_width);
        changes.ForEachRun([&](size_t first, size_t count) {
            for (size_t row = first / width; row <= (first + count - 1) / width; ++row)
                m_differs[m_differs.size() - 1 - row] = true;
        });
    }
    m_base = nullptr;
}

const uint32_t* CPictureCapture::BaseRow(int y) const
{
    if (!m_base || m_base->Kept() != CPictureVersion::Form::Whole)
        return nullptr;
    return reinterpret_cast<const uint32_t*>(m_base->Picture().Row(y));
}

void CPictureCapture::TakeRow(int y, const Sink& sink)
{
    const auto width = static_cast<size_t>(m_width);
    const size_t first = static_cast<size_t>(m_height - 1 - y) * width;
    const uint32_t* row = m_snapshot->Row(y);
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

bool CPictureCapture::Advance(const Sink& sink)
{
    if (!m_early.empty())
        sink(std::exchange(m_early, {}));
    while (!IsDone() && !m_differs.empty() && !m_differs[static_cast<size_t>(m_next)])
        ++m_next;
    if (IsDone())
        return true;
    if (!m_snapshot->IsIntact())
        return false;
    TakeRow(m_next++, sink);
    m_snapshot->ForgetAbove(m_next);
    return true;
}
