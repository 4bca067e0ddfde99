// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "history/PictureCommand.h"

/// The image operations, in the order of their numbers 0 to 11.
enum class TransformKind {
    Negative,
    Gray,
    MirrorHorizontally,
    MirrorVertically,
    RedGreenBlue,
    HueSaturationLightness,
    BrightnessContrast,
    Blur,
    GaussianBlur,
    Sharpness,
    Emboss,
    Sunspot,
};

/// An image operation on some objects.
class CTransformCommand final : public CPictureCommand {
public:
    explicit CTransformCommand(TransformKind kind);
};
