// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

#include <array>
#include <cstdint>

class QLabel;

/// What the picture shows under the pointer of the colour picker: its channels and a swatch.
class CPickColorPage final : public QWidget {
    Q_OBJECT

public:
    explicit CPickColorPage(QWidget* parent = nullptr);

    /// pixel: 0xAARRGGBB; an alpha of 0 empties the three colour fields.
    void ShowPixel(uint32_t pixel);

private:
    std::array<QLabel*, 4> m_fields{}; ///< red, green, blue, transparency
    QLabel* m_swatch;
};
