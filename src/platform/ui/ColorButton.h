// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPushButton>

#include <cstdint>

/// A button that shows a colour and offers others: a palette of everyday colours and "More..." for the
/// rest. Colours are COLORREF values, 0x00bbggrr.
class CColorButton final : public QPushButton {
    Q_OBJECT

public:
    explicit CColorButton(QWidget* parent = nullptr);

    [[nodiscard]] int32_t Color() const { return m_color; }
    /// Shows the colour without reporting it as an edit.
    void SetColor(int32_t colorRef);

Q_SIGNALS:
    void ColorEdited(int32_t colorRef);

protected:
    void paintEvent(QPaintEvent* event) override;
    [[nodiscard]] QSize sizeHint() const override;

private:
    void ShowPalette();
    void ChooseFreely();
    void Edit(int32_t colorRef);

    int32_t m_color = 0;
};
