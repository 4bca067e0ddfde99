// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/DocumentFiles.h"

#include "document/Refusal.h"
#include "fileio/FormatTable.h"
#include "fileio/NativeFile.h"
#include "fileio/StatusText.h"
#include "history/ObjectListCommand.h"

bool LoadFile(CObjectCanvas& canvas, const std::filesystem::path& path, AppServices& services)
{
    const FormatRow* format = FindFormat(path);
    return format != nullptr && format->read(canvas, path, services);
}

bool OpenIntoDocument(CPixoluneDoc& document, const std::filesystem::path& path)
{
    AppServices& services = document.Services();
    const CFileStatus status(services.ui, Str::ReadingFile, path);
    CObjectCanvas canvas;
    if (!LoadFile(canvas, path, services))
        return RefuseFile(document, Str::LoadFileFailed, path);
    const bool keepsNames = FindFormat(path)->keepsNames;
    for (const Ref<CPicObject>& object : canvas.objects) {
        if (!keepsNames && object->image->name.empty())
            object->image->name = services.names.Next();
    }
    canvas.DeselectAll();
    if (!canvas.objects.IsEmpty())
        canvas.objects.Top()->SetSelected(true);
    document.Adopt(std::move(canvas));
    std::error_code ignored;
    document.SetPath(std::filesystem::absolute(path, ignored));
    return true;
}

bool SaveDocument(CPixoluneDoc& document, const std::filesystem::path& path)
{
    if (!SaveNativeFile(document.Canvas(), path, document.Services().ui))
        return RefuseFile(document, Str::SaveFileFailed, path);
    std::error_code ignored;
    document.SetPath(std::filesystem::absolute(path, ignored));
    document.SetModified(false);
    return true;
}

bool AddFiles(CPixoluneDoc& document, std::span<const std::filesystem::path> paths, AddKind kind)
{
    AppServices& services = document.Services();
    CObjectCanvas& canvas = document.Canvas();
    auto command = std::make_unique<CObjectListCommand>(
        kind == AddKind::Avi ? ObjectListKind::AddAvi : ObjectListKind::AddImageFiles, canvas);
    canvas.DeselectAll();
    const auto notify = [&document] {
        document.NotifyObjectsChanged();
        document.NotifyObjectSelectionChanged();
        document.NotifyFrameChanged();
    };
    for (const std::filesystem::path& path : paths) {
        const CFileStatus status(services.ui, Str::ReadingFile, path);
        CObjectCanvas loaded;
        if (!LoadFile(loaded, path, services)) {
            notify();
            return RefuseFile(document, Str::LoadFileFailed, path);
        }
        for (const Ref<CPicObject>& object : loaded.objects) {
            object->image->name = services.names.Next();
            object->SetSelected(true);
            canvas.objects.Append(object);
        }
    }
    document.Record(std::move(command));
    notify();
    return true;
}
