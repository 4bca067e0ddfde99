// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/commands/CommandFamilies.h"
#include "imageops/ImmediateTransform.h"

namespace {

using enum CommandId;

template <TransformKind kind> bool Immediate(CommandContext& context)
{
    return RunImmediateTransform(*context.document, kind);
}

constexpr CommandRow DialogRow(CommandId id, std::string_view menu, int group, std::string_view text,
                               std::string_view prompt, std::string_view tip, std::string_view icon)
{
    return {id, menu, group, text, prompt, tip, "", icon, HasShellAndDocument, nullptr, RunInShell};
}

template <TransformKind kind>
constexpr CommandRow ImmediateRow(CommandId id, int group, std::string_view text, std::string_view prompt,
                                  std::string_view tip, std::string_view shortcut, std::string_view icon)
{
    return {id, "Transform", group, text, prompt, tip, shortcut, icon, HasDocument, nullptr, Immediate<kind>};
}

constexpr CommandRow kRows[] = {
    ImmediateRow<TransformKind::Gray>(TransformGray, 0, "&Gray", "Gray all selected objects", "Gray", "",
                                      "gray"),
    ImmediateRow<TransformKind::Negative>(TransformNegative, 0, "&Negative",
                                          "Creates Negatives of selected object(s)", "Negative", "Ctrl+I",
                                          "negative"),
    DialogRow(TransformBrightnessContrast, "Transform", 1, "&Brightness/Contrast...", "",
              "Brightness/Contrast", "brightness-contrast"),
    DialogRow(TransformRedGreenBlue, "Transform", 1, "&Red/Green/Blue...",
              "Adjusts red and green and blue value of all pixles in image", "Red/Green/Blue",
              "red-green-blue"),
    DialogRow(TransformHueSaturationLightness, "Transform", 1, "&Hue/Saturation/Lightness...",
              "Adjusts hue and saturation and lightness", "Hue/Saturation/Lightness", "hue-saturation"),
    ImmediateRow<TransformKind::MirrorHorizontally>(TransformMirrorHorizontally, 2, "Mirror &horizontally",
                                                    "Mirrors all selected objects horizontally",
                                                    "Mirror horizontally", "", "mirror-horizontally"),
    ImmediateRow<TransformKind::MirrorVertically>(TransformMirrorVertically, 2, "Mirror &vertically",
                                                  "Mirrors all selected objects vertically",
                                                  "Mirror vertically", "", "mirror-vertically"),
    DialogRow(RotateLeft45, "Transform/Rotate", 2, "Left 45 Degrees...",
              "Rotates all selected objects left 45 degrees", "Rotate left 45 degrees", ""),
    DialogRow(RotateLeft90, "Transform/Rotate", 2, "Left 90 Degrees...",
              "Rotates all selected objects left 90 degrees", "Rotate left 90 degrees", "rotate-left"),
    DialogRow(Rotate180, "Transform/Rotate", 2, "180 Degrees...", "Rotates all selected objects 180 degrees",
              "Rotate 180 degrees", ""),
    DialogRow(RotateRight45, "Transform/Rotate", 2, "Right 45 Degrees...",
              "Rotates all selected objects right 45 degrees", "Rotate right 45 degrees", ""),
    DialogRow(RotateRight90, "Transform/Rotate", 2, "Right 90 Degrees...",
              "Rotates all selected objects right 90 degrees", "Rotate right 90 degrees", "rotate-right"),
    DialogRow(RotateCustom, "Transform/Rotate", 2, "Custom Angle...",
              "Rotates all selected objects by a custom angle", "Rotate by a custom angle", "rotate"),
    DialogRow(TransformBlur, "Transform", 3, "Bl&ur...",
              "Blurs selected objects by averaging the color in adjacent pixels", "Blur", "blur"),
    DialogRow(TransformGaussianBlur, "Transform", 3, "G&aussian Blur...",
              "A powerful Blur filter,with more extreme bluring applied to all selected objects",
              "Gaussian Blur", "gaussian-blur"),
    DialogRow(TransformSharpness, "Transform", 3, "&Sharpness...",
              "Increases the color difference in adjacent pixels to all selected objects", "Sharpness",
              "sharpness"),
    DialogRow(TransformEmboss, "Transform", 3, "&Emboss...",
              "Converts all selected objects to reliefs in grayscale", "Emboss", "emboss"),
    DialogRow(TransformSunspot, "Transform", 3, "Sunsp&ot...", "", "Sunspot", "sunspot"),
};

} // namespace

std::span<const CommandRow> TransformCommands()
{
    return kRows;
}
