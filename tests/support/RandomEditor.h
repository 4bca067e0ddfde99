// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "document/ObjectOperations.h"
#include "document/PanelOperations.h"
#include "document/PlacementOperations.h"
#include "document/StackingOperations.h"
#include "history/HistoryTidier.h"
#include "history/PixelEditCommand.h"
#include "history/TransformCommand.h"
#include "support/TestDocument.h"

#include <random>

/// Everything that undo must bring back. Selected flags are left out: some families set them and clear none.
struct DocumentState {
    struct Object {
        const CPicObject* identity;
        Point position;
        bool visible, locked;
        uint8_t transparency;
        std::string name;
        std::vector<uint8_t> block;
        bool operator==(const Object&) const = default;
    };
    std::vector<Object> objects;
    Size canvas;
    bool operator==(const DocumentState&) const = default;

    static DocumentState Of(const CPixoluneDoc& doc)
    {
        DocumentState state;
        state.canvas = doc.Canvas().Size();
        for (const Ref<CPicObject>& object : doc.Canvas().objects) {
            const auto block = object->image->Dib().Block();
            state.objects.push_back({object.Get(),
                                     {object->x, object->y},
                                     object->visible,
                                     object->locked,
                                     object->transparency,
                                     object->image->name,
                                     {block.begin(), block.end()}});
        }
        return state;
    }
};

/// Does what the same seed always does.
class CRandomEditor {
public:
    CRandomEditor(TestDocument& test, uint32_t seed) : m_test(test), m_random(seed) {}

    /// One random operation; it may be refused.
    void Step()
    {
        CPixoluneDoc& doc = m_test.doc;
        switch (Below(15)) {
        case 0:
            NewObject(doc);
            return;
        case 1:
            DuplicateObjects(doc);
            return;
        case 2:
            if (Below(3) == 0)
                DeleteObjects(doc);
            return;
        case 3:
            CombineObjects(doc);
            return;
        case 4:
            MakeFrame(doc);
            return;
        case 5:
            Restack(doc, static_cast<StackingKind>(Below(4)));
            return;
        case 6:
            TrimObjects(doc);
            return;
        case 7:
            ResizeCanvas(doc, {1 + Below(12), 1 + Below(12)});
            return;
        case 8:
            NudgeObjects(doc, Below(9) - 4, Below(9) - 4);
            return;
        case 9:
            AlignObjects(doc, static_cast<PlacementKind>(1 + Below(7)));
            return;
        case 10:
            ChangeInPanel();
            return;
        case 11:
        case 12:
        case 13:
            PaintInPlace();
            return;
        default:
            ChangePixels();
        }
    }

    /// As the program does while nobody works with it, sometimes only begun.
    void Tidy()
    {
        for (int pieces = Below(6); pieces > 0; --pieces)
            m_tidier.Work(m_test.doc, std::chrono::microseconds(0));
    }

    /// Lets go of the document.
    void ForgetTidying() { m_tidier.Forget(); }

    void SelectSome()
    {
        for (const Ref<CPicObject>& object : m_test.doc.Canvas().objects)
            object->SetSelected(Below(2) == 0);
    }
    int Below(int limit) { return static_cast<int>(m_random() % static_cast<uint32_t>(limit)); }

private:
    void ChangeInPanel()
    {
        CPixoluneDoc& doc = m_test.doc;
        const CObjectList some = doc.Canvas().FlaggedObjects();
        SetVisible(doc, some, Below(3) != 0);
        SetLocked(doc, some, Below(4) == 0);
        SetTransparency(doc, some, static_cast<uint8_t>(Below(256)));
        if (!some.IsEmpty())
            RenameObject(doc, some.Top(), std::to_string(Below(1000)));
    }

    void ChangePixels()
    {
        auto command = std::make_unique<CTransformCommand>(TransformKind::Blur);
        for (const Ref<CPicObject>& object : m_test.doc.Canvas().ActiveObjects()) {
            CPackedDib changed = RandomDib(1 + Below(8), 1 + Below(8), static_cast<uint32_t>(m_random()));
            SetTransparentBorder(changed);
            command->AddPicture(object->image, object->image->Exchange(std::move(changed)));
        }
        if (!command->IsEmpty())
            m_test.doc.Record(std::move(command));
    }

    /// Some pixels of the selected objects, each kept as whole pictures or as changes.
    void PaintInPlace()
    {
        auto command = std::make_unique<CPixelEditCommand>(PixelEditKind::PaintLine);
        for (const Ref<CPicObject>& object : m_test.doc.Canvas().ActiveObjects()) {
            CPackedDib old = object->image->Dib().Duplicate();
            CPackedDib& dib = object->image->AnnouncedDib();
            for (int dots = Below(4); dots > 0 && dib.Width() * dib.Height() > 0; --dots) {
                const int y = Below(dib.Height());
                const int byte = Below(dib.Width() * 4);
                object->image->AnnounceChange({byte / 4, y, byte / 4 + 1, y + 1});
                dib.Row(y)[byte] = static_cast<uint8_t>(Below(256));
            }
            if (Below(2) == 0)
                command->AddPicture(object->image, std::move(old));
            else
                command->AddPicture(object->image, ChangesBetween(dib, old));
        }
        if (!command->IsEmpty())
            m_test.doc.Record(std::move(command));
    }

    static void SetTransparentBorder(CPackedDib& dib)
    {
        for (int x = 0; x < dib.Width(); ++x)
            dib.Row(0)[x * 4 + 3] = 0;
    }

    TestDocument& m_test;
    std::mt19937 m_random;
    CHistoryTidier m_tidier;
};
