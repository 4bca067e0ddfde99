// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

/// Every stored setting, in the order of the table.
enum class Setting {
    PreviewPic,
    ShowPSDOpenFashionTip,
    PSDOpenFashion,
    DefaultBackgroundColor,
    UndoMaxTimes,
    ShowAllItems,
    ThumbnailSizeOption,
    ShowDetails,
    AutoPlay,
    Similarity,
    ConnectedPixelsMagicWand,
    EraseLineWidth,
    EraseRoundCap,
    EraseBeeline,
    EraseTransparence,
    EraseSmoothDegree,
    PaintLineWidth,
    PaintRoundCap,
    PaintBeeline,
    LineSmoothDegree,
    LineOpacity,
    AllowPaintTransparence,
    RoundRadius,
    FillShapeMode,
    ShapeOpacity,
    FloodOpacity,
    FloodAdjacentArea,
    FloodSimilarity,
    FloodTransparence,
    PaintBackgndColor,
    PaintForeColor,
    BannerSingleColor,
    BannerGradientColor1,
    BannderGradientColor2,
    BannerFillMode,
    BannerLine,
    BannerSmooth,
    BannerVertical,
    BannerAlign,
    TextBlendOpacity,
    KeepAspectWhenResizing,
    JPGQuality,
    Interlace,
    TIFFEncodeMode,
    BottomUpOrientation,
    TGAEncodingRLE,
    NewImageWidth,
    NewImageHeight,
    InitTransparent,
    InitColor,
    PaintShapeWidth,
    FillInsideShape,
    Count
};
inline constexpr size_t kSettingCount = static_cast<size_t>(Setting::Count);

/// Whether a stored value is read at the next start or only written at exit.
enum class SettingStorage { ReadAndWritten, OnlyWritten };

/// One row of the settings table. Colours are COLORREF values, 0x00bbggrr.
struct SettingRow {
    Setting id;
    std::string_view name;
    int32_t initial;
    bool (*isValid)(int32_t value); ///< what a stored value must fulfil
    int32_t fallback;               ///< stands in for a stored value that does not
    SettingStorage storage;
};

/// Where settings are kept between runs: 32-bit values by name.
class ISettingsStore {
public:
    virtual ~ISettingsStore() = default;
    [[nodiscard]] virtual std::optional<int32_t> Read(std::string_view name) const = 0;
    virtual void Write(std::string_view name, int32_t value) = 0;
};

/// The settings in memory. Read once at start and written once at exit; dialogs and tool pages change the
/// values in between, and tools read them when they act.
class CSettings {
public:
    CSettings();

    [[nodiscard]] int32_t Get(Setting setting) const { return m_values[static_cast<size_t>(setting)]; }
    [[nodiscard]] bool IsOn(Setting setting) const { return Get(setting) != 0; }
    /// Sets the value as it is; callers keep to the setting's range.
    void Set(Setting setting, int32_t value) { m_values[static_cast<size_t>(setting)] = value; }
    /// Takes a value as one that was read from the store: outside its range the fallback stands in. The
    /// two settings that are never read are set as they are.
    void SetAsStored(Setting setting, int32_t value);

    void ReadAll(const ISettingsStore& store);
    void WriteAll(ISettingsStore& store) const;

    [[nodiscard]] static const SettingRow& Row(Setting setting);
    [[nodiscard]] static std::optional<Setting> Find(std::string_view name);

private:
    std::array<int32_t, kSettingCount> m_values{};
};
