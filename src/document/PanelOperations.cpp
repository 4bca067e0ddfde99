// SPDX-License-Identifier: GPL-3.0-or-later
#include "document/PanelOperations.h"

#include "history/LockCommand.h"
#include "history/OpacityCommand.h"
#include "history/PropertiesCommand.h"
#include "history/VisibilityCommand.h"

namespace {

template <typename Command, auto Member, typename Value>
bool SetMember(CPixoluneDoc& document, const CObjectList& objects, Value value)
{
    auto command = std::make_unique<Command>();
    Rect touched;
    for (const Ref<CPicObject>& object : objects) {
        if ((*object).*Member == value)
            continue;
        command->Add(object);
        (*object).*Member = value;
        touched = touched.United(object->Rectangle());
    }
    if (command->IsEmpty())
        return false;
    document.Record(std::move(command));
    document.NotifyObjectsChanged();
    document.NotifyFrameChanged(touched);
    return true;
}

} // namespace

bool SetVisible(CPixoluneDoc& document, const CObjectList& objects, bool visible)
{
    return SetMember<CVisibilityCommand, &CPicObject::visible>(document, objects, visible);
}

bool SetLocked(CPixoluneDoc& document, const CObjectList& objects, bool locked)
{
    return SetMember<CLockCommand, &CPicObject::locked>(document, objects, locked);
}

bool SetTransparency(CPixoluneDoc& document, const CObjectList& objects, uint8_t transparency)
{
    return SetMember<COpacityCommand, &CPicObject::transparency>(document, objects, transparency);
}

bool RenameObject(CPixoluneDoc& document, const Ref<CPicObject>& object, const std::string& name)
{
    const std::string limited = LimitedName(name);
    if (!object->image || object->image->name == limited)
        return false;
    auto command = std::make_unique<CPropertiesCommand>(object, ObjectProperties::Of(*object));
    object->image->name = limited;
    document.Record(std::move(command));
    document.NotifyObjectsChanged();
    return true;
}

void SelectObjects(CPixoluneDoc& document, const CObjectList& objects)
{
    document.Canvas().DeselectAll();
    for (const Ref<CPicObject>& object : objects)
        object->SetSelected(true);
    document.NotifyObjectSelectionChanged();
}

std::string LimitedName(const std::string& name)
{
    size_t characters = 0;
    for (size_t at = 0; at < name.size(); ++at) {
        const bool continues = (static_cast<unsigned char>(name[at]) & 0xC0) == 0x80;
        if (!continues && ++characters > kMaxNameCharacters)
            return name.substr(0, at);
    }
    return name;
}
