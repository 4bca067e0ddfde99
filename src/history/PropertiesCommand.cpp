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
