// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ui/ThemedIcon.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

namespace {

QColor StrokeColor(QIcon::Mode mode)
{
    const QPalette palette = QGuiApplication::palette();
    switch (mode) {
    case QIcon::Disabled:
        return palette.color(QPalette::Disabled, QPalette::WindowText);
    case QIcon::Selected:
        return palette.color(QPalette::Active, QPalette::HighlightedText);
    default:
        return palette.color(QPalette::Active, QPalette::WindowText);
    }
}

/// The one accent of the icon family, which disabled icons do without.
constexpr const char* kAccent = "#2f80ed";

QPixmap RenderIcon(const QString& name, const QSize& size, const QColor& stroke, const QColor& accent)
{
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QFile file(QStringLiteral(":/icons/%1.svg").arg(name));
    if (!file.open(QIODevice::ReadOnly))
        return pixmap;
    QByteArray text = file.readAll();
    text.replace("currentColor", stroke.name().toLatin1());
    text.replace(kAccent, accent.name().toLatin1());
    QSvgRenderer renderer(text);
    renderer.setAspectRatioMode(Qt::KeepAspectRatio);
    QPainter painter(&pixmap);
    renderer.render(&painter, QRectF(QPointF(), QSizeF(size)));
    return pixmap;
}

/// Draws one scalable picture from the resources, in the colours of the palette in use.
class CThemedIconEngine final : public QIconEngine {
public:
    explicit CThemedIconEngine(QString name) : m_name(std::move(name)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State /*state*/) override
    {
        const qreal ratio = painter->device()->devicePixelRatioF();
        painter->drawPixmap(rect, Render((QSizeF(rect.size()) * ratio).toSize(), mode));
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State /*state*/) override
    {
        return Render(size, mode);
    }

    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State /*state*/,
                         qreal /*scale*/) override
    {
        return Render(size, mode);
    }

    [[nodiscard]] QIconEngine* clone() const override { return new CThemedIconEngine(m_name); }
    [[nodiscard]] QString key() const override { return QStringLiteral("pixolune"); }
    QString iconName() override { return m_name; }

private:
    /// size: device pixels.
    [[nodiscard]] QPixmap Render(const QSize& size, QIcon::Mode mode) const
    {
        const QColor stroke = StrokeColor(mode);
        const QColor accent = mode == QIcon::Disabled ? stroke : QColor(kAccent);
        const QString cacheKey = QStringLiteral("pixolune %1 %2 %3 %4 %5")
                                     .arg(m_name)
                                     .arg(size.width())
                                     .arg(size.height())
                                     .arg(stroke.rgb())
                                     .arg(accent.rgb());
        QPixmap pixmap;
        if (!QPixmapCache::find(cacheKey, &pixmap)) {
            pixmap = RenderIcon(m_name, size, stroke, accent);
            QPixmapCache::insert(cacheKey, pixmap);
        }
        return pixmap;
    }

    QString m_name;
};

} // namespace

QIcon ThemedIcon(std::string_view name)
{
    if (name.empty())
        return {};
    return QIcon(new CThemedIconEngine(QString::fromUtf8(name.data(), qsizetype(name.size()))));
}

QPixmap IconPixmap(std::string_view name, const QSize& size, const QColor& stroke)
{
    return RenderIcon(QString::fromUtf8(name.data(), qsizetype(name.size())), size, stroke, QColor(kAccent));
}

QIcon ApplicationIcon()
{
    return ThemedIcon("pixolune");
}
