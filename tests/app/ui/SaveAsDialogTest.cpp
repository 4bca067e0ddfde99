// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/ui/SaveAsDialog.h"

#include "fileio/ui/LayeredFileDialog.h"
#include "fileio/ui/SaveAsPanel.h"

#include <QAbstractButton>
#include <QSpinBox>

#include <gtest/gtest.h>

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
        CSaveAsDialog dialog(format, settings, {10, 10}, QString(), QStringLiteral("picture"), nullptr);
        EXPECT_EQ(dialog.selectedNameFilter(), QStringLiteral("GIF (Graphics Interchange Format) (*.gif)"));
        ButtonNamed(dialog, "Interlace")->click();
        static_cast<QDialog&>(dialog).done(result);
        EXPECT_EQ(settings.IsOn(Setting::Interlace), result == QDialog::Accepted);
    }
}

TEST(LayeredFileDialog, StartsFromTheChoiceAndGivesItBack)
{
    CLayeredFileDialog dialog({true, false}, nullptr);
    EXPECT_TRUE(dialog.Choice().asOnePicture);
    EXPECT_FALSE(dialog.Choice().showAgain);
    ButtonNamed(dialog, "Import these layers as objects")->click();
    EXPECT_FALSE(dialog.Choice().asOnePicture);
}

} // namespace
