// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/AlphaTiles.h"
#include "model/PictureVersion.h"
#include "platform/dib/PackedDib.h"
#include "platform/memory/SharedObj.h"

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

class CPictureSnapshot;

/// Paints into a picture over many steps.
class IPicturePainter {
public:
    virtual ~IPicturePainter() = default;
    /// Something else is about to change the picture: puts back what has been painted, and paints no more.
    virtual void PutBack() = 0;
};

/// A reference-counted picture with its name and selected flag. Several commands and the document may hold
/// the same record; the pixels change hands by Exchange.
class CRasterImage final : public CSharedObj {
public:
    CRasterImage() = default;
    CRasterImage(CPackedDib dib, std::string objectName) : name(std::move(objectName))
    {
        Attach(std::move(dib));
    }

    [[nodiscard]] int Width() const { return m_dib.IsEmpty() ? 0 : m_dib.Width(); }
    [[nodiscard]] int Height() const { return m_dib.IsEmpty() ? 0 : m_dib.Height(); }
    [[nodiscard]] int BitCount() const { return m_dib.IsEmpty() ? 0 : m_dib.BitCount(); }
    [[nodiscard]] const CPackedDib& Dib() const { return m_dib; }
    /// For tools that paint into the picture as it stands. They keep the picture as it was afterwards, or put
    /// it back.
    [[nodiscard]] CPackedDib& MutableDib()
    {
        SetPainter(nullptr);
        AnnounceChange({0, 0, Width(), Height()});
        return m_dib;
    }
    /// Who paints into the picture from now on; whoever did so until now puts everything back.
    void SetPainter(IPicturePainter* painter)
    {
        if (IPicturePainter* before = std::exchange(m_painter, painter))
            before->PutBack();
    }
    /// The painter is done.
    void EndPainting() { m_painter = nullptr; }
    /// Says that the pixels of a rectangle of the picture are about to change through AnnouncedDib; said anew
    /// for every change.
    void AnnounceChange(const Rect& rect);
    [[nodiscard]] CPackedDib& AnnouncedDib() { return m_dib; }
    /// Another number after every change of the pixels; no two pictures ever have the same.
    [[nodiscard]] uint64_t ContentId() const { return m_contentId; }

    /// Where the picture, which must not be empty, is clear or opaque. Of one that is being painted into only
    /// between two changes.
    [[nodiscard]] const CAlphaTiles& Alphas() const
    {
        m_alphas.Resize(m_dib.Size());
        return m_alphas;
    }
    /// Finds out more about that until a point in time; false when everything is known.
    bool FindAlphas(std::chrono::steady_clock::time_point until)
    {
        return !m_dib.IsEmpty() && m_alphas.FindMore(ViewOf(std::as_const(m_dib)), until);
    }

    /// Takes over a picture, which may be empty, and frees the one held until now.
    void Attach(CPackedDib dib)
    {
        BeginExchange();
        m_dib = std::move(dib);
    }
    /// Takes over a picture and hands out the one held until now.
    [[nodiscard]] CPackedDib Exchange(CPackedDib dib)
    {
        BeginExchange();
        std::swap(m_dib, dib);
        return dib;
    }

    // Versions: pictures that can be shown again
    /// The version shown. While a tool or a dialog is at work the pixels may be others.
    [[nodiscard]] const Ref<CPictureVersion>& Version();
    /// Whether the pixels are certainly those of the version shown.
    [[nodiscard]] bool IsSettled() const { return m_isSettled; }
    /// Makes what is shown a new version; `old` has been shown until now, and the version that stands for it
    /// from now on is returned.
    [[nodiscard]] Ref<CPictureVersion> Keep(CPackedDib old);
    /// The same with the changes between what is shown and what has been shown until now.
    [[nodiscard]] Ref<CPictureVersion> Keep(CPixelChanges changes);
    /// Shows another version and returns the one shown until now. A whole picture changes hands, which takes
    /// no time; otherwise the cost is that of the changes. touched: gets where the two differ; none when all
    /// of the picture may.
    [[nodiscard]] Ref<CPictureVersion> Show(const Ref<CPictureVersion>& version,
                                            std::optional<CChangedTiles>* touched = nullptr);

    /// The 32-bit value (alpha in the high byte) of pixel (x, y), y from the top; 0 outside the picture.
    [[nodiscard]] uint32_t PixelAt(int x, int y) const;

    std::string name;
    bool selected = false;

private:
    friend class CPictureSnapshot;
    void AddSnapshot(CPictureSnapshot* snapshot) { m_snapshots.push_back(snapshot); }
    void RemoveSnapshot(CPictureSnapshot* snapshot) { std::erase(m_snapshots, snapshot); }

    [[nodiscard]] static uint64_t NewContentId();
    [[nodiscard]] Ref<CPictureVersion> BeginVersion();
    /// The record is about to have another picture. Snapshots keep the one that it has now.
    void BeginExchange();
    /// Notes that the picture will be another one between two rows.
    void NoteChange(int top, int bottom);
    /// The changes are about to be applied to the pixels.
    void KeepForSnapshots(const CPixelChanges& changes);

    CPackedDib m_dib;
    uint64_t m_contentId = NewContentId();
    Ref<CPictureVersion> m_version;
    std::vector<CPictureSnapshot*> m_snapshots; ///< that still read this picture
    IPicturePainter* m_painter = nullptr;
    bool m_isSettled = false;
    mutable CAlphaTiles m_alphas;
};
