// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/Help.h"

#include "app/HelpPages.h"
#include "app/ui/ChildFrame.h"
#include "app/ui/HelpBrowser.h"
#include "app/ui/HelpWindow.h"
#include "app/ui/KeyboardPage.h"
#include "app/ui/PreferencesDialog.h"
#include "app/ui/Shortcuts.h"
#include "canvas/ui/CanvasWidget.h"
#include "fileio/FormatTable.h"
#include "fileio/SaveAs.h"
#include "platform/ui/QtText.h"
#include "ui/UiTest.h"

#include <QAction>
#include <QDir>
#include <QImage>
#include <QLineEdit>
#include <QListView>
#include <QListWidget>
#include <QMenuBar>
#include <QRegularExpression>
#include <QTabWidget>

#include <set>

namespace {

bool Exists(std::string_view page)
{
    return !CHelpContents::Text(ToQString(page)).isEmpty();
}

/// The targets of links or pictures in a page.
std::set<QString> Targets(const QString& text, const char* pattern)
{
    std::set<QString> targets;
    for (auto found = QRegularExpression(QLatin1String(pattern)).globalMatch(text); found.hasNext();)
        targets.insert(found.next().captured(1));
    return targets;
}

CHelpWindow* ShownHelp()
{
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (auto* help = qobject_cast<CHelpWindow*>(window); help && help->isVisible())
            return help;
    }
    return nullptr;
}

} // namespace

TEST(Help, EveryCommandToolAndFormatHasItsPage)
{
    for (const CommandRow& row : CommandTable())
        EXPECT_TRUE(Exists(HelpPage(row.id))) << row.text << ": " << HelpPage(row.id);
    for (int mode = 0; mode < kToolModeCount; ++mode)
        EXPECT_TRUE(Exists(HelpPage(static_cast<ToolMode>(mode)))) << mode;
    for (const FormatRow& row : FormatTable()) {
        const std::string_view first = row.extensions.substr(0, row.extensions.find(' '));
        EXPECT_TRUE(Exists(FormatHelpPage(first))) << row.name;
    }
    auto id = static_cast<int>(CommandId::FileSaveAsJpg);
    for (const SaveFormatRow& row : SaveFormatTable())
        EXPECT_EQ(HelpPage(static_cast<CommandId>(id++)), FormatHelpPage(row.extension));
}

TEST(Help, HasNoDeadLinkNoLostPageAndNoMissingPicture)
{
    const QDir folder(QStringLiteral(":/help"));
    std::set<QString> listed;
    const CHelpContents contents;
    for (const CHelpContents::Page& page : contents.Pages()) {
        EXPECT_TRUE(listed.insert(page.name).second) << page.name.toStdString() << " is listed twice";
        EXPECT_FALSE(page.section.isEmpty());
    }
    std::set<QString> pictures;
    const CShortcuts shortcuts;
    for (const QString& file : folder.entryList({QStringLiteral("*.md")})) {
        const QString name = file.chopped(3);
        SCOPED_TRACE(name.toStdString());
        EXPECT_EQ(listed.contains(name), name != QLatin1String("index"));
        QString text = CHelpContents::Text(name);
        EXPECT_TRUE(text.startsWith(QLatin1String("# ")));
        if (name == QLatin1String("keyboard"))
            text += KeyTables(shortcuts);
        for (const QString& target : Targets(text, "[^!]\\[[^]]+\\]\\(([^)]+)\\)")) {
            EXPECT_TRUE(target.endsWith(QLatin1String(".md"))) << target.toStdString();
            EXPECT_TRUE(folder.exists(target)) << target.toStdString();
        }
        for (const QString& target : Targets(text, "!\\[[^]]*\\]\\(([^)]+)\\)")) {
            EXPECT_FALSE(QImage(folder.filePath(target)).isNull()) << target.toStdString();
            pictures.insert(target);
        }
    }
    qint64 bytes = 0;
    for (const QFileInfo& file : QDir(folder.filePath(QStringLiteral("pictures"))).entryInfoList()) {
        EXPECT_TRUE(pictures.contains(QStringLiteral("pictures/") + file.fileName()))
            << file.fileName().toStdString() << " is nowhere shown";
        bytes += file.size();
    }
    EXPECT_LT(bytes, 600 * 1024);
}

TEST_F(CWindowTest, HelpWindowGoesBackAndForwardAndSearches)
{
    const CShortcuts shortcuts;
    CHelpWindow help(shortcuts, m_configuration);
    help.ShowPage(QStringLiteral("blur"));
    help.ShowPage(QStringLiteral("keyboard"));
    auto* browser = help.findChild<CHelpBrowser*>();
    EXPECT_TRUE(browser->toPlainText().contains(QLatin1String("Ctrl+Shift+P")));
    EXPECT_TRUE(help.windowTitle().startsWith(QLatin1String("Keyboard and mouse - ")))
        << help.windowTitle().toStdString();
    browser->backward();
    EXPECT_EQ(help.CurrentPage(), QLatin1String("blur"));
    browser->forward();
    EXPECT_EQ(help.CurrentPage(), QLatin1String("keyboard"));
    help.ShowPage(QStringLiteral("no such page"));
    EXPECT_EQ(help.CurrentPage(), QLatin1String("index"));

    auto* words = help.findChild<QLineEdit*>();
    auto* found = help.findChild<QListWidget*>();
    words->setText(QStringLiteral("gaussian BLUR"));
    ASSERT_GT(found->count(), 1);
    EXPECT_EQ(found->item(0)->text(), QLatin1String("Gaussian Blur")) << "titles come first";
    QTest::keyClick(words, Qt::Key_Return);
    EXPECT_EQ(help.CurrentPage(), QLatin1String("gaussian-blur"));
    words->setText(QStringLiteral("xyzzy"));
    EXPECT_EQ(found->count(), 0);
}

TEST_F(CWindowTest, HelpOpensThePageOfWhatHasTheKeyboard)
{
    m_window.Show(*m_app.NewDocument());
    ShowWindow();
    m_window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&m_window));
    const auto pageHere = [&](QWidget* part) {
        m_window.activateWindow();
        part->setFocus();
        QTest::qWait(1);
        QTest::keyClick(part, Qt::Key_F1);
        return ShownHelp() ? ShownHelp()->CurrentPage().toStdString() : std::string("none");
    };
    m_window.Action(CommandId::ToolFloodFill)->trigger();
    EXPECT_EQ(pageHere(&m_window.ActiveFrame()->Canvas()), "tool-flood-fill");
    EXPECT_EQ(pageHere(m_window.findChild<QListView*>()), "objects-panel");

    const auto pageIn = [&](CommandId id, auto prepare) {
        std::string page;
        OnNextDialog<QDialog>([&](QDialog& dialog) {
            prepare(dialog);
            QTest::keyClick(dialog.focusWidget() ? dialog.focusWidget() : &dialog, Qt::Key_F1);
            page = ShownHelp() ? ShownHelp()->CurrentPage().toStdString() : std::string("none");
            dialog.reject();
        });
        m_window.Action(id)->trigger();
        return page;
    };
    const auto nothing = [](QDialog&) {};
    EXPECT_EQ(pageIn(CommandId::TransformGaussianBlur, nothing), "gaussian-blur");
    EXPECT_EQ(pageIn(CommandId::EditPreferences, nothing), "preferences");
    EXPECT_EQ(pageIn(CommandId::EditPreferences,
                     [](QDialog& dialog) {
                         dialog.findChild<QTabWidget*>()->setCurrentIndex(1);
                         dialog.findChild<CKeyboardPage*>()->findChild<QLineEdit*>()->setFocus();
                     }),
              "preferences-keyboard");
    EXPECT_EQ(pageIn(CommandId::HelpAbout, nothing), "about");

    QMenu* menu = m_window.menuBar()->actions().at(4)->menu();
    menu->popup(QPoint(10, 10));
    menu->setActiveAction(m_window.Action(CommandId::TransformSharpness));
    QTest::keyClick(menu, Qt::Key_F1);
    EXPECT_EQ(ShownHelp()->CurrentPage(), QLatin1String("sharpness"));
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}
