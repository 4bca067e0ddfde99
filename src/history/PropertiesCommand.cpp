// SPDX-License-Identifier: GPL-3.0-or-later
#include "history/PropertiesCommand.h"

ObjectProperties ObjectProperties::Of(const CPicObject& object)
{
    return {object.x,
            object.y,
            object.locked,
            object.visible,
            object.transparency,
            object.image ? object.image->name : std::string()};
}

void ObjectProperties::ApplyTo(CPicObject& object) const
{
    object.x = x;
    object.y = y;
    object.locked = locked;
    object.visible = visible;
    object.transparency = transparency;
    if (object.image)
        object.image->name = name;
}

void CPropertiesCommand::Exchange()
{
    const Rect before = m_object->Rectangle();
    ObjectProperties current = ObjectProperties::Of(*m_object);
    m_saved.ApplyTo(*m_object);
    m_saved = std::move(current);
    if (m_picture)
        m_picture->Exchange();
    Document()->NotifyObjectsChanged();
    Document()->NotifyFrameChanged(before.United(m_object->Rectangle()));
}

void CPropertiesCommand::VisitParts(ICommandParts& parts) const
{
    parts.Attribute(m_object, ObjectAttribute::X, m_saved.x);
    parts.Attribute(m_object, ObjectAttribute::Y, m_saved.y);
    parts.Attribute(m_object, ObjectAttribute::Locked, m_saved.locked);
    parts.Attribute(m_object, ObjectAttribute::Visible, m_saved.visible);
    parts.Attribute(m_object, ObjectAttribute::Transparency, m_saved.transparency);
    parts.Name(m_object, m_saved.name);
    if (m_picture)
        parts.Picture(m_picture->Image(), m_picture->Version());
}
