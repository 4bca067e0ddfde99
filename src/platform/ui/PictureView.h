// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QWidget>

#include <optional>

/// Shows a picture over a checkerboard, or a text where there is none.
class CPictureView final : public QWidget {
    Q_OBJECT

public:
    enum class Scaling {
        Fit,    ///< the whole picture, reduced as needed; small ones are enlarged by whole numbers
        Actual, ///< the screen's own pixels; a larger picture is dragged with the mouse
    };

    explicit CPictureView(Scaling scaling, QWidget* parent = nullptr);

    /// A picture of another size is shown from its centre.
    void SetImage(QImage image);
    void SetText(const QString& text);
    [[nodiscard]] const QImage& Image() const { return m_image; }
    [[nodiscard]] const QString& Text() const { return m_text; }
    /// The picture's point in the middle of the view; for Actual.
    void SetCenter(const QPointF& center);

    [[nodiscard]] QSize sizeHint() const override { return minimumSize(); }

Q_SIGNALS:
    void Dragged(const QPointF& center);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    /// Where the whole picture lies, in pixels of the screen.
    [[nodiscard]] QRectF Place(const QSizeF& view) const;
    [[nodiscard]] QPointF Clamped(QPointF center) const;

    Scaling m_scaling;
    QImage m_image;
    QString m_text;
    QPointF m_center;
    std::optional<QPointF> m_dragFrom;
};
