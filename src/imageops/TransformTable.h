// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "history/PictureCommand.h"
#include "history/TransformCommand.h"
#include "platform/dib/PackedDib.h"
#include "platform/strings/Strings.h"

#include <memory>
#include <optional>
#include <span>

/// A value that has a button of its own.
struct TransformChoice {
    Str label;
    std::optional<int> value; ///< none: any other, which is typed
};

/// One number that an image operation asks for. Dialogs, scripts and checks of ranges read it from here.
struct TransformParameter {
    Str label;
    int minimum; ///< inclusive, as is the maximum
    int maximum;
    int initial;
    int tick = 0;                                  ///< distance of a slider's ticks
    std::span<const TransformChoice> choices = {}; ///< buttons instead of a slider; their titled box, if any:
    std::optional<Str> choicesTitle = {};
};

/// What becomes of an object's place when its picture changes size.
enum class TransformPlacement { KeepCorner, KeepCentre };

/// The values of an operation, one for each of its parameters, each in its range.
using TransformValues = std::span<const int>;

/// One image operation.
struct TransformRow {
    Str title; ///< of its dialog
    Str group; ///< of the box around the dialog's controls; "&" stands doubled
    std::span<const TransformParameter> parameters;
    TransformPlacement placement;
    /// Whether these values leave every picture as it is; then nothing is recorded.
    bool (*changesNothing)(TransformValues values);
    /// A new picture; empty when memory runs out.
    CPackedDib (*run)(const CPackedDib& dib, TransformValues values);
    /// The undo entry, still empty.
    std::unique_ptr<CPictureCommand> (*createCommand)();
};

/// The operation of a kind.
[[nodiscard]] const TransformRow& FindTransform(TransformKind kind);
/// The turn about an object's centre; its only parameter is the angle in degrees.
[[nodiscard]] const TransformRow& RotateTransform();
