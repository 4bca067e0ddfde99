// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fileio/PsdFile.h"
#include "model/ObjectCanvas.h"
#include "platform/Services.h"
#include "platform/ui/UserInterface.h"

#include <filesystem>

/// The merged picture. Empty when it is damaged.
[[nodiscard]] CPackedDib ReadPsdComposite(const PsdFile& file);

/// Every layer with pixels becomes an object with the layer's name, place and opacity, its mask applied,
/// hidden where the layer or a group around it is. Blending modes, clipping and effects are not known to
/// objects.
[[nodiscard]] bool ReadPsdLayers(CObjectCanvas& canvas, const PsdFile& file, IProgress* progress);

/// Opens a file with one layer or none as a single picture. For more layers the settings say whether they
/// become objects, once the user has been asked if the settings want that.
[[nodiscard]] bool LoadPsdFile(CObjectCanvas& canvas, const std::filesystem::path& path,
                               AppServices& services);
