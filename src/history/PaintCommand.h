// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "history/PictureCommand.h"

enum class PaintKind { Erase, Flood };

/// Pixels of one picture changed in place.
class CPaintCommand final : public CPictureCommand {
public:
    /// saved: as AddPicture takes it.
    template <typename Saved>
    CPaintCommand(PaintKind kind, const Ref<CRasterImage>& image, Saved saved)
        : CPictureCommand(kind == PaintKind::Erase ? Str::UndoErase : Str::UndoFlood)
    {
        AddPicture(image, std::move(saved));
    }
};
