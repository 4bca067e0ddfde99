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

/// "Add Text": writes a text at a point of the canvas, shown there while it is typed, or changes that of an
/// object.
class CAddTextDialog final : public QDialog {
    Q_OBJECT

public:
    /// place: a document point for a new text, or the object that shows one.
    template <typename Place>
    CAddTextDialog(CPixoluneView& view, const Place& place, QWidget* parent)
        : QDialog(parent), m_settings(SettingsOf(view)), m_session(view, place)
    {
        SetUp();
    }

    void accept() override;
    void reject() override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    [[nodiscard]] static CSettings& SettingsOf(CPixoluneView& view);
    void SetUp();
    void CreateControls();
    void LayOut();
    [[nodiscard]] TextStyle Style() const;
    void SchedulePreview() { m_preview.start(m_previewMs); }
    void Preview();
    void ChooseFill();

    CSettings& m_settings;
    CTextSession m_session;
    QTimer m_preview; ///< one preview for all changes of one event
    /// How long a preview waits for more changes, so that slow ones do not get in the way of typing.
    int m_previewMs = 0;

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
    QLabel* m_note; ///< what stands in the way of the text as it is asked for
};
