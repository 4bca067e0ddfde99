// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/ObjectDelegate.h"

#include "app/ui/ObjectListModel.h"
#include "document/PanelOperations.h"
#include "platform/ui/ThemedIcon.h"

#include <QApplication>
#include <QLineEdit>
#include <QPainter>

namespace {

constexpr int kIcon = 18;
constexpr int kGap = 6;
constexpr int kPadding = 4;

QString Details(const CPicObject& object)
{
    const Size size = object.Size();
    return QStringLiteral("%1, %2   %3 x %4   %5%")
        .arg(object.x)
        .arg(object.y)
        .arg(size.width)
        .arg(size.height)
        .arg((255 - object.transparency) * 100 / 255);
}

QFont SmallFont(QFont font)
{
    font.setPointSizeF(font.pointSizeF() * 0.85);
    return font;
}

} // namespace

CObjectDelegate::CObjectDelegate(CObjectListModel& model, QObject* parent)
    : QStyledItemDelegate(parent), m_model(model)
{
}

ObjectRowLayout CObjectDelegate::LayOut(const QRect& row, const QFontMetrics& font) const
{
    const QRect inner = row.adjusted(kGap, kPadding, -kGap, -kPadding);
    const auto square = [&inner](int left, int edge) {
        return QRect(left, inner.center().y() - edge / 2, edge, edge);
    };
    ObjectRowLayout layout;
    layout.eye = square(inner.left(), kIcon);
    layout.lock = square(layout.eye.right() + kGap, kIcon);
    layout.thumbnail = square(layout.lock.right() + kGap, m_thumbnailSize);
    QRect text = inner;
    text.setLeft(layout.thumbnail.right() + kGap + 2);
    const int nameHeight = font.height() + 2;
    const int textHeight = m_showsDetails ? 2 * nameHeight : nameHeight;
    text.setTop(inner.center().y() - textHeight / 2);
    layout.name = QRect(text.left(), text.top(), text.width(), nameHeight);
    if (m_showsDetails)
        layout.details = layout.name.translated(0, nameHeight);
    return layout;
}

void CObjectDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const
{
    const CPicObject& object = *m_model.ObjectAt(index.row());
    QStyleOptionViewItem background = option;
    initStyleOption(&background, index);
    background.text.clear();
    const QStyle* style = option.widget ? option.widget->style() : QApplication::style();
    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &background, painter, option.widget);

    const ObjectRowLayout layout = LayOut(option.rect, option.fontMetrics);
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    const QIcon::Mode mode = selected ? QIcon::Selected : QIcon::Normal;
    ThemedIcon(object.visible ? "eye-open" : "eye-closed").paint(painter, layout.eye, Qt::AlignCenter, mode);
    ThemedIcon(object.locked ? "lock-closed" : "lock-open")
        .paint(painter, layout.lock, Qt::AlignCenter, object.locked || selected ? mode : QIcon::Disabled);

    const qreal ratio = painter->device()->devicePixelRatioF();
    QImage thumbnail = m_model.Thumbnail(index.row(), qRound(m_thumbnailSize * ratio));
    thumbnail.setDevicePixelRatio(ratio);
    QRectF picture(QPointF(), thumbnail.deviceIndependentSize());
    picture.moveCenter(QRectF(layout.thumbnail).center());
    painter->save();
    if (!object.visible)
        painter->setOpacity(0.45);
    painter->drawImage(picture.topLeft(), thumbnail);
    painter->restore();

    const QPalette::ColorGroup group = object.visible ? QPalette::Active : QPalette::Disabled;
    painter->save();
    painter->setPen(option.palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text));
    painter->setFont(option.font);
    const QString name = index.data().toString();
    painter->drawText(layout.name, Qt::AlignVCenter | Qt::AlignLeft,
                      option.fontMetrics.elidedText(name, Qt::ElideRight, layout.name.width()));
    if (!layout.details.isEmpty()) {
        const QFont small = SmallFont(option.font);
        painter->setFont(small);
        painter->setOpacity(0.75);
        painter->drawText(
            layout.details, Qt::AlignVCenter | Qt::AlignLeft,
            QFontMetrics(small).elidedText(Details(object), Qt::ElideRight, layout.details.width()));
    }
    painter->restore();
}

QSize CObjectDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& /*index*/) const
{
    const int lines = m_showsDetails ? 2 : 1;
    const int height = std::max({m_thumbnailSize, kIcon, lines * (option.fontMetrics.height() + 2)});
    return {m_thumbnailSize + 120, height + 2 * kPadding};
}

QWidget* CObjectDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& /*option*/,
                                       const QModelIndex& /*index*/) const
{
    auto* edit = new QLineEdit(parent);
    edit->setMaxLength(static_cast<int>(kMaxNameCharacters));
    return edit;
}

void CObjectDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                           const QModelIndex& /*index*/) const
{
    QRect rect = LayOut(option.rect, option.fontMetrics).name;
    rect.setHeight(editor->sizeHint().height());
    rect.moveTop(rect.top() - 3);
    editor->setGeometry(rect);
}
