// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/ObjectCanvas.h"
#include "platform/Services.h"
#include "platform/ui/UserInterface.h"

#include <filesystem>

/// Puts a decoded picture of any depth on the canvas as its only object and takes over its size. False for
/// an empty picture and when memory runs out.
[[nodiscard]] bool AdoptSinglePicture(CObjectCanvas& canvas, CPackedDib dib);

/// The reader of a format that holds one picture.
template <CPackedDib (*Load)(const std::filesystem::path&, IProgress*)>
bool ReadSinglePicture(CObjectCanvas& canvas, const std::filesystem::path& path, AppServices& services)
{
    return AdoptSinglePicture(canvas, Load(path, &services.ui));
}
