// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/Printing.h"

#include "app/ui/PageSetupDialog.h"
#include "app/ui/PrintPreviewDialog.h"
#include "platform/ui/QtText.h"
#include "ui/UiTest.h"

#include <QAbstractButton>
#include <QDir>
#include <QLabel>
#include <QPainter>
#include <QPrinter>
#include <QProcess>
#include <QSpinBox>
#include <QStandardPaths>
#include <QTest>
#include <QToolBar>

namespace {

constexpr int kPointsPerInch = 72;

int ToPoints(double millimetres)
{
    return qRound(millimetres / 25.4 * kPointsPerInch);
}

/// Prints a picture, the left half red and the right half blue, and draws the pages one pixel a point.
class CPrintingTest : public CWindowTest {
protected:
    CPrintingTest()
    {
        m_setup.page = QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF(20, 10, 20, 10),
                                   QPageLayout::Millimeter);
    }

    QList<QImage> Print(int width, int height)
    {
        m_app.Settings().Set(Setting::NewImageWidth, width);
        m_app.Settings().Set(Setting::NewImageHeight, height);
        CPixoluneDoc& document = *m_app.NewDocument();
        CPackedDib& dib = document.Canvas().objects.At(0)->image->MutableDib();
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                const uint8_t pixel[] = {uint8_t(x < width / 2 ? 0 : 255), 0,
                                         uint8_t(x < width / 2 ? 255 : 0), 255};
                std::copy_n(pixel, 4, dib.Row(y) + x * 4);
            }
        }
        const QDir folder(QString::fromStdString(m_folder.Path().string()));
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(folder.filePath(QStringLiteral("out.pdf")));
        printer.setPageLayout(m_setup.page);
        EXPECT_TRUE(PrintFrame(document, m_setup, printer));
        QProcess::execute(m_renderer,
                          {QStringLiteral("-q"), QStringLiteral("-dNOPAUSE"), QStringLiteral("-dBATCH"),
                           QStringLiteral("-dSAFER"), QStringLiteral("-sDEVICE=png16m"),
                           QStringLiteral("-r72"), QStringLiteral("-o"),
                           folder.filePath(QStringLiteral("page%d.png")), printer.outputFileName()});
        QList<QImage> pages;
        for (int page = 1;; ++page) {
            const QImage image(folder.filePath(QStringLiteral("page%1.png").arg(page)));
            if (image.isNull())
                return pages;
            pages.append(image);
        }
    }

    /// Compares the edges of the picture on the middle lines of the page, to a point.
    static void ExpectPicture(const QImage& page, const QRectF& millimetres)
    {
        const QRect place(QPoint(ToPoints(millimetres.left()), ToPoints(millimetres.top())),
                          QPoint(ToPoints(millimetres.right()), ToPoints(millimetres.bottom())));
        const auto isColor = [&page](int x, int y, QColor expected) {
            const QColor color(page.pixel(x, y));
            return std::abs(color.red() - expected.red()) + std::abs(color.green() - expected.green()) +
                       std::abs(color.blue() - expected.blue()) <
                   60;
        };
        constexpr int kNear = 2;
        constexpr int kBesideBlend = 8; ///< the smooth step from red to blue
        const int middle = place.center().y();
        EXPECT_TRUE(isColor(place.left() - kNear, middle, Qt::white));
        EXPECT_TRUE(isColor(place.left() + kNear, middle, Qt::red));
        EXPECT_TRUE(isColor(place.center().x() - kBesideBlend, middle, Qt::red));
        EXPECT_TRUE(isColor(place.center().x() + kBesideBlend, middle, Qt::blue));
        EXPECT_TRUE(isColor(place.right() - kNear, middle, Qt::blue));
        EXPECT_TRUE(isColor(place.right() + kNear, middle, Qt::white));
        const int column = place.left() + place.width() / 4;
        EXPECT_TRUE(isColor(column, place.top() - kNear, Qt::white));
        EXPECT_TRUE(isColor(column, place.top() + kNear, Qt::red));
        EXPECT_TRUE(isColor(column, place.bottom() - kNear, Qt::red));
        EXPECT_TRUE(isColor(column, place.bottom() + kNear, Qt::white));
    }

    void SetUp() override
    {
        if (m_renderer.isEmpty())
            GTEST_SKIP() << "gs, which draws the pages, is not installed";
    }

    PageSetup m_setup;
    QString m_renderer = QStandardPaths::findExecutable(QStringLiteral("gs"));
};

} // namespace

TEST_F(CPrintingTest, FrameFitsBetweenTheMargins)
{
    const QList<QImage> upright = Print(200, 100);
    ASSERT_EQ(upright.size(), 1);
    EXPECT_EQ(upright[0].size(), QSize(595, 842));
    ExpectPicture(upright[0], {20, 10 + (277 - 85) / 2.0, 170, 85});

    m_setup.page.setOrientation(QPageLayout::Landscape);
    m_setup.isCentered = false;
    m_setup.offset = {4, 0};
    m_setup.page.setMargins({30, 15, 50, 20});
    const QList<QImage> turned = Print(200, 100);
    ASSERT_EQ(turned.size(), 1);
    EXPECT_EQ(turned[0].size(), QSize(842, 595));
    ExpectPicture(turned[0], {34, 15, 213, 106.5});
}

TEST_F(CPrintingTest, ActualSizeFollowsTheResolution)
{
    m_setup.fitsPage = false;
    m_setup.resolution = 50;
    m_setup.isCentered = false;
    m_setup.offset = {30, 40};
    const QList<QImage> pages = Print(200, 100);
    ASSERT_EQ(pages.size(), 1);
    ExpectPicture(pages[0], {50, 50, 101.6, 50.8});
}

TEST_F(CPrintingTest, LargeFrameContinuesOnMorePages)
{
    m_setup.fitsPage = false;
    m_setup.resolution = 10;
    // 177.8 x 304.8 mm on 170 x 277 mm
    const QList<QImage> pages = Print(70, 120);
    ASSERT_EQ(pages.size(), 4);
    const auto color = [&pages](int page, double x, double y) {
        const QColor shown(pages[page].pixel(ToPoints(x), ToPoints(y)));
        const auto full = [](int part) { return part > 127 ? 255 : 0; };
        return QColor(full(shown.red()), full(shown.green()), full(shown.blue()));
    };
    EXPECT_EQ(color(0, 22, 280), QColor(Qt::red));
    EXPECT_EQ(color(0, 22, 290), QColor(Qt::white)) << "the margin stays clear";
    EXPECT_EQ(color(1, 25, 50), QColor(Qt::blue));
    EXPECT_EQ(color(1, 30, 50), QColor(Qt::white));
    EXPECT_EQ(color(2, 25, 36), QColor(Qt::red));
    EXPECT_EQ(color(2, 25, 40), QColor(Qt::white));
}

TEST_F(CWindowTest, PreviewTurnsThePages)
{
    QPrinter printer;
    int pageCount = 3;
    const auto paint = [&pageCount](QPrinter& target) {
        const QPainter painter(&target);
        for (int page = 1; page < pageCount; ++page)
            target.newPage();
    };
    const auto setUpPage = [&pageCount](QWidget&) {
        pageCount = 1;
        return true;
    };
    CPrintPreviewDialog dialog(printer, paint, setUpPage, nullptr);
    dialog.show();
    const auto text = [&dialog] { return dialog.findChild<QLabel*>()->text(); };
    const auto action = [&dialog](Str name) {
        for (QAction* one : dialog.findChild<QToolBar*>()->actions()) {
            if (one->text() == ToQString(name))
                return one;
        }
        return static_cast<QAction*>(nullptr);
    };
    ASSERT_TRUE(QTest::qWaitFor([&] { return text() == QLatin1String("Page 1 of 3"); }))
        << text().toStdString();
    EXPECT_FALSE(action(Str::PreviousPage)->isEnabled());
    action(Str::NextPage)->trigger();
    action(Str::NextPage)->trigger();
    EXPECT_EQ(text(), QLatin1String("Page 3 of 3"));
    EXPECT_FALSE(action(Str::NextPage)->isEnabled());
    action(Str::ShowPageSetup)->trigger();
    EXPECT_TRUE(QTest::qWaitFor([&] { return text() == QLatin1String("Page 1 of 1"); }))
        << text().toStdString();
}

TEST_F(CWindowTest, PageSetupIsRemembered)
{
    OnNextDialog<CPageSetupDialog>([](CPageSetupDialog& dialog) {
        for (auto* box : dialog.findChildren<QAbstractSpinBox*>()) {
            if (auto* millimetres = qobject_cast<QDoubleSpinBox*>(box))
                millimetres->setValue(17);
            if (auto* resolution = qobject_cast<QSpinBox*>(box))
                resolution->setValue(300);
        }
        for (auto* button : dialog.findChildren<QAbstractButton*>()) {
            if (QStringList({QStringLiteral("&Landscape"), QStringLiteral("&Actual size at"),
                             QStringLiteral("&Centered")})
                    .contains(button->text()))
                button->click();
        }
        dialog.accept();
    });
    m_window.Action(CommandId::FilePageSetup)->trigger();
    const PageSetup setup = PageSetup::Load(m_configuration);
    EXPECT_EQ(setup.page.orientation(), QPageLayout::Landscape);
    EXPECT_EQ(setup.page.margins(QPageLayout::Millimeter), QMarginsF(17, 17, 17, 17));
    EXPECT_FALSE(setup.fitsPage);
    EXPECT_EQ(setup.resolution, 300);
    EXPECT_FALSE(setup.isCentered);
    EXPECT_EQ(setup.offset, QPointF(17, 17));
}
