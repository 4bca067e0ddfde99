// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/paint/PaintShape.h"
#include "platform/transform/ColourFill.h"
#include "support/Cases.h"
#include "support/Inputs.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>

namespace {

constexpr Rect kBox{0, 0, 4000, 3000};
constexpr uint32_t kFirst = 0x204080;
constexpr uint32_t kSecond = 0xF0C010;

/// A filled shape as the tools make it: coverage, then colours.
void AddOurs(const char* operation, ShapeKind kind, int mode)
{
    AddCase({operation, SizeName(12), "ours", Threads::All, PixelsOf(12)}, [=] {
        return [=] {
            const ShapeCoverage shape = PaintShapeOnPic(kBox, 1, kind, ShapeFill::Filled, {});
            (void)ColourCoverage(shape.dib, {kFirst, kSecond, mode});
        };
    });
}

/// The same path filled by the toolkit into an image of the same size.
void AddToolkits(const char* operation, ShapeKind kind, const QBrush& brush)
{
    AddCase({operation, SizeName(12), "qt", Threads::One, PixelsOf(12)}, [=] {
        return [=] {
            QImage image(kBox.Width(), kBox.Height(), QImage::Format_ARGB32);
            image.fill(Qt::transparent);
            QPainterPath path;
            const QRectF box(0, 0, kBox.Width(), kBox.Height());
            kind == ShapeKind::Ellipse ? path.addEllipse(box) : path.addRect(box);
            QPainter painter(&image);
            painter.setRenderHint(QPainter::Antialiasing);
            painter.fillPath(path, brush);
        };
    });
}

const bool kRegistered = [] {
    const QColor first(0x80, 0x40, 0x20), second(0x10, 0xC0, 0xF0);
    const auto coloured = [&](auto gradient) {
        gradient.setColorAt(0, first);
        gradient.setColorAt(1, second);
        return QBrush(gradient);
    };
    AddOurs("shape/ellipse-filled", ShapeKind::Ellipse, 0);
    AddToolkits("shape/ellipse-filled", ShapeKind::Ellipse, first);
    AddOurs("shape/rectangle-diagonal-gradient", ShapeKind::Rectangle, 3);
    AddToolkits("shape/rectangle-diagonal-gradient", ShapeKind::Rectangle,
                coloured(QLinearGradient(0, 0, kBox.Width(), kBox.Height())));
    AddOurs("shape/rectangle-radial-gradient", ShapeKind::Rectangle, 5);
    AddToolkits("shape/rectangle-radial-gradient", ShapeKind::Rectangle,
                coloured(QRadialGradient(2000, 1500, 2500)));
    return true;
}();

} // namespace
