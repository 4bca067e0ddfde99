// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/KeyboardPage.h"

#include "app/CommandNames.h"
#include "platform/ui/QtText.h"
#include "platform/ui/ThemedIcon.h"

#include <QGridLayout>
#include <QHeaderView>
#include <QKeySequenceEdit>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

#include <map>
#include <set>

namespace {

constexpr int kCommandRole = Qt::UserRole;
constexpr Str kKeyLabels[] = {Str::FirstShortcut, Str::SecondShortcut};

bool IsCommand(const QTreeWidgetItem& item)
{
    return item.data(0, kCommandRole).isValid();
}

CommandId CommandOf(const QTreeWidgetItem& item)
{
    return static_cast<CommandId>(item.data(0, kCommandRole).toInt());
}

} // namespace

CKeyboardPage::CKeyboardPage(const CShortcuts& shortcuts, QWidget* parent)
    : QWidget(parent), m_shortcuts(shortcuts), m_filter(new QLineEdit), m_tree(new QTreeWidget), m_keys{},
      m_warning(new QLabel), m_takeOver(new QPushButton(ToQString(Str::TakeOverShortcut))),
      m_reset(new QPushButton(ToQString(Str::ResetShortcut))),
      m_resetAll(new QPushButton(ToQString(Str::ResetAllShortcuts)))
{
    m_filter->setPlaceholderText(ToQString(Str::FilterCommands));
    m_filter->setAccessibleName(m_filter->placeholderText());
    m_filter->setClearButtonEnabled(true);
    m_tree->setHeaderLabels({ToQString(Str::CommandColumn), ToQString(Str::ShortcutColumn)});
    m_tree->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_tree->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    m_tree->header()->setStretchLastSection(false);
    m_tree->setAccessibleName(ToQString(Str::KeyboardPage));
    m_warning->setWordWrap(true);
    m_warning->setMinimumHeight(m_warning->fontMetrics().lineSpacing() * 2);

    auto* layout = new QGridLayout(this);
    layout->addWidget(m_filter, 0, 0, 1, 4);
    layout->addWidget(m_tree, 1, 0, 1, 4);
    for (int i = 0; i < kKeyCount; ++i) {
        QKeySequenceEdit*& edit = m_keys[static_cast<size_t>(i)];
        edit = new QKeySequenceEdit;
        edit->setClearButtonEnabled(true);
        auto* label = new QLabel(ToQString(kKeyLabels[i]));
        label->setBuddy(edit);
        edit->setAccessibleName(label->text().remove(QLatin1Char('&')));
        layout->addWidget(label, 2, 2 * i);
        layout->addWidget(edit, 2, 2 * i + 1);
        connect(edit, &QKeySequenceEdit::keySequenceChanged, this, &CKeyboardPage::OnKeyEdited);
    }
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_takeOver);
    buttons->addStretch();
    buttons->addWidget(m_reset);
    buttons->addWidget(m_resetAll);
    layout->addWidget(m_warning, 3, 0, 1, 4);
    layout->addLayout(buttons, 4, 0, 1, 4);
    layout->setRowStretch(1, 1);

    connect(m_filter, &QLineEdit::textChanged, this, &CKeyboardPage::Filter);
    connect(m_tree, &QTreeWidget::currentItemChanged, this, &CKeyboardPage::ShowCommand);
    connect(m_takeOver, &QPushButton::clicked, this, &CKeyboardPage::TakeOver);
    connect(m_reset, &QPushButton::clicked, this, [this] {
        m_shortcuts.Reset(*Current());
        ShowKeys();
    });
    connect(m_resetAll, &QPushButton::clicked, this, [this] {
        m_shortcuts.ResetAll();
        ShowKeys();
    });
    FillTree();
    ShowKeys();
}

void CKeyboardPage::FillTree()
{
    std::map<QString, QTreeWidgetItem*> places;
    for (const CommandRow& row : CommandTable()) {
        const QString place = ToQString(CommandPlace(row));
        QTreeWidgetItem*& parent = places[place];
        if (!parent) {
            parent = new QTreeWidgetItem(m_tree, {place});
            parent->setFlags(Qt::ItemIsEnabled);
            parent->setExpanded(true);
        }
        auto* item = new QTreeWidgetItem(parent, {ToQString(CommandName(row))});
        item->setIcon(0, ThemedIcon(row.icon));
        item->setToolTip(0, TranslatedQString(row.prompt));
        item->setData(0, kCommandRole, static_cast<int>(row.id));
    }
}

void CKeyboardPage::Filter(const QString& words)
{
    std::set<CommandId> found;
    for (const CommandRow* row : SearchCommands(ToUtf8(words)))
        found.insert(row->id);
    for (int i = 0; i < m_tree->topLevelItemCount(); ++i) {
        QTreeWidgetItem* place = m_tree->topLevelItem(i);
        bool isEmpty = true;
        for (int k = 0; k < place->childCount(); ++k) {
            QTreeWidgetItem* item = place->child(k);
            // A key can be looked for as well.
            const bool isFound = found.contains(CommandOf(*item)) ||
                                 (!words.isEmpty() && item->text(1).contains(words, Qt::CaseInsensitive));
            item->setHidden(!isFound);
            isEmpty = isEmpty && !isFound;
        }
        place->setHidden(isEmpty);
    }
}

std::optional<CommandId> CKeyboardPage::Current() const
{
    const QTreeWidgetItem* item = m_tree->currentItem();
    return item && IsCommand(*item) ? std::optional(CommandOf(*item)) : std::nullopt;
}

CShortcuts::Keys CKeyboardPage::EditedKeys() const
{
    CShortcuts::Keys keys;
    for (const QKeySequenceEdit* edit : m_keys) {
        // One key at a time: the rest of a sequence is not taken.
        const QKeySequence key =
            edit->keySequence().isEmpty() ? QKeySequence() : QKeySequence(edit->keySequence()[0]);
        if (!key.isEmpty() && !keys.contains(key))
            keys += key;
    }
    return keys;
}

void CKeyboardPage::ShowCommand()
{
    const std::optional<CommandId> id = Current();
    const CShortcuts::Keys keys = id ? m_shortcuts.Of(*id) : CShortcuts::Keys();
    for (int i = 0; i < kKeyCount; ++i) {
        QKeySequenceEdit* edit = m_keys[static_cast<size_t>(i)];
        const QSignalBlocker blocker(edit);
        edit->setEnabled(id.has_value());
        edit->setKeySequence(keys.value(i));
    }
    m_reset->setEnabled(id && m_shortcuts.IsChanged(*id));
    m_takeOver->setEnabled(false);
    m_warning->clear();
}

void CKeyboardPage::ShowKeys()
{
    for (QTreeWidgetItemIterator item(m_tree); *item; ++item) {
        if (!IsCommand(**item))
            continue;
        const CommandId id = CommandOf(**item);
        (*item)->setText(1, m_shortcuts.TextOf(id));
        QFont font = m_tree->font();
        font.setBold(m_shortcuts.IsChanged(id));
        (*item)->setFont(1, font);
    }
    ShowCommand();
}

void CKeyboardPage::OnKeyEdited()
{
    const std::optional<CommandId> id = Current();
    if (!id)
        return;
    m_takeOver->setEnabled(false);
    m_warning->clear();
    const CShortcuts::Keys keys = EditedKeys();
    for (const QKeySequence& key : keys) {
        const QString text = key.toString(QKeySequence::NativeText);
        if (CShortcuts::IsReserved(key)) {
            m_warning->setText(ToQString(Text(Str::ShortcutReserved, ToUtf8(text))));
            return;
        }
        const std::optional<CommandId> owner = m_shortcuts.Owner(key);
        if (owner && *owner != *id) {
            m_warning->setText(text + ToQString(Text(Str::ShortcutTaken, CommandName(FindCommand(*owner)))));
            m_takeOver->setEnabled(true);
            return;
        }
    }
    m_shortcuts.Set(*id, keys);
    ShowKeys();
}

void CKeyboardPage::TakeOver()
{
    m_shortcuts.Set(*Current(), EditedKeys());
    ShowKeys();
}
