// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageops/ui/TransformDlg.h"

#include "imageops/BoxBlur.h"
#include "imageops/EmbossDib.h"
#include "imageops/RotateDib.h"
#include "platform/ui/ValueControl.h"
#include "support/TestDocument.h"
#include "ui/UiTest.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>

namespace {

/// A document with one selected picture, which a dialog works on.
class CTransformDlgTest : public testing::Test, protected TestDocument {
protected:
    CTransformDlgTest() : m_initial(RandomDib(12, 8, 5)), m_object(Add(m_initial.Duplicate(), 3, 4, true)) {}

    /// Runs the dialog as a command does and `act` meanwhile.
    void Run(const TransformRow& transform, const std::function<void(CTransformDlg&)>& act)
    {
        CTransformDlg dialog(doc, transform, nullptr);
        OnNextDialog<CTransformDlg>(act);
        dialog.exec();
    }
    [[nodiscard]] testing::AssertionResult Shows(const CPackedDib& picture) const
    {
        return SameBytes(m_object->image->Dib(), picture);
    }

    CPackedDib m_initial;
    Ref<CPicObject> m_object;
};

void Press(QWidget& dialog, QDialogButtonBox::StandardButton button)
{
    QTest::mouseClick(dialog.findChild<QDialogButtonBox*>()->button(button), Qt::LeftButton);
}

void Type(QSpinBox& box, const char* text)
{
    QApplication::setActiveWindow(box.window());
    box.setFocus();
    box.selectAll();
    QTest::keyClicks(&box, QLatin1String(text));
}

QAbstractButton* ButtonOf(QWidget& dialog, const char* text)
{
    for (auto* button : dialog.findChildren<QAbstractButton*>()) {
        if (button->text().remove(QLatin1Char('&')) == QLatin1String(text))
            return button;
    }
    return nullptr;
}

} // namespace

TEST(CValueControl, ShowsOneValueAndReportsTheEndOfEachChangeOnce)
{
    CValueControl control({-20, 300, 10}, 7);
    control.show();
    auto* slider = control.findChild<QSlider*>();
    auto* spin = control.findChild<QSpinBox*>();
    std::vector<int> committed;
    QObject::connect(&control, &CValueControl::ValueCommitted,
                     [&](int value) { committed.push_back(value); });
    const auto expect = [&](int value, std::vector<int> commits) {
        EXPECT_EQ(slider->value(), value);
        EXPECT_EQ(spin->value(), value);
        EXPECT_EQ(control.Value(), value);
        EXPECT_EQ(std::exchange(committed, {}), commits);
    };
    expect(7, {});
    slider->setSliderDown(true);
    const QPoint middle = slider->rect().center();
    QTest::mousePress(slider, Qt::LeftButton, {}, middle);
    slider->setSliderPosition(100);
    slider->setSliderPosition(120);
    expect(120, {});
    slider->setSliderDown(false);
    expect(120, {120});
    QTest::mouseRelease(slider, Qt::LeftButton, {}, middle);

    Type(*spin, "45");
    expect(45, {});
    QTest::keyClick(spin, Qt::Key_Return);
    expect(45, {45});
    Type(*spin, "-3");
    QTest::qWait(600);
    expect(-3, {-3});
    QTest::keyPress(spin, Qt::Key_Up);
    QTest::keyPress(spin, Qt::Key_Up);
    expect(-1, {});
    QTest::keyRelease(spin, Qt::Key_Up);
    expect(-1, {-1});
    control.SetValue(999);
    expect(300, {});
}

TEST_F(CTransformDlgTest, PreviewFollowsTheControlsAndTheCheckBox)
{
    Run(FindTransform(TransformKind::GaussianBlur), [this](CTransformDlg& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QLatin1String("Gaussian Blur"));
        Press(dialog, QDialogButtonBox::Cancel);
    });
    Run(FindTransform(TransformKind::Blur), [this](CTransformDlg& dialog) {
        auto* spin = dialog.findChild<QSpinBox*>();
        EXPECT_TRUE(Shows(m_initial)) << "nothing has been changed yet";
        QTest::keyClick(spin, Qt::Key_PageUp);
        EXPECT_TRUE(Shows(BoxBlur(m_initial, 11)));
        ButtonOf(dialog, "Preview")->click();
        EXPECT_TRUE(Shows(m_initial));
        QTest::keyClick(spin, Qt::Key_PageDown);
        EXPECT_TRUE(Shows(m_initial));
        QTest::keyClick(spin, Qt::Key_PageUp);
        QTest::keyClick(spin, Qt::Key_Down);
        ButtonOf(dialog, "Preview")->click();
        EXPECT_TRUE(Shows(BoxBlur(m_initial, 10)));
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    EXPECT_TRUE(Shows(m_initial));
    EXPECT_EQ(doc.History().PeekUndo(), nullptr);
}

TEST_F(CTransformDlgTest, OkTakesWhatTheControlsShow)
{
    Run(FindTransform(TransformKind::Blur), [](CTransformDlg& dialog) {
        Type(*dialog.findChild<QSpinBox*>(), "7");
        QTest::keyClick(dialog.findChild<QSpinBox*>(), Qt::Key_Return);
    });
    EXPECT_TRUE(Shows(BoxBlur(m_initial, 7)));
    ASSERT_NE(doc.History().PeekUndo(), nullptr);
    EXPECT_EQ(doc.History().PeekUndo()->Name(), "Undo Blur");
    EXPECT_TRUE(doc.Undo());
    EXPECT_TRUE(Shows(m_initial));

    Run(FindTransform(TransformKind::Blur),
        [](CTransformDlg& dialog) { Press(dialog, QDialogButtonBox::Ok); });
    EXPECT_EQ(doc.History().PeekUndo(), nullptr) << "a blur of 1 is none";
}

TEST_F(CTransformDlgTest, DirectionsSetTheAngle)
{
    Run(FindTransform(TransformKind::Emboss), [this](CTransformDlg& dialog) {
        QSpinBox* angle = dialog.findChildren<QSpinBox*>().back();
        EXPECT_FALSE(angle->isEnabled());
        ButtonOf(dialog, "Left")->click();
        EXPECT_TRUE(Shows(EmbossDib(m_initial, 128, 1, 180)));
        ButtonOf(dialog, "Custom angle")->click();
        EXPECT_TRUE(angle->isEnabled());
        EXPECT_EQ(angle->value(), 180);
        Type(*angle, "33");
        QTest::keyClick(angle, Qt::Key_Tab);
        EXPECT_TRUE(Shows(EmbossDib(m_initial, 128, 1, 33)));
        Press(dialog, QDialogButtonBox::Ok);
    });
    EXPECT_TRUE(Shows(EmbossDib(m_initial, 128, 1, 33)));
    EXPECT_EQ(doc.History().PeekUndo()->Name(), "Undo Emboss");
}

TEST_F(CTransformDlgTest, TurnIsShownAtOnceAndTakenBack)
{
    CTransformDlg dialog(doc, RotateTransform(), nullptr);
    dialog.Choose({});
    EXPECT_TRUE(Shows(m_initial));
    dialog.Choose(270);
    EXPECT_TRUE(ButtonOf(dialog, "Left 90 degrees")->property("checked").toBool());
    EXPECT_TRUE(Shows(RotateDib(m_initial, 270, 0)));
    EXPECT_EQ(m_object->Rectangle(), Rect::At({5, 2}, {8, 12}));
    dialog.reject();
    EXPECT_TRUE(Shows(m_initial));
    EXPECT_EQ(m_object->Rectangle(), Rect::At({3, 4}, {12, 8}));
}

TEST_F(CWindowTest, FilterDialogsOpenInTheCornerAndAskForAnObjectFirst)
{
    m_window.resize(900, 700);
    m_window.show();
    CPixoluneDoc* document = m_app.NewDocument();
    m_window.Show(*document);
    document->Canvas().DeselectAll();
    m_window.Action(CommandId::TransformSunspot)->trigger();
    EXPECT_EQ(m_ui.messages, std::vector<std::string>{"A object must be selected at least!"});

    document->Canvas().objects.Bottom()->SetSelected(true);
    bool seen = false;
    OnNextDialog<CTransformDlg>([&](CTransformDlg& dialog) {
        seen = true;
        EXPECT_EQ(dialog.frameGeometry().bottomRight(), m_window.frameGeometry().bottomRight());
        Press(dialog, QDialogButtonBox::Ok);
    });
    m_window.Action(CommandId::TransformSunspot)->trigger();
    EXPECT_TRUE(seen);
    EXPECT_EQ(document->History().PeekUndo()->Name(), "Undo Sunspot");
}
