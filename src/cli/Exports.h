// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/PixoluneView.h"

#include <filesystem>

/// PNG pictures of what a document holds and shows. Each returns whether the file was written.

/// The flattened frame: straight alpha, colour bytes kept where alpha is 0.
[[nodiscard]] bool ExportFrame(const CPixoluneView& view, const std::filesystem::path& path);
/// An object's own picture, in the same way.
[[nodiscard]] bool ExportPicture(const CPicObject& object, const std::filesystem::path& path);
/// The client area of the view's window, without alpha.
[[nodiscard]] bool ExportView(const CPixoluneView& view, const std::filesystem::path& path);
/// The selection as 8-bit grey of the document's size: 255 inside, 0 outside.
[[nodiscard]] bool ExportSelection(const CPixoluneView& view, const std::filesystem::path& path);
