// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/PixelChanges.h"
#include "platform/dib/PackedDib.h"
#include "platform/memory/SharedObj.h"

#include <cstddef>

class CRasterImage;

/// One state of a record's picture. Its content never changes, but the way it is kept does: the record shows
/// one version and owns its pixels; commands hold others, each as a whole picture or as what differs from its
/// base, another version of the same record. All bases lead to a version with pixels of its own.
class CPictureVersion final : public CSharedObj {
public:
    enum class Form {
        Shown, ///< the record has the pixels
        Whole,
        Changed, ///< the base's pixels but for the changes
    };

    CPictureVersion() = default;
    ~CPictureVersion() override;
    /// A version that its record has not shown in this run; the picture may be empty.
    [[nodiscard]] static Ref<CPictureVersion> Whole(CPackedDib picture);
    /// The same, kept as changes from another version of that record.
    [[nodiscard]] static Ref<CPictureVersion> Changed(CPixelChanges changes, Ref<CPictureVersion> base);

    [[nodiscard]] Form Kept() const { return m_form; }
    /// Bytes of pixels kept here.
    [[nodiscard]] size_t HeldBytes() const;
    /// What the changes count from; for a whole picture the version that took its place, if that is known.
    [[nodiscard]] const Ref<CPictureVersion>& Base() const { return m_base; }
    /// The picture of a whole version; empty for others.
    [[nodiscard]] const CPackedDib& Picture() const { return m_picture; }
    /// The changes of a changed version; empty for others.
    [[nodiscard]] CPixelChanges& Changes() { return m_changes; }
    [[nodiscard]] const CPixelChanges& Changes() const { return m_changes; }

    /// Whether nothing can be saved any more in the way it is kept.
    [[nodiscard]] bool IsTidy() const { return m_isTidy; }
    void SetTidy() { m_isTidy = true; }
    /// Keeps a whole version as changes from its base from now on. They must be those.
    void BecomeChanged(CPixelChanges changes);
    /// Takes the place of bases that nothing else needs. False when memory runs out or a snapshot reads such
    /// a base; it is as it was then.
    bool SkipUnusedBases();

private:
    friend class CRasterImage;

    Form m_form = Form::Shown;
    bool m_isTidy = false;
    CPackedDib m_picture;
    CPixelChanges m_changes;
    std::shared_ptr<const TextStyle> m_text; ///< what CPackedDib::WrittenText is while it is shown
    Ref<CPictureVersion> m_base;
};
