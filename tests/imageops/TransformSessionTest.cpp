// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageops/TransformSession.h"

#include "imageops/BoxBlur.h"
#include "imageops/ImmediateTransform.h"
#include "imageops/RotateDib.h"
#include "support/TestDocument.h"

#include <array>

namespace {

/// A selected visible, a selected hidden and an unselected object, each of other pixels and another size.
class CTransformSessionTest : public testing::Test, protected TestDocument {
protected:
    CTransformSessionTest()
    {
        for (int i = 0; i < 3; ++i) {
            m_initial.push_back(RandomDib(9 + i, 6, static_cast<uint32_t>(i)));
            m_objects.push_back(Add(m_initial.back().Duplicate(), 10 * i, -3, i < 2));
        }
        m_objects[1]->visible = false;
    }
    void ExpectInitial(size_t first)
    {
        for (size_t i = first; i < m_objects.size(); ++i) {
            SCOPED_TRACE(i);
            EXPECT_TRUE(SameBytes(m_objects[i]->image->Dib(), m_initial[i]));
            EXPECT_EQ(m_objects[i]->Rectangle(),
                      Rect::At({static_cast<int>(i) * 10, -3}, m_initial[i].Size()));
        }
    }
    /// One undo must bring back what was there before, a redo the result.
    void ExpectOneEntry(const char* name, const CPackedDib& result, Point position)
    {
        ASSERT_NE(doc.History().PeekUndo(), nullptr);
        EXPECT_EQ(doc.History().PeekUndo()->Name(), name);
        for (int round = 0; round < 2; ++round) {
            EXPECT_TRUE(SameBytes(m_objects[0]->image->Dib(), result));
            EXPECT_EQ((Point{m_objects[0]->x, m_objects[0]->y}), position);
            ExpectInitial(1);
            EXPECT_TRUE(doc.Undo());
            ExpectInitial(0);
            EXPECT_FALSE(doc.Undo()) << "one entry only";
            EXPECT_TRUE(doc.Redo());
        }
    }

    std::vector<CPackedDib> m_initial;
    std::vector<Ref<CPicObject>> m_objects;
};

} // namespace

TEST_F(CTransformSessionTest, PreviewsComeFromTheInitialPicturesAndOkRecordsThose)
{
    CTransformSession session(doc, FindTransform(TransformKind::Blur));
    for (const int size : {5, 3, 3, 5}) {
        session.Preview(std::array{size});
        EXPECT_TRUE(SameBytes(m_objects[0]->image->Dib(), BoxBlur(m_initial[0], size)));
        ExpectInitial(1);
    }
    EXPECT_TRUE(session.Ok(std::array{3}));
    ExpectOneEntry("Undo Blur", BoxBlur(m_initial[0], 3), {0, -3});
    EXPECT_TRUE(doc.IsModified());
}

TEST_F(CTransformSessionTest, CancelAndValuesThatChangeNothingLeaveNoTrace)
{
    {
        CTransformSession session(doc, FindTransform(TransformKind::Emboss));
        session.Preview(std::array{128, 3, 90});
        EXPECT_FALSE(SameBytes(m_objects[0]->image->Dib(), m_initial[0]));
        session.ShowInitial();
        ExpectInitial(0);
        session.Preview(std::array{128, 3, 90});
    }
    ExpectInitial(0);

    constexpr std::array kNone{0, 0, 0};
    constexpr std::array kTwo{2};
    constexpr std::array kTurn{360};
    const struct {
        const TransformRow& row;
        TransformValues values;
    } cases[] = {{FindTransform(TransformKind::Blur), kTwo},
                 {FindTransform(TransformKind::GaussianBlur), kTwo},
                 {FindTransform(TransformKind::Sharpness), TransformValues(kNone).first(1)},
                 {FindTransform(TransformKind::BrightnessContrast), TransformValues(kNone).first(2)},
                 {FindTransform(TransformKind::RedGreenBlue), kNone},
                 {FindTransform(TransformKind::HueSaturationLightness), kNone},
                 {RotateTransform(), TransformValues(kNone).first(1)},
                 {RotateTransform(), kTurn}};
    for (const auto& row : cases) {
        SCOPED_TRACE(Text(row.row.title));
        CTransformSession session(doc, row.row);
        std::vector<int> other(row.values.begin(), row.values.end());
        other[0] += 7;
        session.Preview(other);
        EXPECT_FALSE(session.Ok(row.values));
        ExpectInitial(0);
        EXPECT_EQ(doc.History().PeekUndo(), nullptr);
    }
    EXPECT_FALSE(doc.IsModified());
}

TEST_F(CTransformSessionTest, OneChangedValueOfSeveralIsAChange)
{
    for (const TransformKind kind : {TransformKind::BrightnessContrast, TransformKind::RedGreenBlue,
                                     TransformKind::HueSaturationLightness}) {
        const TransformRow& row = FindTransform(kind);
        for (size_t changed = 0; changed < row.parameters.size(); ++changed) {
            std::vector<int> values(row.parameters.size());
            values[changed] = -60;
            EXPECT_TRUE(CTransformSession(doc, row).Ok(values));
            EXPECT_FALSE(SameBytes(m_objects[0]->image->Dib(), m_initial[0]));
            EXPECT_TRUE(doc.Undo());
            ExpectInitial(0);
        }
    }
}

TEST_F(CTransformSessionTest, RotationKeepsTheCentre)
{
    CTransformSession session(doc, RotateTransform());
    session.Preview(std::array{45});
    session.Preview(std::array{90});
    EXPECT_TRUE(session.Ok(std::array{90}));
    const CPackedDib turned = RotateDib(m_initial[0], 90, 0);
    ASSERT_EQ(turned.Size(), (Size{6, 9}));
    ExpectOneEntry("Undo rotate", turned, {1, -4});
}

TEST_F(CTransformSessionTest, ImmediateTransformsNeedATarget)
{
    EXPECT_TRUE(RunImmediateTransform(doc, TransformKind::MirrorVertically));
    EXPECT_EQ(doc.History().PeekUndo()->Name(), "Undo Mirror vertically");
    EXPECT_TRUE(doc.Undo());
    m_objects[0]->SetSelected(false);
    EXPECT_FALSE(RunImmediateTransform(doc, TransformKind::Gray));
    m_objects[0]->visible = m_objects[2]->visible = false;
    EXPECT_FALSE(RunImmediateTransform(doc, TransformKind::Gray));
    EXPECT_EQ(ui.TakeMessages(), (std::vector<std::string>{"A object must be selected at least!",
                                                           "A object must be present at least!"}));
    ExpectInitial(0);
}

TEST_F(CTransformSessionTest, AResultThatCannotBeHeldEmptiesTheObjectAndIsUndone)
{
    {
        const CAllocationFailure failure(0);
        EXPECT_TRUE(RunImmediateTransform(doc, TransformKind::Negative));
    }
    EXPECT_TRUE(m_objects[0]->image->Dib().IsEmpty());
    // What shows nothing still shows nothing.
    CTransformSession(doc, RotateTransform()).Ok(std::array{45});
    EXPECT_TRUE(m_objects[0]->image->Dib().IsEmpty());
    while (doc.Undo()) {
    }
    ExpectInitial(0);
}
