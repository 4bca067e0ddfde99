// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/PictureVersion.h"

#include <cassert>
#include <utility>

CPictureVersion::~CPictureVersion()
{
    // One after another: a long row of bases would not fit on the stack.
    while (m_base && m_base->ReferenceCount() == 1) {
        Ref<CPictureVersion> next = std::move(m_base->m_base);
        m_base = std::move(next);
    }
}

Ref<CPictureVersion> CPictureVersion::Whole(CPackedDib picture)
{
    Ref<CPictureVersion> version = MakeShared<CPictureVersion>();
    version->m_form = Form::Whole;
    version->m_picture = std::move(picture);
    return version;
}

Ref<CPictureVersion> CPictureVersion::Changed(CPixelChanges changes, Ref<CPictureVersion> base)
{
    Ref<CPictureVersion> version = MakeShared<CPictureVersion>();
    version->m_form = Form::Changed;
    version->m_changes = std::move(changes);
    version->m_base = std::move(base);
    return version;
}

size_t CPictureVersion::HeldBytes() const
{
    return m_picture.Block().size() + m_changes.HeldBytes();
}

void CPictureVersion::BecomeChanged(CPixelChanges changes)
{
    assert(m_form == Form::Whole && m_base);
    m_form = Form::Changed;
    m_picture = {};
    m_changes = std::move(changes);
    m_isTidy = false;
}

bool CPictureVersion::SkipUnusedBases()
{
    while (m_form == Form::Changed && m_base->ReferenceCount() == 1 && m_base->m_form != Form::Shown) {
        const Ref<CPictureVersion> unused = m_base;
        if (unused->m_form == Form::Whole) {
            // Somebody still reads it as it is; another time.
            if (unused->m_picture.IsShared())
                return false;
            m_picture = std::move(unused->m_picture);
            m_changes.Apply(m_picture);
            m_changes = {};
            m_form = Form::Whole;
        } else {
            std::optional<CPixelChanges> joined = CPixelChanges::Joined(m_changes, unused->m_changes);
            if (!joined)
                return false;
            m_changes = std::move(*joined);
        }
        m_base = unused->m_base;
        m_isTidy = false;
    }
    // A whole picture would only keep its successor alive.
    if (m_form == Form::Whole && m_base && m_base->ReferenceCount() == 1)
        m_base = nullptr;
    return true;
}
