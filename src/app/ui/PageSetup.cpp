// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/PageSetup.h"

#include <QLocale>
#include <QSettings>

#include <algorithm>
#include <cmath>

namespace {

constexpr QLatin1String kPaper("Page/Paper");
constexpr QLatin1String kLandscape("Page/Landscape");
constexpr QLatin1String kMargins("Page/Margins");
constexpr QLatin1String kFitsPage("Page/FitsPage");
constexpr QLatin1String kResolution("Page/Resolution");
constexpr QLatin1String kCentered("Page/Centered");
constexpr QLatin1String kOffset("Page/Offset");

constexpr double kUsualMargin = 12;
constexpr double kMillimetresPerInch = 25.4;
/// A sliver this wide, in millimetres, is worth no page of its own.
constexpr double kSliver = 0.1;

QPageSize UsualPaper()
{
    const bool metric = QLocale::system().measurementSystem() == QLocale::MetricSystem;
    return QPageSize(metric ? QPageSize::A4 : QPageSize::Letter);
}

QPageSize PaperByKey(const QString& key)
{
    for (int id = 0; id <= QPageSize::LastPageSize; ++id) {
        if (QPageSize::key(static_cast<QPageSize::PageSizeId>(id)) == key)
            return QPageSize(static_cast<QPageSize::PageSizeId>(id));
    }
    return UsualPaper();
}

int PagesFor(double length, double page)
{
    return std::max(1, static_cast<int>(std::ceil((length - kSliver) / page)));
}

} // namespace

PageSetup PageSetup::Load(const QSettings& configuration)
{
    PageSetup setup;
    const QVariantList stored = configuration.value(kMargins).toList();
    QMarginsF margins(kUsualMargin, kUsualMargin, kUsualMargin, kUsualMargin);
    if (stored.size() == 4)
        margins = {stored[0].toDouble(), stored[1].toDouble(), stored[2].toDouble(), stored[3].toDouble()};
    setup.page =
        QPageLayout(PaperByKey(configuration.value(kPaper).toString()),
                    configuration.value(kLandscape).toBool() ? QPageLayout::Landscape : QPageLayout::Portrait,
                    margins, QPageLayout::Millimeter);
    setup.fitsPage = configuration.value(kFitsPage, setup.fitsPage).toBool();
    setup.resolution = std::clamp(configuration.value(kResolution, setup.resolution).toInt(), kMinResolution,
                                  kMaxResolution);
    setup.isCentered = configuration.value(kCentered, setup.isCentered).toBool();
    setup.offset = configuration.value(kOffset).toPointF();
    return setup;
}

void PageSetup::Save(QSettings& configuration) const
{
    const QMarginsF margins = page.margins(QPageLayout::Millimeter);
    configuration.setValue(kPaper, page.pageSize().key());
    configuration.setValue(kLandscape, page.orientation() == QPageLayout::Landscape);
    configuration.setValue(kMargins,
                           QVariantList{margins.left(), margins.top(), margins.right(), margins.bottom()});
    configuration.setValue(kFitsPage, fitsPage);
    configuration.setValue(kResolution, resolution);
    configuration.setValue(kCentered, isCentered);
    configuration.setValue(kOffset, offset);
}

QList<QRectF> FrameOnPages(QSizeF picture, const PageSetup& setup)
{
    const QSizeF room = setup.page.paintRect(QPageLayout::Millimeter).size();
    const QSizeF free = setup.isCentered ? room : room - QSizeF(setup.offset.x(), setup.offset.y());
    const QSizeF size = setup.fitsPage ? picture.scaled(free.expandedTo({1, 1}), Qt::KeepAspectRatio)
                                       : picture * (kMillimetresPerInch / setup.resolution);
    const QPointF corner =
        setup.isCentered ? QPointF((room.width() - size.width()) / 2, (room.height() - size.height()) / 2)
                         : setup.offset;
    const int columns = PagesFor(size.width(), room.width());
    const int rows = PagesFor(size.height(), room.height());
    if (columns * rows == 1)
        return {QRectF(corner, size)};
    QList<QRectF> pages;
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column)
            pages.append(QRectF(QPointF(-column * room.width(), -row * room.height()), size));
    }
    return pages;
}
