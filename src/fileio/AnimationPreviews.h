// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fileio/FilePreview.h"

/// Previews of the formats that need not be read as a whole. False for a file that cannot be read.

/// The animation as it plays, up to the bounds of a preview.
[[nodiscard]] bool PreviewGifFile(CPreviewCollector& collector, const std::filesystem::path& path);
/// The first frames; the number of all is the one that the file states.
[[nodiscard]] bool PreviewAviFile(CPreviewCollector& collector, const std::filesystem::path& path);
/// The merged picture.
[[nodiscard]] bool PreviewPsdFile(CPreviewCollector& collector, const std::filesystem::path& path);
