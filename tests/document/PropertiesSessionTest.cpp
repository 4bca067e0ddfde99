// SPDX-License-Identifier: GPL-3.0-or-later
#include "document/PropertiesSession.h"

#include "platform/transform/Scale.h"
#include "support/TestDocument.h"

namespace {

class CPropertiesSessionTest : public testing::Test, protected TestDocument {
protected:
    CPropertiesSessionTest()
        : m_initial(RandomDib(10, 6, 3)), m_object(Add(m_initial.Duplicate(), 2, 3, true))
    {
    }

    [[nodiscard]] std::string State() const
    {
        const CPicObject& object = *m_object;
        return object.image->name + " at " + std::to_string(object.x) + "," + std::to_string(object.y) +
               (object.visible ? " visible" : "") + (object.locked ? " locked " : " ") +
               std::to_string(object.transparency);
    }
    static void EditAll(CPropertiesSession& session)
    {
        session.SetName("window");
        session.SetPosition({-7, 40});
        session.SetVisible(false);
        session.SetLocked(true);
        session.SetTransparency(9);
        session.SetSize({5, 12});
    }
    [[nodiscard]] const CPackedDib& Shown() const { return m_object->image->Dib(); }

    CPackedDib m_initial;
    Ref<CPicObject> m_object;
};

constexpr const char* kEntry = "Obj - 1 at 2,3 visible 0";
constexpr const char* kEdited = "window at -7,40 locked 9";

} // namespace

TEST_F(CPropertiesSessionTest, OkIsOneEntryThatSwapsEverything)
{
    {
        CPropertiesSession session(doc, m_object);
        EditAll(session);
        session.Ok();
    }
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(State(), kEdited);
        EXPECT_TRUE(SameBytes(Shown(), Scale(m_initial, 5, 12)));
        EXPECT_EQ(doc.History().PeekUndo()->Name(), "Undo modify object's properties");
        EXPECT_TRUE(doc.Undo());
        EXPECT_EQ(State(), kEntry);
        EXPECT_TRUE(SameBytes(Shown(), m_initial));
        EXPECT_TRUE(doc.Redo());
    }
}

TEST_F(CPropertiesSessionTest, CancelPutsEverythingBackAndEndsTheSession)
{
    CPropertiesSession session(doc, m_object);
    EditAll(session);
    session.Cancel();
    session.SetSize({3, 3});
    EXPECT_EQ(State(), kEntry);
    EXPECT_TRUE(SameBytes(Shown(), m_initial));
    EXPECT_EQ(doc.History().PeekUndo(), nullptr);
    EXPECT_FALSE(doc.IsModified());
}

TEST_F(CPropertiesSessionTest, SizesComeFromTheEntryPicture)
{
    CPropertiesSession session(doc, m_object);
    session.SetSize({2, 2});
    session.SetSize({20, 7});
    EXPECT_TRUE(SameBytes(Shown(), Scale(m_initial, 20, 7)));
    EXPECT_EQ(session.EntrySize(), m_initial.Size());
    session.SetSize({10, 6});
    EXPECT_TRUE(SameBytes(Shown(), m_initial));
    session.Ok();
    EXPECT_TRUE(doc.Undo());
    EXPECT_TRUE(SameBytes(Shown(), m_initial));
}

TEST_F(CPropertiesSessionTest, WorksOnTheOnlySelectedVisibleObject)
{
    EXPECT_EQ(CPropertiesSession::Target(doc), m_object);
    Ref<CPicObject> second = Add(UniformDib(1, 1, 0xFF000000), 0, 0, true);
    EXPECT_EQ(CPropertiesSession::Target(doc), nullptr);
    second->visible = false;
    EXPECT_EQ(CPropertiesSession::Target(doc), m_object);
    m_object->SetSelected(false);
    EXPECT_EQ(CPropertiesSession::Target(doc), nullptr);
    EXPECT_EQ(ui.TakeMessages(), (std::vector<std::string>{"Please select only one visible object!",
                                                           "A object must be selected at least!"}));
}
