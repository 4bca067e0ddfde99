// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"
#include "platform/transform/ColourFill.h"

#include <string>

/// How lines stand to each other; the values of the Windows text alignment.
enum class TextAlignment { Left = 0, Right = 2, Centre = 6 };

/// A text with everything that decides how it looks.
struct TextStyle {
    std::string text;   ///< UTF-8; lines end with "\n"
    std::string family; ///< font family; empty for the system's usual one
    double size = 24;   ///< points, 96 of the canvas's pixels being one inch
    bool bold = false;
    bool italic = false;
    bool underline = false;
    TextAlignment alignment = TextAlignment::Left;
    int lineSpacing = 0;      ///< pixels between lines, beyond the font's own
    int characterSpacing = 0; ///< pixels between characters, beyond the font's own
    int baseline = 0;         ///< pixels by which the text is raised
    bool vertical = false;    ///< characters below each other, lines from right to left
    bool smooth = true;       ///< anti-aliased
    ColourFill fill;
    friend bool operator==(const TextStyle&, const TextStyle&) = default;
};

/// What became of a text.
enum class TextOutcome { Painted, NothingShows, TooLarge, OutOfMemory };

/// A text as a picture.
struct PaintedText {
    CPackedDib dib;        ///< 32 bits per pixel, trimmed, with the text written in it; empty unless Painted
    Point corner;          ///< of the picture, relative to the text's top-left corner
    bool fallback = false; ///< the family is not there; another one stands in
    TextOutcome outcome = TextOutcome::NothingShows;
};

/// Lays the text out in both directions of writing and paints it. Coloured glyphs keep their own colours. A
/// text too large for a picture is given up as soon as that is known.
[[nodiscard]] PaintedText PaintText(const TextStyle& style);
