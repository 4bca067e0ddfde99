// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPixmap>
#include <QScrollBar>
#include <QStyleOptionSlider>

/// A scroll bar that keeps what its style draws while the pointer is elsewhere. Its parts look the same at
/// every step of a scroll, but the shadings that styles give them take longer than the picture beside them.
class CCanvasScrollBar final : public QScrollBar {
    Q_OBJECT

public:
    using QScrollBar::QScrollBar;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    /// What decides how the parts look, but for the slider's place.
    struct Look {
        const QStyle* style = nullptr;
        QSize size;
        QStyle::State state;
        qint64 palette = 0;
        qreal ratio = 0;
        int steps = 0;
        int page = 0;

        friend bool operator==(const Look&, const Look&) = default;
    };

    [[nodiscard]] QRect SliderRect(const QStyleOptionSlider& option) const;
    /// Some parts as they are drawn within a rectangle of the bar.
    [[nodiscard]] QPixmap Draw(QStyleOptionSlider option, QStyle::SubControls parts, const QRect& rect) const;

    Look m_look; ///< of the pictures
    QPixmap m_groove;
    QPixmap m_slider;
};
