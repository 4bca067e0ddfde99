// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/ObjectCanvas.h"
#include "platform/Limits.h"
#include "platform/io/ByteReader.h"
#include "platform/io/FileBytes.h"
#include "platform/ui/UserInterface.h"

#include <filesystem>

/// Puts a 32-bit picture that was read on top of the canvas: visible, without a name, which the document
/// gives.
inline CPicObject& AppendPicture(CObjectCanvas& canvas, CPackedDib dib, Point position = {})
{
    auto object = MakeShared<CPicObject>(MakeShared<CRasterImage>(std::move(dib), std::string()));
    object->x = position.x;
    object->y = position.y;
    object->visible = true;
    canvas.objects.Append(object);
    return *object;
}

/// Runs a reader over a whole file. The canvas is left empty when it fails.
template <typename Reader>
bool LoadAllOrNothing(CObjectCanvas& canvas, const std::filesystem::path& path, IProgress* progress,
                      Reader read)
{
    const std::optional<CHeapBlock> file = ReadFileBytes(path);
    if (!file)
        return false;
    CByteReader reader(file->Bytes());
    if (!read(canvas, reader, progress)) {
        canvas = {};
        return false;
    }
    if (progress != nullptr)
        progress->SetPosition(100);
    return true;
}
