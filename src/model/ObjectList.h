// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/PicObject.h"

#include <cstddef>
#include <vector>

/// The stacking order, bottom object first. Holds a reference to each object.
class CObjectList {
public:
    using Iterator = std::vector<Ref<CPicObject>>::const_iterator;
    static constexpr size_t kNone = static_cast<size_t>(-1);

    [[nodiscard]] size_t Count() const { return m_objects.size(); }
    [[nodiscard]] bool IsEmpty() const { return m_objects.empty(); }
    [[nodiscard]] const Ref<CPicObject>& At(size_t index) const { return m_objects[index]; }
    [[nodiscard]] const Ref<CPicObject>& Bottom() const { return m_objects.front(); }
    [[nodiscard]] const Ref<CPicObject>& Top() const { return m_objects.back(); }
    [[nodiscard]] Iterator begin() const { return m_objects.begin(); }
    [[nodiscard]] Iterator end() const { return m_objects.end(); }

    void Append(Ref<CPicObject> object) { m_objects.push_back(std::move(object)); }
    /// Appends unless the list holds the object already.
    void AppendUnique(const Ref<CPicObject>& object);
    void Insert(size_t index, Ref<CPicObject> object);
    void InsertAll(size_t index, const CObjectList& objects);
    void RemoveAt(size_t index);
    void Swap(size_t a, size_t b) { std::swap(m_objects[a], m_objects[b]); }
    void Clear() { m_objects.clear(); }

    /// Removes every object for which the predicate holds.
    template <typename Predicate> void RemoveIf(Predicate predicate)
    {
        std::erase_if(m_objects, [&](const Ref<CPicObject>& object) { return predicate(*object); });
    }

    /// The object's place from the bottom, or kNone.
    [[nodiscard]] size_t Find(const CPicObject* object) const;
    /// The place of the object that shows the picture, or kNone.
    [[nodiscard]] size_t FindByImage(const CRasterImage* image) const;

private:
    std::vector<Ref<CPicObject>> m_objects;
};
