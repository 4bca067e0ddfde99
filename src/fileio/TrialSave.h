// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fileio/SaveAs.h"
#include "platform/settings/Settings.h"

#include <cstdint>
#include <optional>
#include <vector>

/// What a save gives: the file's length, and what the program reads from it again.
struct TrialSave {
    uint64_t fileBytes = 0;
    /// 32 bits per pixel; the frames of a format that keeps frames, otherwise one. None is empty.
    std::vector<CPackedDib> pictures;
};

/// Saves the canvas as SaveDocumentAs would, into a temporary file that is gone afterwards, and reads it
/// back. None when the format cannot take the canvas or the temporary folder cannot be written. Needs nothing
/// of the window's thread.
[[nodiscard]] std::optional<TrialSave> TrySave(const CObjectCanvas& canvas, const SaveFormatRow& format,
                                               const SaveAsOptions& options, const CSettings& settings);
