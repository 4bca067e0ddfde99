// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/SaveOptions.h"

#include "cli/Quoting.h"

#include <algorithm>
#include <array>

namespace {

constexpr int kLargestHotSpot = UINT16_MAX;

/// In the order of the colour depths.
constexpr std::array<std::string_view, 7> kColors{"black-white", "16-colors", "256-colors", "high",
                                                  "true",        "16-grays",  "256-grays"};

DibFormat ParseColors(CArguments& arguments, const std::string& value)
{
    const auto found = std::ranges::find(kColors, value);
    if (found == kColors.end()) {
        arguments.Reject("colors: " + Quoted(value) + " is no colour depth");
        return DibFormat::TrueColors;
    }
    return static_cast<DibFormat>(found - kColors.begin());
}

Point ParseHotSpot(CArguments& arguments, const std::string& value)
{
    const size_t comma = value.find(',');
    const std::string y = comma == std::string::npos ? std::string() : value.substr(comma + 1);
    return {arguments.IntegerOf("hotspot", value.substr(0, comma), 0, kLargestHotSpot),
            arguments.IntegerOf("hotspot", y, 0, kLargestHotSpot)};
}

} // namespace

SaveTarget TakeSaveTarget(CArguments& arguments)
{
    constexpr std::array<std::string_view, 2> kKeys{"colors", "hotspot"};
    SaveTarget target;
    target.path = arguments.Path();
    target.format = FindSaveFormat(target.path);
    if (target.format == nullptr)
        arguments.Reject(Quoted(target.path.string()) + " has no extension that can be saved");
    while (const std::optional<KeyValue> option = arguments.Option(kKeys)) {
        const bool isColors = option->key == 0;
        if (target.format->panel != (isColors ? SavePanel::Bmp : SavePanel::HotSpot))
            arguments.Reject(std::string(kKeys[option->key]) + " is no option of this format");
        else if (isColors)
            target.options.bmpColors = ParseColors(arguments, option->value);
        else
            target.options.hotSpot = ParseHotSpot(arguments, option->value);
    }
    return target;
}
