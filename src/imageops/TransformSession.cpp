// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageops/TransformSession.h"

#include <algorithm>

CTransformSession::CTransformSession(CPixoluneDoc& document, const TransformRow& transform)
    : m_document(document), m_transform(transform)
{
    for (const Ref<CPicObject>& object : document.Canvas().ActiveObjects()) {
        const CPackedDib& shown = object->image->Dib();
        if (!shown.IsEmpty())
            m_targets.push_back({object, {object->x, object->y}, shown.Size(), {}});
    }
}

CTransformSession::~CTransformSession()
{
    Cancel();
}

Rect CTransformSession::Covered() const
{
    Rect covered;
    for (const Target& target : m_targets)
        covered = covered.United(target.object->Rectangle());
    return covered;
}

void CTransformSession::Redraw(const Rect& before)
{
    m_document.NotifyObjectsChanged();
    m_document.NotifyFrameChanged(before.United(Covered()));
}

void CTransformSession::ShowResult(Target& target, TransformValues values) const
{
    CPicObject& object = *target.object;
    if (!m_previewShown)
        target.initial = object.image->Exchange({});
    else
        object.image->Attach({}); // leaves its memory to the next result
    object.image->Attach(m_transform.run(target.initial, values));
    const CPackedDib& result = object.image->Dib();
    if (m_transform.placement == TransformPlacement::KeepCorner || result.IsEmpty())
        return;
    object.x = AddClamped(target.position.x, -((result.Width() - target.size.width) / 2));
    object.y = AddClamped(target.position.y, -((result.Height() - target.size.height) / 2));
}

void CTransformSession::Preview(TransformValues values)
{
    if (m_transform.changesNothing(values)) {
        ShowInitial();
        return;
    }
    // Kernels are pure: the same values would give the same pictures again.
    if (m_targets.empty() || (m_previewShown && std::ranges::equal(values, m_shownValues)))
        return;
    const Rect before = Covered();
    for (Target& target : m_targets)
        ShowResult(target, values);
    m_previewShown = true;
    m_shownValues.assign(values.begin(), values.end());
    Redraw(before);
}

void CTransformSession::ShowInitial()
{
    if (!m_previewShown)
        return;
    const Rect before = Covered();
    for (Target& target : m_targets) {
        target.object->image->Attach(std::move(target.initial));
        target.object->x = target.position.x;
        target.object->y = target.position.y;
    }
    m_previewShown = false;
    Redraw(before);
}

void CTransformSession::Cancel()
{
    ShowInitial();
    m_targets.clear();
}

bool CTransformSession::Ok(TransformValues values)
{
    std::unique_ptr<CPictureCommand> command = m_transform.createCommand();
    Preview(values);
    if (!m_previewShown) {
        m_targets.clear();
        return false;
    }
    for (Target& target : m_targets) {
        command->AddPicture(target.object->image, std::move(target.initial));
        if (m_transform.placement == TransformPlacement::KeepCentre)
            command->AddPosition(target.object, target.position);
    }
    m_targets.clear();
    m_previewShown = false;
    m_document.Record(std::move(command));
    return true;
}
