// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageops/ui/PropertiesDialog.h"

#include "platform/transform/Scale.h"
#include "platform/ui/ValueControl.h"
#include "support/TestDocument.h"
#include "ui/UiTest.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QSpinBox>

namespace {

class CPropertiesDialogTest : public testing::Test, protected TestDocument {
protected:
    /// The number that is read out under that name.
    static QSpinBox& Number(QWidget& dialog, const char* name)
    {
        for (auto* box : dialog.findChildren<QSpinBox*>()) {
            if (box->accessibleName() == QLatin1String(name))
                return *box;
        }
        ADD_FAILURE() << "no number " << name;
        std::abort();
    }
    static void Type(QSpinBox& box, const char* text)
    {
        box.selectAll();
        QTest::keyClicks(&box, QLatin1String(text));
    }

    CPackedDib m_initial = RandomDib(40, 20, 1);
    Ref<CPicObject> m_object = Add(m_initial.Duplicate(), 5000, 6, true);
};

} // namespace

TEST_F(CPropertiesDialogTest, EditsTakeEffectAtOnceAndSizesAreCoupled)
{
    CPropertiesDialog dialog(doc, m_object, nullptr);
    auto* name = dialog.findChild<QLineEdit*>();
    name->selectAll();
    QTest::keyClicks(name, QString(60, u'n'));
    EXPECT_EQ(m_object->image->name, std::string(48, 'n'));
    Type(Number(dialog, "Top:"), "-12");
    EXPECT_EQ(m_object->y, -12);
    EXPECT_EQ(m_object->x, 5000) << "outside the range of the edit, and not edited";
    Type(Number(dialog, "Transparency:"), "77");
    EXPECT_EQ(m_object->transparency, 77);

    QSpinBox& width = Number(dialog, "Width:");
    QSpinBox& height = Number(dialog, "Height:");
    Type(width, "30");
    EXPECT_EQ(height.value(), 15);
    EXPECT_TRUE(SameBytes(m_object->image->Dib(), m_initial)) << "still typing";
    QTest::keyPress(&width, Qt::Key_Up);
    QTest::keyRelease(&width, Qt::Key_Up);
    EXPECT_TRUE(SameBytes(m_object->image->Dib(), Scale(m_initial, 31, 15)));
    dialog.findChild<QComboBox*>()->setCurrentIndex(1);
    EXPECT_EQ(width.value(), 77);
    Type(height, "200");
    EXPECT_EQ(width.value(), 200);
    dialog.accept();
    EXPECT_TRUE(SameBytes(m_object->image->Dib(), Scale(m_initial, 80, 40)));
    EXPECT_TRUE(doc.Undo());
    EXPECT_TRUE(SameBytes(m_object->image->Dib(), m_initial));
    EXPECT_EQ(m_object->image->name, "Obj - 1");
}

TEST_F(CPropertiesDialogTest, LockGovernsThePlaceAndEscapeTakesAllBack)
{
    m_object->locked = true;
    CPropertiesDialog dialog(doc, m_object, nullptr);
    dialog.show();
    QSpinBox& left = Number(dialog, "Left:");
    EXPECT_FALSE(left.isEnabled());
    for (auto* box : dialog.findChildren<QCheckBox*>()) {
        if (box->text().remove(u'&') == QLatin1String("Lock"))
            box->click();
    }
    EXPECT_TRUE(left.isEnabled());
    EXPECT_FALSE(m_object->locked);
    Type(left, "9");
    Type(Number(dialog, "Width:"), "7");
    QTest::keyClick(&dialog, Qt::Key_Escape);
    QTest::qWait(500);
    EXPECT_EQ(m_object->Rectangle(), Rect::At({5000, 6}, {40, 20}));
    EXPECT_TRUE(m_object->locked);
    EXPECT_TRUE(SameBytes(m_object->image->Dib(), m_initial));
    EXPECT_EQ(doc.History().PeekUndo(), nullptr);
}
