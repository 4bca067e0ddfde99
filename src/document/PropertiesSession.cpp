// SPDX-License-Identifier: GPL-3.0-or-later
#include "document/PropertiesSession.h"

#include "document/PanelOperations.h"
#include "document/Refusal.h"
#include "platform/transform/Scale.h"

#include <algorithm>

Ref<CPicObject> CPropertiesSession::Target(const CPixoluneDoc& document)
{
    const CObjectList active = document.Canvas().ActiveObjects();
    if (active.Count() == 1)
        return active.Bottom();
    Refuse(document, active.IsEmpty() ? Str::NoneSelected : Str::SelectOnlyOne);
    return nullptr;
}

CPropertiesSession::CPropertiesSession(CPixoluneDoc& document, Ref<CPicObject> object)
    : m_document(document), m_object(std::move(object)), m_entry(ObjectProperties::Of(*m_object))
{
}

CPropertiesSession::~CPropertiesSession()
{
    Cancel();
}

Size CPropertiesSession::EntrySize() const
{
    const Size size = m_entryPicture.IsEmpty() ? m_object->Size() : m_entryPicture.Size();
    return {std::max(1, size.width), std::max(1, size.height)};
}

void CPropertiesSession::Changed(const Rect& before)
{
    m_document.NotifyObjectsChanged();
    m_document.NotifyFrameChanged(before.United(m_object->Rectangle()));
}

void CPropertiesSession::SetName(const std::string& name)
{
    if (m_object->image)
        m_object->image->name = LimitedName(name);
    Changed(m_object->Rectangle());
}

void CPropertiesSession::SetVisible(bool visible)
{
    m_object->visible = visible;
    Changed(m_object->Rectangle());
}

void CPropertiesSession::SetLocked(bool locked)
{
    m_object->locked = locked;
    m_document.NotifyObjectsChanged();
}

void CPropertiesSession::SetTransparency(uint8_t transparency)
{
    m_object->transparency = transparency;
    Changed(m_object->Rectangle());
}

void CPropertiesSession::SetPosition(Point position)
{
    const Rect before = m_object->Rectangle();
    m_object->x = position.x;
    m_object->y = position.y;
    Changed(before);
}

bool CPropertiesSession::SetSize(Size size)
{
    const Rect before = m_object->Rectangle();
    if (!m_open || !m_object->image || before == Rect::At(before.Corner(), size))
        return true;
    if (size == EntrySize()) {
        RestorePicture();
    } else {
        const CPackedDib& entry = m_entryPicture.IsEmpty() ? m_object->image->Dib() : m_entryPicture;
        CPackedDib scaled =
            entry.IsEmpty() ? CPackedDib() : Scale(entry, size.width, size.height, nullptr, 0);
        if (scaled.IsEmpty())
            return Refuse(m_document, Str::OutOfMemory);
        CPackedDib shown = m_object->image->Exchange(std::move(scaled));
        if (m_entryPicture.IsEmpty())
            m_entryPicture = std::move(shown);
    }
    Changed(before);
    return true;
}

void CPropertiesSession::RestorePicture()
{
    if (!m_entryPicture.IsEmpty())
        m_object->image->Attach(std::move(m_entryPicture));
    m_entryPicture = {};
}

void CPropertiesSession::Ok()
{
    m_open = false;
    auto command = std::make_unique<CPropertiesCommand>(m_object, m_entry);
    if (!m_entryPicture.IsEmpty())
        command->AddPicture(std::move(m_entryPicture));
    m_document.Record(std::move(command));
}

void CPropertiesSession::Cancel()
{
    if (!m_open)
        return;
    m_open = false;
    const Rect before = m_object->Rectangle();
    RestorePicture();
    m_entry.ApplyTo(*m_object);
    Changed(before);
}
