// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/SettingsStore.h"
#include "app/ui/NewImageDialog.h"
#include "app/ui/PreferencesDialog.h"
#include "app/ui/Shortcuts.h"
#include "platform/ui/ColorButton.h"
#include "ui/UiTest.h"

#include <QRadioButton>
#include <QSpinBox>

namespace {

QRadioButton* Choice(QWidget& dialog, const char* text)
{
    for (auto* button : dialog.findChildren<QRadioButton*>()) {
        if (button->text() == QLatin1String(text))
            return button;
    }
    return nullptr;
}

} // namespace

TEST(NewImageDialog, ColourCanBeChosenOnlyForASimpleColour)
{
    CSettings settings;
    settings.Set(Setting::InitTransparent, 1);
    CNewImageDialog dialog(settings, nullptr);
    auto* color = dialog.findChild<CColorButton*>();
    ASSERT_NE(Choice(dialog, "Simple color"), nullptr);
    EXPECT_TRUE(Choice(dialog, "Transparent")->isChecked());
    EXPECT_FALSE(color->isEnabled());
    Choice(dialog, "Simple color")->click();
    EXPECT_TRUE(color->isEnabled());
}

TEST(NewImageDialog, OnlyOkStoresTheFourSettings)
{
    CSettings settings;
    const auto edit = [&](CNewImageDialog& dialog) {
        const auto sizes = dialog.findChildren<QSpinBox*>();
        sizes[0]->setValue(5000);
        sizes[1]->setValue(7);
        dialog.findChild<CColorButton*>()->SetColor(0x123456);
        Choice(dialog, "Transparent")->click();
    };
    CNewImageDialog cancelled(settings, nullptr);
    edit(cancelled);
    cancelled.reject();
    EXPECT_EQ(settings.Get(Setting::NewImageWidth), 640);
    EXPECT_EQ(settings.Get(Setting::InitTransparent), 0);

    CNewImageDialog accepted(settings, nullptr);
    edit(accepted);
    accepted.accept();
    EXPECT_EQ(settings.Get(Setting::NewImageWidth), 2000) << "the largest size that is allowed";
    EXPECT_EQ(settings.Get(Setting::NewImageHeight), 7);
    EXPECT_EQ(settings.Get(Setting::InitColor), 0x123456);
    EXPECT_EQ(settings.Get(Setting::InitTransparent), 1);
}

TEST(PreferencesDialog, KeepsTheHistoryLimitInItsRange)
{
    CSettings settings;
    CShortcuts shortcuts;
    CPreferencesDialog dialog(settings, shortcuts, nullptr);
    auto* levels = dialog.findChild<QSpinBox*>();
    levels->setFocus();
    levels->selectAll();
    QTest::keyClicks(levels, QStringLiteral("10001"));
    Choice(dialog, "Import composite image or the first  layer as a single frame")->click();
    dialog.accept();
    EXPECT_EQ(settings.Get(Setting::UndoMaxTimes), 1000) << "a fifth digit is not taken";
    EXPECT_EQ(settings.Get(Setting::PSDOpenFashion), 1);
}

TEST(SettingsStore, KeepsValuesUnderTheirNamesAndDropsForeignText)
{
    const CTemporaryFolder folder;
    const QString path = QString::fromStdString((folder.Path() / "settings.ini").string());
    {
        QSettings configuration(path, QSettings::IniFormat);
        CSettingsStore store(configuration);
        store.Write("JPGQuality", -5);
        configuration.setValue(QStringLiteral("Default/UndoMaxTimes"), QStringLiteral("many"));
        configuration.setValue(QStringLiteral("Default/InitColor"), 4294967295U);
    }
    QSettings configuration(path, QSettings::IniFormat);
    const CSettingsStore store(configuration);
    EXPECT_EQ(configuration.value(QStringLiteral("Default/JPGQuality")).toInt(), -5);
    EXPECT_EQ(store.Read("JPGQuality"), -5);
    EXPECT_EQ(store.Read("UndoMaxTimes"), std::nullopt);
    EXPECT_EQ(store.Read("InitColor"), -1) << "32 bits, whatever the sign";
    EXPECT_EQ(store.Read("Missing"), std::nullopt);
}
