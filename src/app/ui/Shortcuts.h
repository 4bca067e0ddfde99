// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/CommandTable.h"

#include <QKeySequence>
#include <QList>

#include <map>

class QSettings;

/// The keys of every command: those of the command table, unless the user has given it others. No two
/// commands share one.
class CShortcuts {
public:
    using Keys = QList<QKeySequence>;

    /// Those of the command table.
    CShortcuts() = default;
    /// With what the user has stored.
    explicit CShortcuts(const QSettings& configuration);
    /// Stores what differs from the command table.
    void Write(QSettings& configuration) const;

    /// The first one is shown in menus.
    [[nodiscard]] Keys Of(CommandId id) const;
    /// The keys as one text, as this platform writes them: "Ctrl+Y, Ctrl+Shift+Z".
    [[nodiscard]] QString TextOf(CommandId id) const;
    /// Gives a command these keys alone; other commands lose them. None of them is reserved or empty.
    void Set(CommandId id, const Keys& keys);
    [[nodiscard]] bool IsChanged(CommandId id) const { return m_changed.contains(id); }
    void Reset(CommandId id);
    void ResetAll() { m_changed.clear(); }

    /// The command that the key runs.
    [[nodiscard]] std::optional<CommandId> Owner(const QKeySequence& key) const;
    /// Whether the key has a meaning of its own on the canvas and in lists, and cannot run a command.
    [[nodiscard]] static bool IsReserved(const QKeySequence& key);

private:
    [[nodiscard]] bool IsGivenAway(const QKeySequence& key) const;

    std::map<CommandId, Keys> m_changed;
};
