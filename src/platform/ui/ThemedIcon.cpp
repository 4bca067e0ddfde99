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

/// Draws one scalable picture from the resources, recoloured.
class CThemedIconEngine final : public QIconEngine {
public:
    explicit CThemedIconEngine(QString name) : m_name(std::move(name)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override
    {
        const qreal ratio = painter->device()->devicePixelRatioF();
        painter->drawPixmap(rect, Render(rect.size() * ratio, mode));
        Q_UNUSED(state)
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State /*state*/) override
    {
        return Render(size, mode);
    }

    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State /*state*/, qreal /*scale*/) override
    {
        return Render(size, mode);
    }

    [[nodiscard]] QIconEngine* clone() const override { return new CThemedIconEngine(m_name); }
    QString key() const override { return QStringLiteral("pixolune"); }
    QString iconName() override { return m_name; }

private:
    /// size: device pixels.
    [[nodiscard]] QPixmap Render(const QSize& size, QIcon::Mode mode) const
    {
        const QColor stroke = StrokeColor(mode);
        const bool disabled = mode == QIcon::Disabled;
        const QString cacheKey = QStringLiteral("pixolune-%1-%2x%3-%4")
                                     .arg(m_name)
                                     .arg(size.width())
                                     .arg(size.height())
                                     .arg(stroke.rgba() ^ (disabled ? 1U : 0U));
        QPixmap pixmap;
        if (QPixmapCache::find(cacheKey, &pixmap))
            return pixmap;

        pixmap = QPixmap(size);
        pixmap.fill(Qt::transparent);
        QFile file(QStringLiteral(":/icons/%1.svg").arg(m_name));
        if (file.open(QIODevice::ReadOnly)) {
            QByteArray text = file.readAll();
            text.replace("currentColor", stroke.name().toLatin1());
            if (disabled)
                text.replace(kAccent, stroke.name().toLatin1());
            QSvgRenderer renderer(text);
            renderer.setAspectRatioMode(Qt::KeepAspectRatio);
            QPainter painter(&pixmap);
            renderer.render(&painter, QRectF(QPointF(), QSizeF(size)));
        }
        QPixmapCache::insert(cacheKey, pixmap);
        return pixmap;
    }

    /// The one accent of the icon family, which disabled icons do without.
    static constexpr const char* kAccent = "#2f80ed";

    QString m_name;
};

} // namespace

QIcon ThemedIcon(std::string_view name)
{
    if (name.empty())
        return {};
    return QIcon(new CThemedIconEngine(QString::fromUtf8(name.data(), qsizetype(name.size()))));
}

QIcon ApplicationIcon()
{
    return ThemedIcon("pixolune");
}
