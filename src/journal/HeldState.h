// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/PixoluneDoc.h"

#include <set>
#include <vector>

/// All that a document and its history hold, each thing once.
class CHeldState final : private ICommandParts {
public:
    /// A version that its picture does not show.
    struct Version {
        Ref<CRasterImage> image;
        Ref<CPictureVersion> version;
    };

    explicit CHeldState(const CPixoluneDoc& document);

    std::vector<Ref<CPicObject>> objects;
    std::vector<Ref<CRasterImage>> images;
    std::vector<Version> versions; ///< bases before what is kept as changes from them
    std::vector<Ref<CSharedObj>> selections;

private:
    void Attribute(const Ref<CPicObject>& object, ObjectAttribute which, int saved) override;
    void Name(const Ref<CPicObject>& object, const std::string& saved) override;
    void Picture(const Ref<CRasterImage>& image, const Ref<CPictureVersion>& saved) override;
    void List(const CObjectList& objects, const CObjectList& selection, OtherFlags others) override;
    void Selects(const Ref<CPicObject>& object) override;
    void Selection(const Ref<CSharedObj>& selection, const CRegion& saved) override;
    void SelectionMove(const Ref<CSharedObj>& selection, Point distance) override;

    void Add(const Ref<CPicObject>& object);
    void Add(const Ref<CRasterImage>& image);
    void Add(const Ref<CSharedObj>& selection);
    [[nodiscard]] bool IsNew(const CSharedObj* thing) { return m_known.insert(thing).second; }

    std::set<const CSharedObj*> m_known;
};
