// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/PixoluneDoc.h"

/// Swaps the canvas size with a saved one.
class CCanvasSizeCommand final : public CExchangeCommand {
public:
    explicit CCanvasSizeCommand(Size saved) : CExchangeCommand(Str::UndoResize), m_saved(saved) {}
    void VisitParts(ICommandParts& parts) const override { parts.CanvasSize(m_saved); }

protected:
    void Exchange() override
    {
        CObjectCanvas& canvas = Document()->Canvas();
        std::swap(canvas.width, m_saved.width);
        std::swap(canvas.height, m_saved.height);
        Document()->NotifyCanvasSizeChanged();
    }

private:
    Size m_saved;
};
