// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/ui/CanvasCursors.h"

#include "platform/ui/ThemedIcon.h"

#include <QPainter>
#include <QPixmap>

namespace {

/// What a pointer is made of: a cross, with or without an icon beside it, or an icon alone with its own hot
/// spot.
struct CursorRow {
    CursorShape shape;
    const char* icon; ///< none, and no cross: the window system's shape
    Qt::CursorShape standard;
    bool cross;
    QPoint hotSpot; ///< on the icon's grid of 24
};

using enum CursorShape;

const CursorRow kRows[] = {
    {Arrow, nullptr, Qt::ArrowCursor, false, {}},
    {DragObjects, "cursor-drag", Qt::SizeAllCursor, false, {4, 3}},
    {MoveSelection, "cursor-move", Qt::SizeAllCursor, false, {12, 12}},
    {RectangularSelection, "tool-rectangular-selection", Qt::CrossCursor, true, {}},
    {EllipticalSelection, "tool-elliptical-selection", Qt::CrossCursor, true, {}},
    {LassoSelection, "tool-lasso-selection", Qt::CrossCursor, true, {}},
    {MagicWand, "tool-magic-wand-selection", Qt::CrossCursor, true, {}},
    {Pencil, "tool-pencil", Qt::CrossCursor, false, {4, 20}},
    {Eraser, "tool-erase", Qt::CrossCursor, false, {9, 20}},
    {FloodFill, "tool-flood-fill", Qt::CrossCursor, false, {20, 21}},
    {PickColor, "tool-pick-color", Qt::CrossCursor, false, {4, 20}},
    {Shape, nullptr, Qt::CrossCursor, true, {}},
    {Hand, nullptr, Qt::OpenHandCursor, false, {}},
};

constexpr int kSize = 32;
constexpr int kIconSize = 24;
constexpr int kCross = 8; ///< from the corner to the middle of the cross
constexpr int kBesideCross = 15;

/// Draws the icon in black with a white rim, so that it is seen on every picture.
void DrawRimmed(QPainter& painter, const char* icon, const QRectF& rect, qreal ratio)
{
    const QSize size = (rect.size() * ratio).toSize();
    const QPixmap light = IconPixmap(icon, size, Qt::white);
    for (const QPointF offset : {QPointF(-1, 0), QPointF(1, 0), QPointF(0, -1), QPointF(0, 1)})
        painter.drawPixmap(rect.translated(offset), light, light.rect());
    const QPixmap dark = IconPixmap(icon, size, Qt::black);
    painter.drawPixmap(rect, dark, dark.rect());
}

void DrawCross(QPainter& painter)
{
    for (const auto& [color, width] : {std::pair(Qt::white, 3), std::pair(Qt::black, 1)}) {
        painter.setPen(QPen(color, width));
        const QPointF middle(kCross + 0.5, kCross + 0.5);
        for (const QPointF arm : {QPointF(1, 0), QPointF(-1, 0), QPointF(0, 1), QPointF(0, -1)})
            painter.drawLine(middle + arm * 2, middle + arm * 6);
    }
}

} // namespace

QCursor CanvasCursor(CursorShape shape, qreal devicePixelRatio)
{
    const CursorRow& row = kRows[static_cast<size_t>(shape)];
    if (!row.icon && !row.cross)
        return row.standard;

    QPixmap pixmap(QSize(kSize, kSize) * devicePixelRatio);
    pixmap.setDevicePixelRatio(devicePixelRatio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    if (row.cross) {
        DrawCross(painter);
        if (row.icon)
            DrawRimmed(painter, row.icon, QRectF(kBesideCross, kBesideCross, 16, 16), devicePixelRatio);
        painter.end();
        return QCursor(pixmap, kCross, kCross);
    }
    constexpr int kInset = (kSize - kIconSize) / 2;
    DrawRimmed(painter, row.icon, QRectF(kInset, kInset, kIconSize, kIconSize), devicePixelRatio);
    painter.end();
    return QCursor(pixmap, row.hotSpot.x() + kInset, row.hotSpot.y() + kInset);
}
