// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/ToolFactory.h"

#include "canvas/BoxSelectionTool.h"
#include "canvas/DefaultTool.h"
#include "canvas/EraseTool.h"
#include "canvas/FloodFillTool.h"
#include "canvas/LassoSelectionTool.h"
#include "canvas/MagicWandTool.h"
#include "canvas/PencilTool.h"
#include "canvas/PickColorTool.h"
#include "canvas/PolygonTool.h"
#include "canvas/ShapeTool.h"
#include "canvas/TextTool.h"

#include <iterator>

namespace {

template <typename Tool, auto... arguments> std::unique_ptr<CTool> Make(CPixoluneView& view)
{
    return std::make_unique<Tool>(view, arguments...);
}

/// In the order of the modes.
constexpr std::unique_ptr<CTool> (*kMakers[])(CPixoluneView&) = {
    Make<CDefaultTool>,
    Make<CRectangularSelectionTool>,
    Make<CEllipticalSelectionTool>,
    Make<CLassoSelectionTool>,
    Make<CMagicWandTool>,
    Make<CTextTool>,
    Make<CPencilTool>,
    Make<CEraseTool>,
    Make<CFloodFillTool>,
    Make<CPickColorTool>,
    Make<CShapeTool, ShapeKind::Rectangle>,
    Make<CShapeTool, ShapeKind::Ellipse>,
    Make<CPolygonTool>,
};
static_assert(std::size(kMakers) == kToolModeCount);

} // namespace

std::unique_ptr<CTool> CreateTool(ToolMode mode, CPixoluneView& view)
{
    return kMakers[static_cast<size_t>(mode)](view);
}
