// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/settings/Settings.h"

#include <algorithm>

namespace {

constexpr bool Any(int32_t /*value*/)
{
    return true;
}

template <int32_t minimum, int32_t maximum> constexpr bool In(int32_t value)
{
    return value >= minimum && value <= maximum;
}

template <int32_t... allowed> constexpr bool OneOf(int32_t value)
{
    return ((value == allowed) || ...);
}

constexpr auto kAtLeastOne = &In<1, INT32_MAX>;
constexpr auto kAtMostHundred = &In<INT32_MIN, 100>;
constexpr auto kStored = SettingStorage::ReadAndWritten;
constexpr auto kOneWay = SettingStorage::OnlyWritten;
constexpr int32_t kWhite = 0xFFFFFF;

using enum Setting;

constexpr SettingRow kRows[] = {
    {PreviewPic, "PreviewPic", 1, Any, 0, kStored},
    {ShowPSDOpenFashionTip, "ShowPSDOpenFashionTip", 1, Any, 0, kStored},
    {PSDOpenFashion, "PSDOpenFashion", 0, In<0, 1>, 0, kStored},
    {DefaultBackgroundColor, "DefaultBackgroundColor", kWhite, Any, 0, kStored},
    {UndoMaxTimes, "UndoMaxTimes", 26, kAtLeastOne, 26, kStored},
    {ShowAllItems, "ShowAllItems", 1, Any, 0, kStored},
    {ThumbnailSizeOption, "ThumbnailSizeOption", 1, In<0, 5>, 1, kStored},
    {ShowDetails, "ShowDetails", 1, Any, 0, kStored},
    {AutoPlay, "AutoPlay", 1, Any, 0, kStored},
    {Similarity, "Similarity", 32, In<0, 255>, 32, kStored},
    {ConnectedPixelsMagicWand, "ConnectedPixelsMagicWand", 1, Any, 0, kStored},
    {EraseLineWidth, "EraseLineWidth", 8, In<1, 50>, 8, kStored},
    {EraseRoundCap, "EraseRoundCap", 1, Any, 0, kStored},
    {EraseBeeline, "EraseBeeline", 0, Any, 0, kStored},
    {EraseTransparence, "EraseTransparence", 255, In<0, 255>, 255, kStored},
    {EraseSmoothDegree, "EraseSmoothDegree", 100, In<0, 100>, 100, kStored},
    {PaintLineWidth, "PaintLineWidth", 8, In<1, 50>, 8, kStored},
    {PaintRoundCap, "PaintRoundCap", 1, Any, 0, kStored},
    {PaintBeeline, "PaintBeeline", 0, Any, 0, kStored},
    {LineSmoothDegree, "LineSmoothDegree", 100, In<0, 100>, 100, kStored},
    {LineOpacity, "LineOpacity", 0, Any, 0, kStored},
    {AllowPaintTransparence, "AllowPaintTransparence", 1, Any, 0, kStored},
    {RoundRadius, "RoundRadius", 0, In<0, 50>, 0, kStored},
    {FillShapeMode, "FillShapeMode", 0, In<0, 5>, 0, kStored},
    {ShapeOpacity, "ShapeOpacity", 0, In<0, 255>, 0, kStored},
    {FloodOpacity, "FloodOpacity", 0, In<0, 255>, 0, kStored},
    {FloodAdjacentArea, "FloodAdjacentArea", 1, Any, 0, kStored},
    {FloodSimilarity, "FloodSimilarity", 32, In<0, 100>, 32, kStored},
    {FloodTransparence, "FloodTransparence", 1, Any, 0, kStored},
    {PaintBackgndColor, "PaintBackgndColor", kWhite, Any, 0, kStored},
    {PaintForeColor, "PaintForeColor", 0, Any, 0, kStored},
    {BannerSingleColor, "BannerSingleColor", 0, Any, 0, kStored},
    {BannerGradientColor1, "BannerGradientColor1", kWhite, Any, 0, kStored},
    {BannderGradientColor2, "BannderGradientColor2", 0, Any, 0, kStored},
    {BannerFillMode, "BannerFillMode", 0, In<0, 5>, 1, kStored},
    {BannerLine, "BannerLine", 0, In<0, 100>, 0, kStored},
    {BannerSmooth, "BannerSmooth", 1, Any, 0, kStored},
    {BannerVertical, "BannerVertical", 0, Any, 0, kStored},
    {BannerAlign, "BannerAlign", 0, OneOf<0, 2, 6>, 0, kStored},
    {TextBlendOpacity, "TextBlendOpacity", 0, Any, 0, kStored},
    {KeepAspectWhenResizing, "KeepAspectWhenResizing", 1, Any, 0, kStored},
    {JPGQuality, "JPGQuality", 85, kAtMostHundred, 85, kStored},
    {Interlace, "Interlace", 0, Any, 0, kStored},
    {TIFFEncodeMode, "TIFFEncodeMode", 1, OneOf<1, 3, 4, 5, 7, 8, 32946>, 1, kStored},
    {BottomUpOrientation, "BottomUpOrientation", 0, Any, 0, kStored},
    {TGAEncodingRLE, "TGAEncodingRLE", 1, Any, 0, kStored},
    {NewImageWidth, "NewImageWidth", 640, In<1, 2000>, 640, kStored},
    {NewImageHeight, "NewImageHeight", 480, In<1, 2000>, 480, kStored},
    {InitTransparent, "InitTransparent", 0, Any, 0, kStored},
    {InitColor, "InitColor", kWhite, Any, 0, kStored},
    {PaintShapeWidth, "PaintShapeWidth", 3, Any, 0, kOneWay},
    {FillInsideShape, "FillInsideShape", 0, Any, 0, kOneWay},
};

constexpr bool RowsStandInOrder()
{
    for (size_t i = 0; i < std::size(kRows); ++i) {
        if (static_cast<size_t>(kRows[i].id) != i)
            return false;
    }
    return std::size(kRows) == kSettingCount;
}
static_assert(RowsStandInOrder());

} // namespace

CSettings::CSettings()
{
    for (const SettingRow& row : kRows)
        Set(row.id, row.initial);
}

void CSettings::SetAsStored(Setting setting, int32_t value)
{
    const SettingRow& row = Row(setting);
    const bool kept = row.storage == kOneWay || row.isValid(value);
    Set(setting, kept ? value : row.fallback);
}

void CSettings::ReadAll(const ISettingsStore& store)
{
    for (const SettingRow& row : kRows) {
        if (row.storage == kOneWay)
            continue;
        if (const std::optional<int32_t> value = store.Read(row.name))
            SetAsStored(row.id, *value);
    }
}

void CSettings::WriteAll(ISettingsStore& store) const
{
    for (const SettingRow& row : kRows)
        store.Write(row.name, Get(row.id));
}

const SettingRow& CSettings::Row(Setting setting)
{
    return kRows[static_cast<size_t>(setting)];
}

std::optional<Setting> CSettings::Find(std::string_view name)
{
    const auto* row = std::find_if(std::begin(kRows), std::end(kRows),
                                   [&](const SettingRow& candidate) { return candidate.name == name; });
    if (row == std::end(kRows))
        return std::nullopt;
    return row->id;
}
