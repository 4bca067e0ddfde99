// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/Corpus.h"
#include "support/TestPictures.h"

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

/// What the reader of the path's extension makes of the file; the six single-picture formats of the codec
/// seam.
CPackedDib LoadPicture(const std::filesystem::path& path);

/// Loads the first `size` bytes of a file under another name.
CPackedDib LoadBytes(std::span<const uint8_t> bytes, const std::filesystem::path& path);

std::vector<uint8_t> FileContent(const std::filesystem::path& path);

/// Pictures worth writing and reading again: noise, gradients, flat areas; odd sizes; all alpha values.
CPackedDib MixedPicture(int width, int height);
