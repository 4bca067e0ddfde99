// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/settings/Settings.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace {

class CMapStore final : public ISettingsStore {
public:
    std::optional<int32_t> Read(std::string_view name) const override
    {
        const auto found = values.find(name);
        return found == values.end() ? std::nullopt : std::optional(found->second);
    }
    void Write(std::string_view name, int32_t value) override { values[std::string(name)] = value; }

    std::map<std::string, int32_t, std::less<>> values;
};

TEST(Settings, StoredValuesOutsideTheirRangeBecomeTheFallback)
{
    struct Row {
        const char* name;
        int32_t stored;
        int32_t read;
    };
    constexpr Row kCases[] = {
        {"UndoMaxTimes", 0, 26},      {"UndoMaxTimes", -7, 26},      {"UndoMaxTimes", 5000, 5000},
        {"JPGQuality", 150, 85},      {"JPGQuality", -5, -5},        {"BannerFillMode", 9, 1},
        {"BannerFillMode", 5, 5},     {"TIFFEncodeMode", 2, 1},      {"TIFFEncodeMode", 32946, 32946},
        {"NewImageWidth", 2001, 640}, {"NewImageWidth", 2000, 2000}, {"BannerAlign", 1, 0},
        {"BannerAlign", 6, 6},        {"LineOpacity", 1000, 1000},   {"ThumbnailSizeOption", 6, 1},
    };
    for (const Row& row : kCases) {
        SCOPED_TRACE(row.name);
        CMapStore store;
        store.values[row.name] = row.stored;
        CSettings settings;
        settings.ReadAll(store);
        EXPECT_EQ(settings.Get(*CSettings::Find(row.name)), row.read);
    }
}

TEST(Settings, ShapeWidthAndFillInsideAreWrittenButNeverRead)
{
    CMapStore store;
    CSettings settings;
    settings.Set(Setting::PaintShapeWidth, 9);
    settings.Set(Setting::FillInsideShape, 1);
    settings.Set(Setting::EraseLineWidth, 50);
    settings.WriteAll(store);
    EXPECT_EQ(store.values.size(), kSettingCount);
    CSettings next;
    next.ReadAll(store);
    EXPECT_EQ(next.Get(Setting::PaintShapeWidth), 3);
    EXPECT_EQ(next.Get(Setting::FillInsideShape), 0);
    EXPECT_EQ(next.Get(Setting::EraseLineWidth), 50);
    EXPECT_EQ(next.Get(Setting::BannerFillMode), 0) << "a missing value is the default, not the fallback";
}

} // namespace
