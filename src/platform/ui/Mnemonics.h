// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <set>

/// Letters that a menu or a dialog has given away.
using Mnemonics = std::set<QChar>;

/// Marks the first letter of a text that nothing else uses yet. A text that already has a mark, or whose
/// letters are all in use, stays as it is.
[[nodiscard]] inline QString WithMnemonic(QString text, Mnemonics& used)
{
    if (const qsizetype mark = text.indexOf(QLatin1Char('&')); mark >= 0 && mark + 1 < text.size()) {
        used.insert(text[mark + 1].toLower());
        return text;
    }
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i].isLetterOrNumber() && used.insert(text[i].toLower()).second)
            return text.insert(i, QLatin1Char('&'));
    }
    return text;
}
