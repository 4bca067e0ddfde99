// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/ObjectList.h"

#include <algorithm>

void CObjectList::AppendUnique(const Ref<CPicObject>& object)
{
    if (Find(object.Get()) == kNone)
        Append(object);
}

void CObjectList::Insert(size_t index, Ref<CPicObject> object)
{
    m_objects.insert(m_objects.begin() + static_cast<ptrdiff_t>(index), std::move(object));
}

void CObjectList::InsertAll(size_t index, const CObjectList& objects)
{
    m_objects.insert(m_objects.begin() + static_cast<ptrdiff_t>(index), objects.begin(), objects.end());
}

void CObjectList::RemoveAt(size_t index)
{
    m_objects.erase(m_objects.begin() + static_cast<ptrdiff_t>(index));
}

size_t CObjectList::Find(const CPicObject* object) const
{
    const auto found = std::find(begin(), end(), object);
    return found == end() ? kNone : static_cast<size_t>(found - begin());
}

size_t CObjectList::FindByImage(const CRasterImage* image) const
{
    const auto found =
        std::find_if(begin(), end(), [&](const Ref<CPicObject>& object) { return object->image == image; });
    return found == end() ? kNone : static_cast<size_t>(found - begin());
}
