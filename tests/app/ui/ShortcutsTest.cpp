// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/CommandNames.h"
#include "app/ui/ChildFrame.h"
#include "app/ui/CommandSearch.h"
#include "app/ui/KeyboardPage.h"
#include "app/ui/OptionsPanel.h"
#include "canvas/ui/CanvasWidget.h"
#include "ui/UiTest.h"

#include <QKeySequenceEdit>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QSpinBox>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

#include <set>

namespace {

using enum CommandId;

/// The page's row of a command, made the current one.
QTreeWidgetItem* Choose(CKeyboardPage& page, CommandId id)
{
    auto* tree = page.findChild<QTreeWidget*>();
    for (QTreeWidgetItemIterator item(tree); *item; ++item) {
        const QVariant command = (*item)->data(0, Qt::UserRole);
        if (command.isValid() && command.toInt() == static_cast<int>(id)) {
            tree->setCurrentItem(*item);
            return *item;
        }
    }
    return nullptr;
}

QPushButton* Button(CKeyboardPage& page, const char* text)
{
    for (auto* button : page.findChildren<QPushButton*>()) {
        if (button->text() == QLatin1String(text))
            return button;
    }
    return nullptr;
}

CShortcuts::Keys Keys(const char* text)
{
    return QKeySequence::listFromString(QLatin1String(text));
}

} // namespace

TEST(Shortcuts, ACommandTakesItsKeysFromAllOthers)
{
    CShortcuts shortcuts;
    const auto all = [&] {
        std::multiset<QString> keys;
        for (const CommandRow& row : CommandTable()) {
            for (const QKeySequence& key : shortcuts.Of(row.id))
                keys.insert(key.toString());
        }
        return keys;
    };
    const auto before = all();
    shortcuts.Set(EditRedo, Keys("Ctrl+Y; Ctrl+D"));
    EXPECT_EQ(shortcuts.Owner(Keys("Ctrl+D").first()), EditRedo);
    EXPECT_TRUE(shortcuts.Of(ObjectDuplicate).isEmpty());
    shortcuts.Set(EditUndo, Keys("Ctrl+Y"));
    EXPECT_EQ(shortcuts.Of(EditRedo), Keys("Ctrl+D"));
    EXPECT_EQ(shortcuts.Of(EditUndo), Keys("Ctrl+Y"));
    const auto keys = all();
    for (const QString& key : keys)
        EXPECT_EQ(keys.count(key), 1U) << key.toStdString();
    shortcuts.Reset(EditRedo);
    EXPECT_EQ(shortcuts.Of(EditRedo), Keys("Ctrl+Y; Ctrl+Shift+Z"));
    EXPECT_TRUE(shortcuts.Of(EditUndo).isEmpty());
    shortcuts.ResetAll();
    EXPECT_EQ(all(), before);
}

TEST(Shortcuts, OnlyWhatDiffersIsStored)
{
    const CTemporaryFolder folder;
    const QString path = QString::fromStdString((folder.Path() / "settings.ini").string());
    {
        QSettings configuration(path, QSettings::IniFormat);
        CShortcuts shortcuts;
        shortcuts.Set(ToolPencil, Keys("Ctrl+;; F2"));
        shortcuts.Set(FileNew, {});
        shortcuts.Set(FileOpen, Keys("Ctrl+O"));
        shortcuts.Write(configuration);
        EXPECT_EQ(configuration.allKeys().size(), 2);
        configuration.setValue(QStringLiteral("Shortcuts/Edit-Undo"), QStringLiteral("Esc; F9"));
    }
    QSettings configuration(path, QSettings::IniFormat);
    const CShortcuts read(configuration);
    EXPECT_EQ(read.Of(ToolPencil), Keys("Ctrl+;; F2"));
    EXPECT_TRUE(read.Of(FileNew).isEmpty());
    EXPECT_EQ(read.Of(ToolErase), Keys("E"));
    EXPECT_EQ(read.Of(EditUndo), Keys("F9")) << "Esc belongs to the canvas";
    std::set<std::string> names;
    for (const CommandRow& row : CommandTable())
        EXPECT_TRUE(names.insert(CommandKey(row)).second) << CommandKey(row);
}

TEST(KeyboardPage, TakesAKeyOfAnotherCommandOnlyWhenToldTo)
{
    CKeyboardPage page{CShortcuts()};
    QTreeWidgetItem* row = Choose(page, ObjectTrim);
    ASSERT_NE(row, nullptr);
    auto* edit = page.findChild<QKeySequenceEdit*>();
    edit->setKeySequence(Keys("Ctrl+D").first());
    EXPECT_EQ(page.Shortcuts().Owner(Keys("Ctrl+D").first()), ObjectDuplicate);
    EXPECT_EQ(row->text(1), QLatin1String("Ctrl+T"));
    ASSERT_TRUE(Button(page, "&Take It Over")->isEnabled());
    Button(page, "&Take It Over")->click();
    EXPECT_EQ(row->text(1), QLatin1String("Ctrl+D"));
    EXPECT_EQ(Choose(page, ObjectDuplicate)->text(1), QString());

    edit->setKeySequence(QKeySequence(Qt::Key_Space));
    EXPECT_TRUE(page.Shortcuts().Of(ObjectDuplicate).isEmpty());
    EXPECT_FALSE(Button(page, "&Take It Over")->isEnabled());
    edit->setKeySequence(QKeySequence(Qt::Key_F2, Qt::Key_F3));
    EXPECT_EQ(page.Shortcuts().Of(ObjectDuplicate), Keys("F2")) << "one key, no sequence";

    Choose(page, ObjectTrim);
    Button(page, "&Reset")->click();
    EXPECT_EQ(row->text(1), QLatin1String("Ctrl+T"));
    Button(page, "Reset &All")->click();
    EXPECT_EQ(page.Shortcuts().Of(ObjectDuplicate), Keys("Ctrl+D"));

    page.findChild<QLineEdit*>()->setText(QStringLiteral("blur gauss"));
    int shown = 0;
    for (QTreeWidgetItemIterator item(page.findChild<QTreeWidget*>()); *item; ++item)
        shown += !(*item)->isHidden() && (*item)->data(0, Qt::UserRole).isValid();
    EXPECT_EQ(shown, 1);
}

TEST(CommandSearch, FindsPartsOfNamesInAnyOrderBestFirst)
{
    const struct {
        const char* words;
        CommandId first;
    } kCases[] = {
        {"gauss", TransformGaussianBlur},   {"BLUR gau", TransformGaussianBlur}, {"blur", TransformBlur},
        {"jpg save", FileSaveAsJpg},        {"sele inv", EditInvertSelection},   {"align top", AlignTop},
        {"rotate 90 right", RotateRight90}, {"gsblr", TransformGaussianBlur},
    };
    for (const auto& row : kCases) {
        SCOPED_TRACE(row.words);
        const auto found = SearchCommands(row.words);
        ASSERT_FALSE(found.empty());
        EXPECT_EQ(found.front()->id, row.first) << found.front()->text;
    }
    EXPECT_TRUE(SearchCommands("blur xyzzy").empty());
    EXPECT_EQ(CommandPlace(FindCommand(FileSaveAsJpg)), "File > Save As");
    const std::string key = CommandKey(FindCommand(AlignTop));
    SetTextTranslator([](std::string_view text) { return "\xC3\xBC-" + std::string(text); });
    EXPECT_EQ(SearchCommands("\xC3\xBC-gauss").front()->id, TransformGaussianBlur);
    EXPECT_EQ(SearchCommands("blur").front()->id, TransformBlur) << "in the language of the tables as well";
    EXPECT_EQ(CommandKey(FindCommand(AlignTop)), key) << "settings know no language";
    SetTextTranslator(nullptr);
    EXPECT_EQ(SearchCommands(" ").size(), CommandTable().size());
}

TEST_F(CWindowTest, FoundCommandRunsWithEnterAndADisabledOneDoesNot)
{
    CChildFrame* frame = m_window.Show(*m_app.NewDocument());
    m_window.show();
    const auto search = [&](const char* words, int down) {
        OnNextDialog<CCommandSearch>([&, words, down](CCommandSearch& dialog) {
            auto* edit = dialog.findChild<QLineEdit*>();
            QTest::keyClicks(edit, QLatin1String(words));
            for (int i = 0; i < down; ++i)
                QTest::keyClick(edit, Qt::Key_Down);
            QTest::keyClick(edit, Qt::Key_Return);
            if (dialog.isVisible())
                QTest::keyClick(edit, Qt::Key_Escape);
        });
        m_window.Action(HelpFindCommand)->trigger();
    };
    search("undo", 0);
    EXPECT_EQ(frame->Document().Canvas().objects.Count(), 1U);
    search("new object", 0);
    EXPECT_EQ(frame->Document().Canvas().objects.Count(), 2U);
    search("tools", 6);
    EXPECT_EQ(frame->View().Mode(), ToolMode::Pencil);
}

TEST_F(CWindowTest, LettersChooseToolsUnlessTheyAreTyped)
{
    CChildFrame* frame = m_window.Show(*m_app.NewDocument());
    ShowWindow();
    m_window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&m_window));
    EXPECT_TRUE(frame->Canvas().hasFocus());
    auto* panel = m_window.findChild<COptionsPanel*>();
    const auto press = [&](Qt::Key key) {
        QTest::keyClick(m_window.focusWidget(), key);
        QTest::qWait(1);
    };
    const auto shownPages = [&] {
        const auto edits = panel->findChildren<QSpinBox*>();
        return std::count_if(edits.begin(), edits.end(), [](QSpinBox* edit) { return edit->isVisible(); });
    };
    for (const CommandRow& row : CommandTable()) {
        if (row.id < ToolDefault || row.id > ToolPolygon)
            continue;
        press(static_cast<Qt::Key>(row.shortcut.front()));
        EXPECT_EQ(static_cast<int>(frame->View().Mode()),
                  static_cast<int>(row.id) - static_cast<int>(ToolDefault))
            << row.text;
    }
    press(Qt::Key_P);
    EXPECT_EQ(shownPages(), 3) << "the pencil's page";

    QSpinBox* width = nullptr;
    for (auto* edit : panel->findChildren<QSpinBox*>()) {
        if (edit->isVisible() && !width)
            width = edit;
    }
    width->setFocus();
    press(Qt::Key_E);
    EXPECT_EQ(frame->View().Mode(), ToolMode::Pencil) << "typed into a number";
    press(Qt::Key_Return);
    EXPECT_TRUE(frame->Canvas().hasFocus());
    press(Qt::Key_E);
    EXPECT_EQ(frame->View().Mode(), ToolMode::Erase);
    QTest::keyClick(&frame->Canvas(), Qt::Key_W, Qt::ControlModifier);
    QTest::qWait(1);
    EXPECT_TRUE(m_app.Documents().empty()) << "no other action wants Ctrl+W";
}
