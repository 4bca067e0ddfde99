// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class QCoreApplication;

enum class Language {
    Desktop, ///< the desktop's, where the program has it
    Pseudo,  ///< for tests: every text with accents and two fifths longer
};

/// Puts the program's texts, and those of the toolkit, into the language. Translations are files
/// "pixolune_<locale>.qm" in share/pixolune/translations of the installation, context "Pixolune".
void InstallTranslations(QCoreApplication& application, Language language);

/// The text with accented letters, two fifths longer; what programs look for in it
/// (mnemonics, placeholders, patterns of file names) stays.
[[nodiscard]] QString PseudoText(const QString& source);
