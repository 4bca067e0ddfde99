// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/ObjectCanvas.h"

/// Fifty objects of 12 megapixels, each with pixels of its own, all as large as the canvas.
enum class Stack {
    Art,    ///< hard-edged shapes on a clear ground, above a backdrop: what layers of drawings look like
    Photos, ///< three quarters of all pixels let something through, an eighth are opaque
    Veils,  ///< every pixel of every object lets nine tenths through: nothing is hidden, and nothing clear
};
inline constexpr Stack kStacks[] = {Stack::Art, Stack::Photos, Stack::Veils};
inline constexpr int kStackObjects = 50;

/// "50x12MP-art"
const char* StackName(Stack stack);
/// A canvas with the objects, the topmost one selected.
CObjectCanvas MakeStack(Stack stack);
