// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/OptionsPanel.h"

#include "app/ui/ChildFrame.h"
#include "canvas/ui/CanvasWidget.h"
#include "canvas/ui/PickColorPage.h"
#include "canvas/ui/ToolPage.h"
#include "imageops/ui/ResizeDialog.h"
#include "platform/ui/ColorButton.h"
#include "ui/UiTest.h"

#include <QCheckBox>
#include <QLabel>
#include <QSpinBox>
#include <QToolButton>

TEST(ResizeDialog, FourValuesFollowEachOtherAndOnlyOkKeepsTheChoice)
{
    CSettings settings;
    CResizeDialog dialog(settings, {200, 100}, nullptr);
    const auto edits = dialog.findChildren<QSpinBox*>();
    QSpinBox* pixelWidth = edits[0];
    QSpinBox* pixelHeight = edits[1];
    QSpinBox* percentWidth = edits[2];
    EXPECT_TRUE(pixelWidth->isEnabled());
    EXPECT_FALSE(percentWidth->isEnabled());

    pixelWidth->setValue(300);
    EXPECT_EQ(percentWidth->value(), 150);
    EXPECT_EQ(pixelHeight->value(), 150);
    dialog.findChild<QCheckBox*>()->click();
    pixelHeight->setValue(40);
    EXPECT_EQ(dialog.NewSize(), (Size{300, 40}));
    dialog.reject();
    EXPECT_TRUE(settings.IsOn(Setting::KeepAspectWhenResizing));
    dialog.accept();
    EXPECT_FALSE(settings.IsOn(Setting::KeepAspectWhenResizing));
}

TEST(ToolPage, StoresEveryEditAtOnceAndShowsEverySetting)
{
    for (int mode = 0; mode < kToolModeCount; ++mode) {
        SCOPED_TRACE(mode);
        CSettings settings;
        const auto rows = ToolPageRows(static_cast<ToolMode>(mode));
        CToolPage page(settings, rows);
        const auto numbers = page.findChildren<QSpinBox*>();
        const auto flags = page.findChildren<QCheckBox*>();
        const auto modes = page.findChildren<QToolButton*>();
        qsizetype number = 0;
        qsizetype flag = 0;
        for (const ToolPageRow& row : rows) {
            if (row.kind == ToolPageRow::Kind::Number) {
                numbers[number]->setValue(row.maximum + 1);
                EXPECT_EQ(settings.Get(row.setting), row.maximum);
                settings.Set(row.setting, row.minimum);
                page.Refresh();
                EXPECT_EQ(numbers[number++]->value(), row.minimum);
            } else if (row.kind == ToolPageRow::Kind::Flag) {
                const bool before = settings.IsOn(row.setting);
                flags[flag++]->click();
                EXPECT_NE(settings.IsOn(row.setting), before);
            } else {
                modes.last()->click();
                EXPECT_EQ(settings.Get(row.setting), row.maximum);
            }
        }
        EXPECT_EQ(number + flag, numbers.size() + flags.size()) << "no control without a row";
    }
}

TEST_F(CWindowTest, OptionsPanelShowsThePageOfTheToolInUse)
{
    m_window.Show(*m_app.NewDocument());
    ShowWindow();
    auto* panel = m_window.findChild<COptionsPanel*>();
    ASSERT_NE(panel, nullptr);
    const auto shown = [panel] {
        const auto pages = panel->findChildren<CToolPage*>();
        return std::count_if(pages.begin(), pages.end(),
                             [](const CToolPage* page) { return page->isVisible(); });
    };
    EXPECT_EQ(shown(), 0) << "the default tool has the layout page";
    m_window.Action(CommandId::ToolPencil)->trigger();
    QTest::qWait(1);
    EXPECT_EQ(shown(), 1);
    EXPECT_TRUE(m_window.Action(CommandId::ToolPencil)->isChecked());
}

TEST_F(CWindowTest, PickedColoursArriveInThePanel)
{
    m_app.Settings().Set(Setting::InitColor, 0x332211);
    CChildFrame* frame = m_window.Show(*m_app.NewDocument());
    ShowWindow();
    m_window.Action(CommandId::ToolPickColor)->trigger();
    QTest::qWait(1);
    auto* panel = m_window.findChild<COptionsPanel*>();
    auto* page = panel->findChild<CPickColorPage*>();
    ASSERT_NE(page, nullptr);
    const auto shown = [page] {
        QStringList texts;
        for (const QLabel* field : page->findChildren<QLabel*>()) {
            if (!field->accessibleName().isEmpty())
                texts += field->text();
        }
        return texts.join(u' ').toStdString();
    };
    EXPECT_EQ(shown(), "   255");
    QWidget* port = frame->Canvas().viewport();
    QTest::mouseMove(port, port->rect().center());
    EXPECT_EQ(shown(), "17 34 51 0");
    QTest::mouseClick(port, Qt::LeftButton, {}, port->rect().center());
    const auto colors = panel->findChildren<CColorButton*>();
    EXPECT_EQ(colors[0]->Color(), 0x332211);
    EXPECT_EQ(colors[1]->Color(), 0xFFFFFF);
    for (const char* name : {"Swap the two colors", "Black and white"}) {
        for (auto* button : panel->findChildren<QToolButton*>()) {
            if (button->toolTip() == QLatin1String(name))
                button->click();
        }
        const bool swapped = *name == 'S';
        EXPECT_EQ(colors[0]->Color(), swapped ? 0xFFFFFF : 0);
        EXPECT_EQ(m_app.Settings().Get(Setting::PaintBackgndColor), swapped ? 0x332211 : 0xFFFFFF);
    }
}
