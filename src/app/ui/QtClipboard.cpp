// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/QtClipboard.h"

#include "platform/codec/PngWriter.h"
#include "platform/ui/QtPicture.h"
#include "platform/ui/QtText.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QUrl>

namespace {

/// The registered format "Morvandelite Pixolune" on Windows, a type of its own elsewhere.
#ifdef Q_OS_WIN
constexpr QLatin1String kPrivateType("application/x-qt-windows-mime;value=\"Morvandelite Pixolune\"");
#else
constexpr QLatin1String kPrivateType("application/x-morvandelite-pixolune");
#endif
constexpr QLatin1String kPngType("image/png");

/// Lists two formats and makes each only when somebody asks for it. The toolkit's own picture type would
/// offer two dozen, all of which clipboard managers fetch at once.
class COfferedData final : public QMimeData {
public:
    explicit COfferedData(ClipboardOffer offer) : m_offer(std::move(offer)) {}

    [[nodiscard]] QStringList formats() const override
    {
        QStringList types;
        if (m_offer.picture)
            types << kPngType;
        if (m_offer.privateStream)
            types << kPrivateType;
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
        if (type == kPngType && m_offer.picture)
            return EncodedPng();
        return {};
    }

private:
    [[nodiscard]] QByteArray EncodedPng() const
    {
        const CPackedDib picture = m_offer.picture();
        if (picture.IsEmpty())
            return {};
        const CHeapBlock png = EncodePng(PngPictureOf(ViewOf(picture)));
        return QByteArray(reinterpret_cast<const char*>(png.Data()), static_cast<qsizetype>(png.Size()));
    }

    ClipboardOffer m_offer;
};

} // namespace

CQtClipboard::CQtClipboard()
{
    const auto forget = [this] { m_hasContents.reset(); };
    QObject::connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, &m_watcher, forget);
    // Not every window system tells of other programs' copies while this one is in the background.
    QObject::connect(qGuiApp, &QGuiApplication::applicationStateChanged, &m_watcher, forget);
}

bool CQtClipboard::Offer(ClipboardOffer offer)
{
    m_origins = offer.origins;
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
    if (!m_hasContents) {
        const QMimeData* data = QGuiApplication::clipboard()->mimeData();
        m_hasContents = data && (data->hasFormat(kPrivateType) || data->hasImage() || data->hasUrls());
    }
    return *m_hasContents;
}

std::vector<Point> CQtClipboard::Origins() const
{
    return QGuiApplication::clipboard()->ownsClipboard() ? m_origins : std::vector<Point>();
}

std::vector<std::filesystem::path> CQtClipboard::Files() const
{
    std::vector<std::filesystem::path> files;
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    for (const QUrl& url : data ? data->urls() : QList<QUrl>()) {
        if (url.isLocalFile())
            files.push_back(ToPath(url.toLocalFile()));
    }
    return files;
}
