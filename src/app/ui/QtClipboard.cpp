// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/QtClipboard.h"

#include "platform/ui/QtPicture.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

namespace {

/// The registered format "Morvandelite Pixolune" on Windows, a type of its own elsewhere.
#ifdef Q_OS_WIN
constexpr QLatin1String kPrivateType("application/x-qt-windows-mime;value=\"Morvandelite Pixolune\"");
#else
constexpr QLatin1String kPrivateType("application/x-morvandelite-pixolune");
#endif
/// Offered in every picture format that the window system knows, PNG among them.
constexpr QLatin1String kPictureType("application/x-qt-image");

class COfferedData final : public QMimeData {
public:
    explicit COfferedData(ClipboardOffer offer) : m_offer(std::move(offer)) {}

    [[nodiscard]] QStringList formats() const override
    {
        QStringList types;
        if (m_offer.privateStream)
            types << kPrivateType;
        if (m_offer.picture)
            types << kPictureType;
        return types;
    }

    [[nodiscard]] bool hasFormat(const QString& type) const override { return formats().contains(type); }

protected:
    [[nodiscard]] QVariant retrieveData(const QString& type, QMetaType /*preferred*/) const override
    {
        if (type == kPrivateType && m_offer.privateStream) {
            const std::vector<uint8_t> bytes = m_offer.privateStream();
            return QByteArray(reinterpret_cast<const char*>(bytes.data()),
                              static_cast<qsizetype>(bytes.size()));
        }
        if (type == kPictureType && m_offer.picture)
            return ToQImage(m_offer.picture());
        return {};
    }

private:
    ClipboardOffer m_offer;
};

} // namespace

bool CQtClipboard::Offer(ClipboardOffer offer)
{
    QGuiApplication::clipboard()->setMimeData(new COfferedData(std::move(offer)));
    return true;
}

std::optional<std::vector<uint8_t>> CQtClipboard::PrivateStream() const
{
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    if (!data || !data->hasFormat(kPrivateType))
        return std::nullopt;
    const QByteArray bytes = data->data(kPrivateType);
    return std::vector<uint8_t>(bytes.begin(), bytes.end());
}

CPackedDib CQtClipboard::Picture() const
{
    return ToDib(QGuiApplication::clipboard()->image());
}

bool CQtClipboard::HasContents() const
{
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    return data && (data->hasFormat(kPrivateType) || data->hasImage());
}
