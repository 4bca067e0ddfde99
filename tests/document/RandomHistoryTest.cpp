// SPDX-License-Identifier: GPL-3.0-or-later
#include "document/ObjectOperations.h"
#include "document/PanelOperations.h"
#include "document/PlacementOperations.h"
#include "document/StackingOperations.h"
#include "history/TransformCommand.h"
#include "support/TestDocument.h"

#include <random>

namespace {

/// Everything that undo must bring back. Selected flags are left out: some families set them and clear none.
struct State {
    struct Object {
        CPicObject* identity;
        Point position;
        bool visible, locked;
        uint8_t transparency;
        std::string name;
        std::vector<uint8_t> block;
        bool operator==(const Object&) const = default;
    };
    std::vector<Object> objects;
    Size canvas;
    bool operator==(const State&) const = default;

    static State Of(const CPixoluneDoc& doc)
    {
        State state;
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

class CRandomEditor {
public:
    CRandomEditor(TestDocument& test, uint32_t seed) : m_test(test), m_random(seed) {}

    /// One random operation; it may be refused.
    void Step()
    {
        CPixoluneDoc& doc = m_test.doc;
        switch (Below(12)) {
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
        default:
            ChangePixels();
        }
    }

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

    static void SetTransparentBorder(CPackedDib& dib)
    {
        for (int x = 0; x < dib.Width(); ++x)
            dib.Row(0)[x * 4 + 3] = 0;
    }

    TestDocument& m_test;
    std::mt19937 m_random;
};

TEST(RandomHistory, UndoAndRedoBringBackEveryByteOfEveryState)
{
    for (uint32_t seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE(seed);
        TestDocument test;
        test.settings.Set(Setting::UndoMaxTimes, 10000);
        test.doc.Canvas().width = test.doc.Canvas().height = 10;
        CRandomEditor editor(test, seed);
        std::vector<State> states{State::Of(test.doc)};
        for (int step = 0; step < 60; ++step) {
            editor.SelectSome();
            editor.Step();
            states.resize(test.doc.History().UndoList().size() + 1);
            states.back() = State::Of(test.doc);
        }
        // An operation may record several commands; their middle states were not seen.
        const auto matches = [&](size_t index) {
            return states[index].canvas == Size() || states[index] == State::Of(test.doc);
        };
        for (size_t index = states.size() - 1; test.doc.Undo();)
            ASSERT_TRUE(matches(--index)) << "undo to state " << index;
        EXPECT_TRUE(test.doc.Canvas().objects.IsEmpty());
        for (size_t index = 0; test.doc.Redo();)
            ASSERT_TRUE(matches(++index)) << "redo to state " << index;
    }
}

TEST(RandomHistory, AnyOrderOfUndoRedoAndNewActionsIsSafeAndLeaksNothing)
{
    for (uint32_t seed = 100; seed < 140; ++seed) {
        SCOPED_TRACE(seed);
        TestDocument test;
        test.settings.Set(Setting::UndoMaxTimes, 1 + static_cast<int>(seed % 9));
        test.doc.Canvas().width = test.doc.Canvas().height = 10;
        CRandomEditor editor(test, seed);
        for (int step = 0; step < 150; ++step) {
            editor.SelectSome();
            const int choice = editor.Below(4);
            if (choice == 0)
                test.doc.Undo();
            else if (choice == 1)
                test.doc.Redo();
            else
                editor.Step();
        }
        const CObjectCanvas last = test.doc.Canvas();
        test.doc.Adopt(CObjectCanvas());
        for (const Ref<CPicObject>& object : last.objects) {
            EXPECT_EQ(object->ReferenceCount(), 1) << "only this copy of the list holds it";
            EXPECT_EQ(object->image->ReferenceCount(), 1);
        }
    }
}

} // namespace
