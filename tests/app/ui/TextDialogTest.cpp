// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/ChildFrame.h"
#include "canvas/ui/AddTextDialog.h"
#include "canvas/ui/CanvasWidget.h"
#include "canvas/ui/FillBannerDialog.h"
#include "platform/ui/QtText.h"
#include "ui/UiTest.h"

#include <QAccessible>
#include <QCheckBox>
#include <QFontComboBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QRadioButton>

namespace {

/// The controls that the keyboard reaches and that have no name for those who cannot see them.
std::string Unnamed(const QWidget& dialog)
{
    std::string unnamed;
    for (QWidget* widget : dialog.findChildren<QWidget*>()) {
        const bool isReached = widget->isVisibleTo(&dialog) && (widget->focusPolicy() & Qt::TabFocus) != 0;
        QAccessibleInterface* shown = QAccessible::queryAccessibleInterface(widget);
        if (isReached && !widget->focusProxy() && shown && shown->text(QAccessible::Name).isEmpty() &&
            !qobject_cast<QComboBox*>(widget->parentWidget()))
            unnamed += std::string(widget->metaObject()->className()) + ' ';
    }
    return unnamed;
}

class CTextDialogTest : public CWindowTest {
protected:
    CTextDialogTest()
    {
        m_frame = m_window.Show(*m_app.NewDocument());
        m_window.show();
        QTest::qWait(1);
    }
    CPixoluneDoc& Document() { return m_frame->Document(); }
    CPixoluneView& View() { return m_frame->View(); }
    [[nodiscard]] QImage Shown() { return m_frame->Canvas().viewport()->grab().toImage(); }
    static QPlainTextEdit& Edit(CAddTextDialog& dialog) { return *dialog.findChild<QPlainTextEdit*>(); }
    static QStringList Notes(CAddTextDialog& dialog)
    {
        QStringList texts;
        for (const auto* label : dialog.findChildren<QLabel*>())
            texts += label->text();
        return texts;
    }

    CChildFrame* m_frame;
};

} // namespace

TEST_F(CTextDialogTest, EveryControlHasAName)
{
    CAddTextDialog text(View(), Point{10, 10}, &m_window);
    text.show();
    EXPECT_EQ(Unnamed(text), "");
    CFillBannerDialog fill(m_app.Settings(), &m_window);
    fill.show();
    EXPECT_EQ(Unnamed(fill), "");
    fill.findChildren<QRadioButton*>().last()->click();
    EXPECT_EQ(Unnamed(fill), "");
}

TEST_F(CTextDialogTest, ThePreviewFollowsTheTypingAndOkKeepsIt)
{
    const QImage empty = Shown();
    CAddTextDialog dialog(View(), Point{10, 10}, &m_window);
    dialog.show();
    const struct {
        const char* name;
        const char* text;
        bool vertical;
    } cases[] = {
        {"latin", "Hill", false},
        {"upright", "Hill\nside", true},
        {"right to left", "\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D 12 \xD8\xB3\xD9\x84\xD8\xA7\xD9\x85", false},
        {"emoji", "\xF0\x9F\x98\x80 \xF0\x9F\x87\xA9\xF0\x9F\x87\xAA", false},
        {"right to left, upright", "\xD7\xA9\xD7\x9C", true},
        {"emoji, upright", "\xF0\x9F\x91\xA9\xE2\x80\x8D\xF0\x9F\x8E\xA8", true}};
    QImage last = empty;
    for (const auto& row : cases) {
        SCOPED_TRACE(row.name);
        dialog.findChild<QCheckBox*>()->setChecked(row.vertical);
        Edit(dialog).setPlainText(ToQString(row.text));
        QTest::qWait(1);
        const QImage shown = Shown();
        EXPECT_NE(shown, empty);
        EXPECT_NE(shown, last);
        last = shown;
    }
    Edit(dialog).clear();
    QTest::qWait(1);
    EXPECT_EQ(Shown(), empty);
    QTest::keyClicks(&Edit(dialog), QStringLiteral("Hi"));
    QTest::qWait(1);
    EXPECT_NE(Shown(), empty);
    dialog.accept();
    EXPECT_EQ(Document().History().UndoItem().text, "Undo add text");
    EXPECT_EQ(Document().Canvas().objects.Top()->image->Dib().WrittenText()->text, "Hi");
}

TEST_F(CTextDialogTest, AMissingFontAndATextTooLargeAreTold)
{
    CAddTextDialog dialog(View(), Point{10, 10}, &m_window);
    dialog.show();
    Edit(dialog).setPlainText(QStringLiteral("Hill"));
    QTest::qWait(1);
    EXPECT_FALSE(Notes(dialog).contains(ToQString(Str::FontIsMissing)));
    dialog.findChild<QFontComboBox*>()->setEditText(QStringLiteral("No Such Family"));
    QTest::qWait(1);
    EXPECT_TRUE(Notes(dialog).contains(ToQString(Str::FontIsMissing)));
    for (const bool vertical : {false, true}) {
        SCOPED_TRACE(vertical);
        dialog.findChild<QCheckBox*>()->setChecked(vertical);
        Edit(dialog).setPlainText(QString(100'000, QLatin1Char('x')));
        QTest::qWait(1);
        EXPECT_TRUE(
            QTest::qWaitFor([&] { return Notes(dialog).contains(ToQString(Str::TextIsTooLarge)); }, 5000));
        Edit(dialog).clear();
        QTest::qWait(1);
    }
    Edit(dialog).setPlainText(QString(100'000, QLatin1Char('x')));
    dialog.accept();
    EXPECT_TRUE(dialog.isVisible()) << "the text is not lost";
    dialog.reject();
    EXPECT_EQ(Document().History().PeekUndo(), nullptr);
}

TEST_F(CTextDialogTest, ADoubleClickOpensTheTextOfAnObjectAgain)
{
    TextStyle style;
    style.text = "WWW";
    style.size = 48;
    style.underline = true;
    ASSERT_TRUE(CTextSession(View(), Point{20, 20}).Ok(style));
    const Rect rect = Document().Canvas().objects.Top()->Rectangle();
    // On the line below the letters.
    const Point client = View().Geometry().ToClient(Point{(rect.left + rect.right) / 2, rect.bottom - 2});
    int opened = 0;
    OnNextDialog<CAddTextDialog>([&](CAddTextDialog& dialog) {
        ++opened;
        EXPECT_EQ(ToUtf8(Edit(dialog).toPlainText()), "WWW");
        Edit(dialog).setPlainText(QStringLiteral("M"));
        dialog.accept();
    });
    QTest::mouseDClick(m_frame->Canvas().viewport(), Qt::LeftButton, {}, QPoint(client.x, client.y));
    EXPECT_TRUE(QTest::qWaitFor([&] { return opened == 1; }, 2000));
    EXPECT_EQ(Document().History().UndoItem().text, "Undo edit text");
    const TextStyle& changed = *Document().Canvas().objects.Top()->image->Dib().WrittenText();
    EXPECT_EQ(changed.text, "M");
    EXPECT_EQ(changed.size, 48);
    EXPECT_TRUE(changed.underline);
}
