// SPDX-License-Identifier: GPL-3.0-or-later
#include "imageops/TransformTable.h"

#include "history/PixelEditCommand.h"
#include "imageops/BoxBlur.h"
#include "imageops/EmbossDib.h"
#include "imageops/GaussianBlur.h"
#include "imageops/GrayDib.h"
#include "imageops/MirrorDib.h"
#include "imageops/NegativeDib.h"
#include "imageops/RotateDib.h"
#include "imageops/SharpenDib.h"
#include "imageops/SunspotDib.h"
#include "platform/transform/AdjustBrightContrast.h"
#include "platform/transform/AdjustHsl.h"
#include "platform/transform/AdjustRgb.h"

#include <algorithm>

namespace {

using enum TransformPlacement;

constexpr TransformChoice kDirections[] = {{Str::DirectionRight, 0},
                                           {Str::DirectionUp, 90},
                                           {Str::DirectionLeft, 180},
                                           {Str::DirectionDown, 270},
                                           {Str::CustomAngle, {}}};
constexpr TransformChoice kTurns[] = {{Str::RotateLeft45, 315}, {Str::RotateRight45, 45},
                                      {Str::RotateLeft90, 270}, {Str::RotateRight90, 90},
                                      {Str::Rotate180, 180},    {Str::CustomAngle, {}}};
constexpr TransformParameter kChannels[] = {
    {Str::Red, -255, 255, 0, 32}, {Str::Green, -255, 255, 0, 32}, {Str::Blue, -255, 255, 0, 32}};
constexpr TransformParameter kHueSaturationLightness[] = {
    {Str::Hue, -180, 180, 0, 22}, {Str::Saturation, -100, 100, 0, 12}, {Str::Lightness, -100, 100, 0, 12}};
constexpr TransformParameter kBrightnessContrast[] = {{Str::Brightness, -255, 255, 0, 32},
                                                      {Str::Contrast, -127, 127, 0, 16}};
constexpr TransformParameter kBlur[] = {{Str::BlurSize, 1, kMaxBlurSize, 1, 5}};
constexpr TransformParameter kSharpness[] = {{Str::SharpnessDegree, 0, 255, 0, 32}};
constexpr TransformParameter kEmboss[] = {{Str::Elevation, 0, 255, 128, 20},
                                          {Str::Weight, 0, 15, 1, 1},
                                          {Str::Clockwise, 0, 360, 0, 0, kDirections, Str::Azimuth}};
constexpr TransformParameter kSunspot[] = {{Str::HorizontalPosition, 0, 100, 20, 12},
                                           {Str::VerticalPosition, 0, 100, 80, 12},
                                           {Str::Brightness, 0, 255, 45, 30}};
constexpr TransformParameter kRotate[] = {{Str::Clockwise, 0, 360, 0, 0, kTurns}};

bool Never(TransformValues /*values*/)
{
    return false;
}

bool AllZero(TransformValues values)
{
    return std::ranges::all_of(values, [](int value) { return value == 0; });
}

bool BelowThree(TransformValues values)
{
    return values[0] < 3;
}

bool IsFullTurn(TransformValues values)
{
    return values[0] % 360 == 0;
}

/// Calls a kernel with as many of the values as it takes.
template <auto kernel> CPackedDib Run(const CPackedDib& dib, TransformValues values)
{
    if constexpr (requires { kernel(dib); })
        return kernel(dib);
    else if constexpr (requires { kernel(dib, 0); })
        return kernel(dib, values[0]);
    else
        return kernel(dib, values[0], values[1], values[2]);
}

CPackedDib AdjustChannels(const CPackedDib& dib, int red, int green, int blue)
{
    return AdjustDIBRGB(dib, red, green, blue, nullptr, 0);
}

CPackedDib AdjustHue(const CPackedDib& dib, int hue, int saturation, int lightness)
{
    return AdjustDIBHSL(dib, hue, saturation, lightness, nullptr, 0);
}

CPackedDib AdjustBrightness(const CPackedDib& dib, TransformValues values)
{
    return AdjustDIBBrightAndConstract(dib, values[0], values[1], nullptr, 0);
}

CPackedDib Rotate(const CPackedDib& dib, TransformValues values)
{
    return RotateDib(dib, values[0], 0);
}

template <TransformKind kind> std::unique_ptr<CPictureCommand> Command()
{
    return std::make_unique<CTransformCommand>(kind);
}

std::unique_ptr<CPictureCommand> RotateCommand()
{
    return std::make_unique<CPixelEditCommand>(PixelEditKind::Rotate);
}

/// An operation without a dialog.
template <TransformKind kind, auto kernel> constexpr TransformRow Immediate()
{
    return {{}, {}, {}, KeepCorner, Never, Run<kernel>, Command<kind>};
}

using enum TransformKind;

/// In the order of the kinds.
constexpr TransformRow kRows[] = {
    Immediate<Negative, NegativeDib>(),
    Immediate<Gray, GrayDib>(),
    Immediate<MirrorHorizontally, ::MirrorHorizontally>(),
    Immediate<MirrorVertically, ::MirrorVertically>(),
    {Str::AdjustRgb, Str::RedGreenBlueGroup, kChannels, KeepCorner, AllZero, Run<AdjustChannels>,
     Command<RedGreenBlue>},
    {Str::AdjustHsl, Str::HueSaturationLightnessGroup, kHueSaturationLightness, KeepCorner, AllZero,
     Run<AdjustHue>, Command<HueSaturationLightness>},
    {Str::AdjustBc, Str::BrightnessContrastGroup, kBrightnessContrast, KeepCorner, AllZero, AdjustBrightness,
     Command<BrightnessContrast>},
    {Str::Blur, Str::Blur, kBlur, KeepCorner, BelowThree, Run<BoxBlur>, Command<Blur>},
    {Str::GaussianBlur, Str::GaussianBlur, kBlur, KeepCorner, BelowThree, Run<::GaussianBlur>,
     Command<TransformKind::GaussianBlur>},
    {Str::Sharpness, Str::Sharpness, kSharpness, KeepCorner, AllZero, Run<SharpenDib>, Command<Sharpness>},
    {Str::Emboss, Str::Emboss, kEmboss, KeepCorner, Never, Run<EmbossDib>, Command<Emboss>},
    {Str::Sunspot, Str::Sunspot, kSunspot, KeepCorner, Never, Run<SunspotDib>, Command<Sunspot>},
};
static_assert(std::size(kRows) == static_cast<size_t>(Sunspot) + 1);

constexpr TransformRow kRotateRow = {Str::Rotate, Str::Rotate, kRotate,      KeepCentre,
                                     IsFullTurn,  Rotate,      RotateCommand};

} // namespace

const TransformRow& FindTransform(TransformKind kind)
{
    return kRows[static_cast<size_t>(kind)];
}

const TransformRow& RotateTransform()
{
    return kRotateRow;
}
