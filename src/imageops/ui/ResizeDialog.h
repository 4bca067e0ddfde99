// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "document/SizeEntry.h"
#include "platform/strings/Strings.h"

#include <QDialog>

class CSettings;
class QCheckBox;
class QSpinBox;

/// "Resize Image": asks for a new size of the canvas, in pixels or percent. OK stores whether the ratio is
/// kept; the caller takes the size.
class CResizeDialog final : public QDialog {
    Q_OBJECT

public:
    CResizeDialog(CSettings& settings, Size entry, QWidget* parent);

    [[nodiscard]] Size NewSize() const { return m_entry.Pixels(); }
    void accept() override;

private:
    using Setter = void (CSizeEntry::*)(int, RatioChoice);

    QSpinBox* AddEdit(Setter set, const CSizeEntry::Range& range, Str name);
    void ShowValues();

    CSettings& m_settings;
    CSizeEntry m_entry;
    QSpinBox* m_pixelWidth;
    QSpinBox* m_pixelHeight;
    QSpinBox* m_percentWidth;
    QSpinBox* m_percentHeight;
    QCheckBox* m_preserve;
    bool m_showing = false;
};
