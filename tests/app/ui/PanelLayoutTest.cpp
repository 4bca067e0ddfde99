// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/EdgeStrip.h"
#include "app/ui/ObjectsPanel.h"
#include "app/ui/PanelDock.h"
#include "app/ui/SlideOut.h"
#include "ui/UiTest.h"

#include <QAction>
#include <QToolBar>

namespace {

CPanelDock& Dock(const CMainFrame& window, const char* name)
{
    return *window.findChild<CPanelDock*>(QLatin1String(name));
}

QToolButton* ButtonNamed(const QWidget& parent, const char* name)
{
    for (auto* button : parent.findChildren<QToolButton*>()) {
        if (button->accessibleName() == QLatin1String(name))
            return button;
    }
    return nullptr;
}

/// A shown window whose panels have been made.
class CPanelLayoutTest : public CWindowTest {
protected:
    CPanelLayoutTest() { Open(m_window); }

    static void Open(CMainFrame& window)
    {
        window.resize(1000, 700);
        ShowWithPanels(window);
        QTest::qWait(20);
    }
};

} // namespace

TEST_F(CPanelLayoutTest, UnpinnedPanelSlidesOutOfItsLabelAndBack)
{
    m_window.Show(*m_app.NewDocument());
    CPanelDock& dock = Dock(m_window, "ObjectsPanel");
    auto* panel = m_window.findChild<CObjectsPanel*>();
    ASSERT_TRUE(dock.isAncestorOf(panel));
    ButtonNamed(dock, "Hide at the edge of the window")->click();
    auto* label = m_window.findChild<CEdgeLabel*>();
    ASSERT_NE(label, nullptr);
    EXPECT_TRUE(dock.isHidden());
    EXPECT_FALSE(panel->isVisible());
    EXPECT_TRUE(m_window.Action(CommandId::ViewObjectsPanel)->isChecked());

    auto* slideOut = m_window.findChild<CSlideOut*>();
    label->setFocus(Qt::TabFocusReason);
    QTest::qWait(1);
    if (!slideOut->isVisible()) // a window system without focus
        Q_EMIT label->Approached();
    EXPECT_TRUE(slideOut->isAncestorOf(panel));
    EXPECT_TRUE(panel->isVisible());
    label->click();
    QTest::keyClick(slideOut, Qt::Key_Escape);
    EXPECT_FALSE(slideOut->isVisible());
    EXPECT_TRUE(dock.isAncestorOf(panel));

    label->click();
    ButtonNamed(*slideOut, "Keep beside the picture")->click();
    QTest::qWait(1);
    EXPECT_TRUE(panel->isVisible());
    EXPECT_TRUE(dock.isVisible());
    EXPECT_EQ(m_window.findChild<CEdgeLabel*>(), nullptr);
}

TEST_F(CPanelLayoutTest, LayoutIsKeptAndReset)
{
    m_window.Action(CommandId::ViewToolBar)->trigger();
    Dock(m_window, "OptionsPanel").setFloating(true);
    Q_EMIT Dock(m_window, "ObjectsPanel").PinRequested(false);
    m_window.close();

    CMainFrame again(m_app, m_configuration);
    Open(again);
    auto* bar = again.findChild<QToolBar*>(QStringLiteral("MainBar"));
    EXPECT_TRUE(bar->isHidden());
    EXPECT_TRUE(Dock(again, "OptionsPanel").isFloating());
    EXPECT_NE(again.findChild<CEdgeLabel*>(), nullptr);

    again.tabifyDockWidget(&Dock(again, "ObjectsPanel"), &Dock(again, "OptionsPanel"));
    again.Action(CommandId::ViewResetLayout)->trigger();
    QTest::qWait(20);
    EXPECT_TRUE(bar->isVisible());
    EXPECT_EQ(again.findChild<CEdgeLabel*>(), nullptr);
    for (const char* name : {"OptionsPanel", "ObjectsPanel"}) {
        const CPanelDock& dock = Dock(again, name);
        EXPECT_TRUE(dock.isVisible() && !dock.isFloating()) << name;
        EXPECT_EQ(dock.width(), 310) << name;
        EXPECT_TRUE(again.tabifiedDockWidgets(const_cast<CPanelDock*>(&dock)).isEmpty()) << name;
    }
    EXPECT_LT(Dock(again, "OptionsPanel").y(), Dock(again, "ObjectsPanel").y());
}

TEST_F(CPanelLayoutTest, HiddenPanelsComeBackWhereTheyWere)
{
    QAction* show = m_window.Action(CommandId::ViewOptionsPanel);
    show->trigger();
    QTest::qWait(1);
    EXPECT_FALSE(show->isChecked());
    EXPECT_TRUE(Dock(m_window, "OptionsPanel").isHidden());
    show->trigger();
    QTest::qWait(1);
    EXPECT_TRUE(show->isChecked());
    EXPECT_TRUE(Dock(m_window, "OptionsPanel").isVisible());
}

TEST_F(CPanelLayoutTest, EscapeLeavesFullScreen)
{
    m_window.Action(CommandId::ViewFullScreen)->trigger();
    EXPECT_TRUE(m_window.isFullScreen());
    QTest::keyClick(&m_window, Qt::Key_Escape);
    EXPECT_FALSE(m_window.isFullScreen());
}
