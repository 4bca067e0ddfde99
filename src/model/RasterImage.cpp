// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/RasterImage.h"

#include "model/PictureSnapshot.h"

#include <algorithm>
#include <atomic>
#include <cassert>
#include <cstring>

uint32_t CRasterImage::PixelAt(int x, int y) const
{
    if (x < 0 || y < 0 || x >= Width() || y >= Height())
        return 0;
    uint32_t pixel = 0;
    std::memcpy(&pixel, m_dib.Row(y) + static_cast<size_t>(x) * 4, sizeof pixel);
    return pixel;
}

void CRasterImage::NoteChange(int top, int bottom)
{
    m_contentId = NewContentId();
    m_isSettled = false;
    m_alphas.Forget(top, bottom);
}

void CRasterImage::AnnounceChange(const Rect& rect)
{
    NoteChange(rect.top, rect.bottom);
    if (!m_snapshots.empty() && !m_dib.IsEmpty())
        CPictureSnapshot::CopyTiles(m_snapshots, m_dib, rect);
}

void CRasterImage::BeginExchange()
{
    SetPainter(nullptr);
    NoteChange(0, Height());
}

uint64_t CRasterImage::NewContentId()
{
    static std::atomic<uint64_t> last = 0;
    return ++last;
}

const Ref<CPictureVersion>& CRasterImage::Version()
{
    if (!m_version)
        m_version = MakeShared<CPictureVersion>();
    return m_version;
}

Ref<CPictureVersion> CRasterImage::BeginVersion()
{
    Ref<CPictureVersion> old = Version();
    m_version = MakeShared<CPictureVersion>();
    m_isSettled = true;
    old->m_base = m_version;
    return old;
}

Ref<CPictureVersion> CRasterImage::Keep(CPackedDib old)
{
    Ref<CPictureVersion> version = BeginVersion();
    version->m_form = CPictureVersion::Form::Whole;
    version->m_text = old.WrittenText();
    version->m_picture = std::move(old);
    return version;
}

Ref<CPictureVersion> CRasterImage::Keep(CPixelChanges changes)
{
    Ref<CPictureVersion> version = BeginVersion();
    version->m_form = CPictureVersion::Form::Changed;
    // Who painted into the picture has painted over its text.
    version->m_text = m_dib.WrittenText();
    m_dib.SetWrittenText(nullptr);
    version->m_changes = std::move(changes);
    return version;
}

void CRasterImage::KeepForSnapshots(const CPixelChanges& changes)
{
    const auto reads = [this](const CPictureSnapshot* snapshot) { return snapshot->Reads(m_dib); };
    if (std::ranges::none_of(m_snapshots, reads))
        return;
    const auto width = static_cast<size_t>(Width());
    changes.ForEachRun([&](size_t first, size_t words) {
        const int top = Height() - 1 - static_cast<int>((first + words - 1) / width);
        const int bottom = Height() - static_cast<int>(first / width);
        const bool isInOneRow = bottom - top == 1;
        const int left = isInOneRow ? static_cast<int>(first % width) : 0;
        const int right = isInOneRow ? left + static_cast<int>(words) : Width();
        CPictureSnapshot::CopyTiles(m_snapshots, m_dib, {left, top, right, bottom});
    });
}

Ref<CPictureVersion> CRasterImage::Show(const Ref<CPictureVersion>& version,
                                        std::optional<CChangedTiles>* touched)
{
    using Form = CPictureVersion::Form;
    Ref<CPictureVersion> old = Version();
    std::vector<Ref<CPictureVersion>> way{version};
    while (way.back()->m_form == Form::Changed)
        way.push_back(way.back()->m_base);
    Ref<CPictureVersion> shown = way.back();
    way.pop_back();
    BeginExchange();
    CPackedDib& pixels = m_dib;
    CChangedTiles* tiles = nullptr;
    if (touched != nullptr && shown == old && BitCount() == 32)
        tiles = &touched->emplace(pixels.Size());
    old->m_text = pixels.WrittenText();
    if (shown != old) {
        assert(shown->m_form == Form::Whole);
        std::swap(pixels, shown->m_picture);
        old->m_picture = std::exchange(shown->m_picture, {});
        old->m_form = Form::Whole;
        old->m_base = shown;
        old->m_isTidy = shown->m_isTidy;
        shown->m_form = Form::Shown;
        shown->m_base = nullptr;
    }
    for (; !way.empty(); way.pop_back()) {
        // The changes take the pixels from one to the other, and belong to the other from then on.
        const Ref<CPictureVersion> next = way.back();
        KeepForSnapshots(next->m_changes);
        next->m_changes.Apply(pixels, tiles);
        shown->m_changes = std::exchange(next->m_changes, {});
        shown->m_form = Form::Changed;
        shown->m_isTidy = next->m_isTidy;
        shown->m_base = next;
        next->m_form = Form::Shown;
        next->m_base = nullptr;
        shown = next;
    }
    pixels.SetWrittenText(version->m_text);
    m_version = version;
    m_isSettled = true;
    return old;
}
