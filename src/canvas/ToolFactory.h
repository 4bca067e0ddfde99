// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/Tool.h"

#include <memory>

/// The tool of a mode, for one view.
[[nodiscard]] std::unique_ptr<CTool> CreateTool(ToolMode mode, CPixoluneView& view);
