// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/ui/SaveAsDialog.h"

#include "fileio/ui/LayeredFileDialog.h"
#include "fileio/ui/SaveAsPanel.h"
#include "fileio/ui/SavePreview.h"
#include "platform/ui/PictureView.h"
#include "support/TestPictures.h"

#include <QAbstractButton>
#include <QLabel>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>

#include <gtest/gtest.h>

#include <set>

namespace {

QAbstractButton* ButtonNamed(const QWidget& widget, const char* text)
{
    for (QAbstractButton* button : widget.findChildren<QAbstractButton*>()) {
        if (button->text() == QLatin1String(text))
            return button;
    }
    return nullptr;
}

TEST(SaveAsPanel, StoresWhatItShowsAndNothingElse)
{
    CSettings settings;
    SaveAsOptions options;
    settings.Set(Setting::TIFFEncodeMode, 7);
    const CSaveAsPanel tiff(SavePanel::Tiff, settings, {10, 10});
    ASSERT_TRUE(ButtonNamed(tiff, "&JPEG")->isChecked());
    ButtonNamed(tiff, "&Deflate")->click();
    EXPECT_EQ(settings.Get(Setting::TIFFEncodeMode), 7) << "nothing before the dialog is closed with OK";
    tiff.Store(settings, options);
    EXPECT_EQ(settings.Get(Setting::TIFFEncodeMode), 32946);

    const CSaveAsPanel bmp(SavePanel::Bmp, settings, {10, 10});
    ButtonNamed(bmp, "16 Grays")->click();
    bmp.Store(settings, options);
    EXPECT_EQ(options.bmpColors, DibFormat::Grays16);

    const CSaveAsPanel cursor(SavePanel::HotSpot, settings, {32, 24});
    const auto spins = cursor.findChildren<QSpinBox*>();
    ASSERT_EQ(spins.size(), 2);
    spins[0]->setValue(100);
    spins[1]->setValue(7);
    cursor.Store(settings, options);
    EXPECT_EQ(options.hotSpot, (Point{31, 7})) << "inside the picture";

    settings.Set(Setting::JPGQuality, -5);
    const CSaveAsPanel jpg(SavePanel::Jpg, settings, {10, 10});
    jpg.Store(settings, options);
    EXPECT_EQ(settings.Get(Setting::JPGQuality), -5) << "an untouched value stays as it was stored";
    jpg.findChild<QSpinBox*>()->setValue(60);
    jpg.Store(settings, options);
    EXPECT_EQ(settings.Get(Setting::JPGQuality), 60);
}

TEST(SaveAsDialog, CancelLeavesTheSettingsAndOkTakesThem)
{
    CSettings settings;
    const SaveFormatRow& format = *FindSaveFormat("a.gif");
    for (const int result : {QDialog::Rejected, QDialog::Accepted}) {
        CSaveAsDialog dialog(format, settings, CObjectCanvas(), QString(), QStringLiteral("picture"),
                             nullptr);
        EXPECT_EQ(dialog.selectedNameFilter(), QStringLiteral("GIF (Graphics Interchange Format) (*.gif)"));
        ButtonNamed(dialog, "Interlace")->click();
        static_cast<QDialog&>(dialog).done(result);
        EXPECT_EQ(settings.IsOn(Setting::Interlace), result == QDialog::Accepted);
    }
}

TEST(SaveAsDialog, SpeaksTheLanguageInUse)
{
    SetTextTranslator([](std::string_view text) { return std::string(text.rbegin(), text.rend()); });
    CSettings settings;
    const CSaveAsDialog dialog(*FindSaveFormat("a.gif"), settings, CObjectCanvas(), QString(), QString(),
                               nullptr);
    EXPECT_EQ(dialog.windowTitle(), QLatin1String("eliF FIG nA sA evaS"));
    EXPECT_TRUE(dialog.nameFilters().value(0).startsWith(QLatin1String(")tamroF egnahcretnI")));
    EXPECT_TRUE(dialog.nameFilters().value(0).endsWith(QLatin1String("(*.gif)")));
    SetTextTranslator(nullptr);
}

/// What the labels of a dialog say.
QStringList LabelsOf(const QWidget& widget)
{
    QStringList texts;
    for (const QLabel* label : widget.findChildren<QLabel*>())
        texts.push_back(label->text());
    return texts;
}

TEST(SaveAsDialog, ShowsWhatTheOptionsLeadTo)
{
    CSettings settings;
    CObjectCanvas canvas;
    canvas.width = 300;
    canvas.height = 200;
    canvas.objects.Append(ObjectAt(RandomDib(300, 200, 3), 0, 0));
    CSaveAsDialog dialog(*FindSaveFormat("a.bmp"), settings, canvas, QString(), QStringLiteral("picture"),
                         nullptr);
    auto* preview = dialog.findChild<CSavePreview*>();
    ASSERT_NE(preview, nullptr);
    const auto views = preview->findChildren<CPictureView*>();
    ASSERT_EQ(views.size(), 2);
    QSignalSpy shown(preview, &CSavePreview::Shown);
    ASSERT_TRUE(shown.wait());
    const QImage before = views[0]->Image();
    EXPECT_EQ(views[1]->Image().size(), QSize(300, 200));
    // 54 bytes of headers and 300 * 200 * 3 bytes of pixels.
    EXPECT_TRUE(
        LabelsOf(*preview).contains(QStringLiteral("File size: ") + QLocale().formattedDataSize(180054)));
    EXPECT_TRUE(LabelsOf(*preview).contains(QStringLiteral("This file will not keep: transparency.")));

    ButtonNamed(dialog, "Black && White")->click();
    ButtonNamed(dialog, "256 Grays")->click();
    ASSERT_TRUE(shown.wait());
    EXPECT_EQ(shown.size(), 2) << "one trial for two changes at once";
    EXPECT_TRUE(LabelsOf(*preview).contains(
        QStringLiteral("This file will not keep: transparency, colors other than gray.")));
    EXPECT_TRUE(views[1]->Image().isGrayscale());
    EXPECT_EQ(views[0]->Image(), before);
    EXPECT_EQ(settings.Get(Setting::DefaultBackgroundColor), 0xFFFFFF) << "nothing is taken before OK";
}

TEST(SaveAsDialog, PlaysTheFramesOfAnAnimatedCursor)
{
    CSettings settings;
    CObjectCanvas canvas;
    canvas.width = canvas.height = 32;
    canvas.frameDelay = 2;
    for (const uint32_t colour : {0xFF102030, 0xFF405060})
        canvas.objects.Append(ObjectAt(UniformDib(32, 32, colour), 0, 0));
    CSaveAsDialog dialog(*FindSaveFormat("a.ani"), settings, canvas, QString(), QStringLiteral("busy"),
                         nullptr);
    auto* preview = dialog.findChild<CSavePreview*>();
    ASSERT_NE(preview, nullptr);
    const auto views = preview->findChildren<CPictureView*>();
    QSignalSpy shown(preview, &CSavePreview::Shown);
    ASSERT_TRUE(shown.wait());
    std::set<QRgb> seen;
    EXPECT_TRUE(QTest::qWaitFor([&] {
        EXPECT_EQ(views[0]->Image().pixel(5, 5), views[1]->Image().pixel(5, 5));
        seen.insert(views[1]->Image().pixel(5, 5));
        return seen.size() == 2;
    }));
    canvas.width = canvas.height = 8192;
    EXPECT_FALSE(CSavePreview::CanShow(canvas, *FindSaveFormat("a.ani"))) << "too much for a trial";
}

TEST(LayeredFileDialog, StartsFromTheChoiceAndGivesItBack)
{
    CLayeredFileDialog dialog({true, false}, nullptr);
    EXPECT_TRUE(dialog.Choice().asOnePicture);
    EXPECT_FALSE(dialog.Choice().showAgain);
    ButtonNamed(dialog, "Import these layers as objects")->click();
    EXPECT_FALSE(dialog.Choice().asOnePicture);
    EXPECT_EQ(LabelsOf(CLayeredFileDialog({false, true, true}, nullptr)).size(), LabelsOf(dialog).size() + 1)
        << "what objects cannot show is said";
}

} // namespace
