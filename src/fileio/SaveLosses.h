// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fileio/SaveAs.h"
#include "platform/settings/Settings.h"
#include "platform/strings/Strings.h"

#include <string>

enum class KeptAlpha { None, OneBit, Full };

/// What a file of some format can hold.
struct SaveLimits {
    bool keepsObjects = false;
    bool keepsFrames = false;
    KeptAlpha alpha = KeptAlpha::Full;
    int mostColours = 0; ///< 0: as many as there are
    bool isGray = false; ///< no colours but greys
    bool isExact = true; ///< what can be held comes back as it was
};

/// Of the format with the options that are chosen.
[[nodiscard]] SaveLimits LimitsOf(const SaveFormatRow& format, const SaveAsOptions& options,
                                  const CSettings& settings);

/// What there is to lose.
struct PictureFacts {
    int visibleObjects = 0;
    int hiddenObjects = 0;
    bool isAnimation = false; ///< several visible objects, and a time for each
    bool isTransparent = false;
    bool isPartlyTransparent = false; ///< somewhere neither clear nor opaque
    bool isGray = true;
    int colours = 0; ///< of the frame's pixels that are not clear
};

/// What the list of objects says.
[[nodiscard]] PictureFacts FactsOf(const CObjectCanvas& canvas);
/// Adds what the pixels of the flattened canvas say.
void AddPixelFacts(PictureFacts& facts, const CPackedDib& frame);

/// One line that names what a file cannot keep of the picture; empty when it keeps everything.
[[nodiscard]] std::string DescribeLosses(const PictureFacts& facts, const SaveLimits& limits);
