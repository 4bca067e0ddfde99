// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/TextSession.h"

#include <QDialog>
#include <QTimer>

class CSettings;
class CValueControl;
class QCheckBox;
class QComboBox;
class QFontComboBox;
class QLabel;
class QPlainTextEdit;
class QSpinBox;
class QToolButton;

/// "Add Text": writes a text at a point of the canvas, shown there while it is typed. OK makes it an object.
class CAddTextDialog final : public QDialog {
    Q_OBJECT

public:
    CAddTextDialog(CPixoluneView& view, Point documentPoint, QWidget* parent);

    void accept() override;
    void reject() override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void CreateControls();
    void LayOut();
    [[nodiscard]] TextStyle Style() const;
    void SchedulePreview() { m_preview.start(); }
    void Preview();
    void ChooseFill();

    CPixoluneView& m_view;
    CSettings& m_settings;
    CTextSession m_session;
    int m_transparencyOnEntry;
    QTimer m_preview; ///< one preview for all changes of one event

    QFontComboBox* m_font;
    QComboBox* m_size;
    QToolButton* m_bold;
    QToolButton* m_italic;
    QToolButton* m_underline;
    QToolButton* m_alignments[3];
    QToolButton* m_fill;
    CValueControl* m_line;
    CValueControl* m_character;
    CValueControl* m_baseline;
    CValueControl* m_transparency;
    QCheckBox* m_vertical;
    QCheckBox* m_smooth;
    QPlainTextEdit* m_text;
    QLabel* m_fallback;
};
