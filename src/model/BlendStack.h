// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

/// Pixels of a piece that BlendStackWeighted draws at a time, and the most rows that it takes.
inline constexpr size_t kStackPixels = 32;
inline constexpr size_t kStackRows = 256;

/// Some pixels of a picture that lies over others, and what is subtracted from their alphas.
struct StackedRow {
    const uint8_t* pixels = nullptr;
    uint8_t transparency = 0;
};

/// Rows that lie over each other, the topmost one first.
struct RowStack {
    StackedRow (*row)(void* context, size_t index) = nullptr; ///< its pixels stay until the piece is drawn
    void* context = nullptr;
    size_t count = 0;
};

/// Draws kStackPixels pixels of all rows onto the destination, as BlendRowWeighted of each from the lowest to
/// the topmost does. Asks for rows from the topmost down, and for no more than are needed.
void BlendStackWeighted(uint8_t* destination, const RowStack& stack);
