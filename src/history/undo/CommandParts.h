// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/geometry/Geometry.h"
#include "platform/memory/SharedObj.h"

#include <cstdint>
#include <string>

class CObjectList;
class CPicObject;
class CPictureVersion;
class CRasterImage;
class CRegion;

/// Members of an object that commands hold as numbers.
enum class ObjectAttribute : uint8_t { X, Y, Locked, Visible, Transparency };

/// What happens to the selected flag of objects that are not in a stored selection.
enum class OtherFlags : uint8_t { Keep, Clear };

/// Is told what a command holds, part by part, in the order in which undo and redo swap the parts with the
/// document's. Whoever writes a history down needs no more, whatever the family.
class ICommandParts {
public:
    virtual ~ICommandParts() = default;
    virtual void Attribute(const Ref<CPicObject>& /*object*/, ObjectAttribute /*which*/, int /*saved*/) {}
    virtual void Name(const Ref<CPicObject>& /*object*/, const std::string& /*saved*/) {}
    virtual void Picture(const Ref<CRasterImage>& /*image*/, const Ref<CPictureVersion>& /*saved*/) {}
    virtual void List(const CObjectList& /*objects*/, const CObjectList& /*selection*/, OtherFlags /*others*/)
    {
    }
    virtual void CanvasSize(Size /*saved*/) {}
    /// The object becomes selected each time.
    virtual void Selects(const Ref<CPicObject>& /*object*/) {}
    /// selection: identifies a view's selection.
    virtual void Selection(const Ref<CSharedObj>& /*selection*/, const CRegion& /*saved*/) {}
    /// The selection moves by minus the distance, back and forth. The command keeps its name.
    virtual void SelectionMove(const Ref<CSharedObj>& /*selection*/, Point /*distance*/) {}
};
