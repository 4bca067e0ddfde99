// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/Shortcuts.h"

#include "app/CommandNames.h"
#include "platform/ui/QtText.h"

#include <QSettings>
#include <QStringList>

#include <algorithm>

namespace {

constexpr QLatin1String kGroup("Shortcuts");

constexpr Qt::Key kReservedKeys[] = {Qt::Key_Escape, Qt::Key_Space,   Qt::Key_Return,    Qt::Key_Enter,
                                     Qt::Key_Tab,    Qt::Key_Backtab, Qt::Key_Backspace, Qt::Key_Left,
                                     Qt::Key_Right,  Qt::Key_Up,      Qt::Key_Down};

QString StoredName(const CommandRow& row)
{
    return kGroup + QLatin1Char('/') + ToQString(CommandKey(row));
}

/// Reads "Ctrl+Y; Ctrl+Shift+Z", which may be empty.
CShortcuts::Keys ToKeys(const QString& text)
{
    CShortcuts::Keys keys = QKeySequence::listFromString(text);
    keys.removeIf([](const QKeySequence& key) { return key.isEmpty() || CShortcuts::IsReserved(key); });
    return keys;
}

CShortcuts::Keys InitialKeys(CommandId id)
{
    return ToKeys(ToQString(FindCommand(id).shortcut));
}

} // namespace

CShortcuts::CShortcuts(const QSettings& configuration)
{
    for (const CommandRow& row : CommandTable()) {
        const QVariant stored = configuration.value(StoredName(row));
        if (stored.isValid())
            Set(row.id, ToKeys(stored.toString()));
    }
}

void CShortcuts::Write(QSettings& configuration) const
{
    configuration.remove(kGroup);
    for (const auto& [id, keys] : m_changed)
        configuration.setValue(StoredName(FindCommand(id)), QKeySequence::listToString(keys));
}

CShortcuts::Keys CShortcuts::Of(CommandId id) const
{
    if (const auto found = m_changed.find(id); found != m_changed.end())
        return found->second;
    Keys keys = InitialKeys(id);
    keys.removeIf([this](const QKeySequence& key) { return IsGivenAway(key); });
    return keys;
}

QString CShortcuts::TextOf(CommandId id) const
{
    QStringList texts;
    for (const QKeySequence& key : Of(id))
        texts += key.toString(QKeySequence::NativeText);
    return texts.join(QLatin1String(", "));
}

void CShortcuts::Set(CommandId id, const Keys& keys)
{
    for (auto& [other, taken] : m_changed)
        taken.removeIf([&keys](const QKeySequence& key) { return keys.contains(key); });
    if (keys == InitialKeys(id))
        m_changed.erase(id);
    else
        m_changed[id] = keys;
}

void CShortcuts::Reset(CommandId id)
{
    Set(id, InitialKeys(id));
}

bool CShortcuts::IsGivenAway(const QKeySequence& key) const
{
    return std::ranges::any_of(m_changed, [&key](const auto& entry) { return entry.second.contains(key); });
}

std::optional<CommandId> CShortcuts::Owner(const QKeySequence& key) const
{
    for (const CommandRow& row : CommandTable()) {
        if (Of(row.id).contains(key))
            return row.id;
    }
    return std::nullopt;
}

bool CShortcuts::IsReserved(const QKeySequence& key)
{
    if (key.isEmpty())
        return false;
    const QKeyCombination pressed = key[0];
    const bool plain = (pressed.keyboardModifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == 0;
    return plain && std::ranges::find(kReservedKeys, pressed.key()) != std::end(kReservedKeys);
}
