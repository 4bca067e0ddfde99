// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/paint/PaintShape.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QPen>

#include <algorithm>
#include <cmath>

namespace {

/// Beyond this the painter's coordinates lose the accuracy of a pixel.
constexpr double kMaxSide = 1 << 20;
/// The painter works on images of at most 32,767 pixels a side.
constexpr int kTile = 8192;

CPackedDib CreateGrayDib(int width, int height)
{
    CPackedDib dib = CPackedDib::Create(width, height, 8);
    if (dib.IsEmpty())
        return dib;
    uint8_t level = 0;
    for (RgbQuad& entry : dib.ColourTable()) {
        entry = {level, level, level, 0};
        ++level;
    }
    return dib;
}

/// The pixels that an area may touch; none when it is empty or could not be held.
QRect PixelsOf(const QRectF& area)
{
    if (!(area.width() > 0) || !(area.height() > 0) || area.width() > kMaxSide || area.height() > kMaxSide)
        return {};
    return area.toAlignedRect();
}

/// False when memory runs out.
bool PaintTile(CPackedDib& dib, const QRect& tile, QPoint corner, const QPainterPath& path,
               const QBrush& brush, const QPen& pen)
{
    QImage image(tile.size(), QImage::Format_Alpha8);
    if (image.isNull())
        return false;
    image.fill(0);
    {
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.translate(-corner - tile.topLeft());
        painter.setBrush(brush);
        painter.setPen(pen);
        painter.drawPath(path);
    }
    for (int y = 0; y < tile.height(); ++y)
        std::copy_n(image.constScanLine(y), tile.width(), dib.Row(tile.top() + y) + tile.left());
    return true;
}

ShapeCoverage PaintPath(const QPainterPath& path, const QRectF& bounds, const QBrush& brush, const QPen& pen)
{
    const QRect pixels = PixelsOf(bounds);
    if (pixels.isEmpty())
        return {};
    ShapeCoverage coverage{
        CreateGrayDib(pixels.width(), pixels.height()), {pixels.left(), pixels.top()}, false};
    if (coverage.dib.IsEmpty())
        return {{}, {}, true};
    for (int top = 0; top < pixels.height(); top += kTile) {
        for (int left = 0; left < pixels.width(); left += kTile) {
            const QRect tile(left, top, std::min(kTile, pixels.width() - left),
                             std::min(kTile, pixels.height() - top));
            if (!PaintTile(coverage.dib, tile, pixels.topLeft(), path, brush, pen))
                return {{}, {}, true};
        }
    }
    return coverage;
}

ShapeCoverage PaintFilledOrOutlined(const QPainterPath& path, int outlineWidth, ShapeFill fill)
{
    if (fill == ShapeFill::Filled)
        return PaintPath(path, path.boundingRect(), Qt::black, Qt::NoPen);
    QPen pen(Qt::black, std::max(1, outlineWidth));
    pen.setJoinStyle(Qt::MiterJoin);
    QPainterPathStroker stroker(pen);
    return PaintPath(path, stroker.createStroke(path).boundingRect(), Qt::NoBrush, pen);
}

} // namespace

ShapeCoverage PaintShapeOnPic(const Rect& rect, int outlineWidth, ShapeKind kind, ShapeFill fill,
                              Point cornerSize)
{
    if (rect.IsEmpty())
        return {};
    const QRectF box(rect.left, rect.top, rect.Width(), rect.Height());
    QPainterPath path;
    if (kind == ShapeKind::Ellipse)
        path.addEllipse(box);
    else if (cornerSize.x > 0 && cornerSize.y > 0)
        path.addRoundedRect(box, cornerSize.x / 2.0, cornerSize.y / 2.0);
    else
        path.addRect(box);
    return PaintFilledOrOutlined(path, outlineWidth, fill);
}

ShapeCoverage PaintPolygonOnPic(std::span<const Point> points, int outlineWidth, ShapeFill fill)
{
    if (points.size() < (fill == ShapeFill::Filled ? 3 : 2))
        return {};
    QPolygonF polygon;
    for (const Point& point : points)
        polygon.append(QPointF(point.x, point.y));
    QPainterPath path;
    path.setFillRule(Qt::OddEvenFill);
    path.addPolygon(polygon);
    path.closeSubpath();
    return PaintFilledOrOutlined(path, outlineWidth, fill);
}
