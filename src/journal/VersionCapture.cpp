// SPDX-License-Identifier: GPL-3.0-or-later
#include "journal/VersionCapture.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr size_t kPieceBytes = size_t{1} << 15;

} // namespace

CVersionCapture::CVersionCapture(Ref<CPictureVersion> version)
    : m_version(std::move(version)), m_form(m_version->Kept())
{
}

bool CVersionCapture::Advance(const Sink& sink)
{
    if (m_version->Kept() != m_form)
        return false;
    return m_form == CPictureVersion::Form::Whole ? AdvanceWhole(sink) : AdvanceChanged(sink);
}

bool CVersionCapture::AdvanceWhole(const Sink& sink)
{
    const CPackedDib& picture = m_version->Picture();
    const std::span<const uint8_t> bits = picture.IsEmpty() ? std::span<const uint8_t>() : picture.Bits();
    if (m_taken == 0 && !bits.empty()) {
        const std::array<uint32_t, 2> run{0, static_cast<uint32_t>(bits.size() / sizeof(uint32_t))};
        sink({reinterpret_cast<const uint8_t*>(run.data()), sizeof run});
    }
    const size_t count = std::min(kPieceBytes, bits.size() - m_taken);
    sink(bits.subspan(m_taken, count));
    m_taken += count;
    m_isDone = m_taken == bits.size();
    return true;
}

bool CVersionCapture::AdvanceChanged(const Sink& sink)
{
    if (!m_changes)
        m_changes.emplace(std::as_const(*m_version).Changes());
    if (m_changes->IsPacked() != m_version->Changes().IsPacked())
        return false;
    std::array<uint8_t, kPieceBytes> buffer;
    const std::span<uint8_t> piece = std::span(buffer).first(std::min(buffer.size(), m_changes->Left()));
    if (!m_changes->Read(piece))
        return false;
    sink(piece);
    m_isDone = m_changes->Left() == 0;
    return true;
}
