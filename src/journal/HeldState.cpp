// SPDX-License-Identifier: GPL-3.0-or-later
#include "journal/HeldState.h"

CHeldState::CHeldState(const CPixoluneDoc& document)
{
    for (const Ref<CPicObject>& object : document.Canvas().objects)
        Add(object);
    for (const auto& command : document.History().UndoList())
        command->VisitParts(*this);
    for (const auto& command : document.History().RedoList())
        command->VisitParts(*this);
}

void CHeldState::Add(const Ref<CPicObject>& object)
{
    if (!IsNew(object.Get()))
        return;
    objects.push_back(object);
    if (object->image)
        Add(object->image);
}

void CHeldState::Add(const Ref<CRasterImage>& image)
{
    if (IsNew(image.Get()))
        images.push_back(image);
}

void CHeldState::Add(const Ref<CSharedObj>& selection)
{
    if (IsNew(selection.Get()))
        selections.push_back(selection);
}

void CHeldState::Picture(const Ref<CRasterImage>& image, const Ref<CPictureVersion>& saved)
{
    using Form = CPictureVersion::Form;
    Add(image);
    std::vector<Ref<CPictureVersion>> way;
    for (Ref<CPictureVersion> version = saved; version->Kept() != Form::Shown && IsNew(version.Get());
         version = version->Base()) {
        way.push_back(version);
        if (version->Kept() == Form::Whole)
            break;
    }
    for (; !way.empty(); way.pop_back())
        versions.push_back({image, way.back()});
}

void CHeldState::List(const CObjectList& listed, const CObjectList& selection, OtherFlags /*others*/)
{
    for (const CObjectList* list : {&listed, &selection}) {
        for (const Ref<CPicObject>& object : *list)
            Add(object);
    }
}

void CHeldState::Attribute(const Ref<CPicObject>& object, ObjectAttribute /*which*/, int /*saved*/)
{
    Add(object);
}

void CHeldState::Name(const Ref<CPicObject>& object, const std::string& /*saved*/)
{
    Add(object);
}

void CHeldState::Selects(const Ref<CPicObject>& object)
{
    Add(object);
}

void CHeldState::Selection(const Ref<CSharedObj>& selection, const CRegion& /*saved*/)
{
    Add(selection);
}

void CHeldState::SelectionMove(const Ref<CSharedObj>& selection, Point /*distance*/)
{
    Add(selection);
}
