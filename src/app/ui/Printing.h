// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/ui/PageSetup.h"

class CPixoluneDoc;
class QPrinter;
class QWidget;

/// Paints the frame on the printer's pages, over white; false when memory runs out or the printer refuses.
bool PrintFrame(const CPixoluneDoc& document, const PageSetup& setup, QPrinter& printer);

/// What the user is asked about printing, and what follows. Remembers the page between runs.
class CPrinting {
public:
    /// window: the parent of all dialogs.
    CPrinting(QSettings& configuration, QWidget& window) : m_configuration(configuration), m_window(window) {}

    /// Asks for the page in a dialog over `parent`.
    bool SetUpPage(QWidget& parent);
    /// Prints after the printer has been chosen.
    bool Print(const CPixoluneDoc& document);
    bool Preview(const CPixoluneDoc& document);

private:
    void Prepare(QPrinter& printer, const CPixoluneDoc& document) const;
    bool Print(QPrinter& printer, const CPixoluneDoc& document);
    bool PrintOn(QPrinter& printer, const CPixoluneDoc& document);

    QSettings& m_configuration;
    QWidget& m_window;
};
