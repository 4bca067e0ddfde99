// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/check/FileCheck.h"

#include "fileio/DocumentFiles.h"
#include "fileio/FormatTable.h"
#include "fileio/NativeFile.h"
#include "fileio/NativeSalvage.h"
#include "fileio/PathExtension.h"
#include "fileio/check/StructureChecks.h"
#include "platform/io/FileBytes.h"

#include <algorithm>

namespace {

struct StructureRow {
    std::string_view extensions;
    void (*check)(CByteReader file, Faults& faults);
};

constexpr StructureRow kStructures[] = {
    {"PNG", CheckPng},      {"JPG JPEG", CheckJpg}, {"GIF", CheckGif},
    {"ANI AVI", CheckRiff}, {"BMP DIB", CheckBmp},
};

void CheckStructure(const std::filesystem::path& path, Faults& faults)
{
    const std::string extension = UpperCasedExtension(path);
    const auto* row = std::ranges::find_if(kStructures, [&](const StructureRow& candidate) {
        return NamesExtension(candidate.extensions, extension);
    });
    if (row == std::end(kStructures))
        return;
    if (const std::optional<CHeapBlock> bytes = ReadFileBytes(path))
        row->check(CByteReader(bytes->Bytes()), faults);
}

/// Whether there is a file that can be read at all.
bool CheckPresence(const std::filesystem::path& path, Faults& faults)
{
    std::error_code error;
    const bool isFile = std::filesystem::is_regular_file(path, error);
    if (!isFile)
        faults.emplace_back("there is no such file");
    else if (std::filesystem::file_size(path, error) == 0)
        faults.emplace_back("the file is empty");
    return isFile;
}

} // namespace

FileCheck CheckFile(const std::filesystem::path& path, AppServices& services)
{
    FileCheck check;
    const FormatRow* format = FindFormat(path);
    if (!CheckPresence(path, check.faults))
        return check;
    if (format == nullptr) {
        check.faults.emplace_back("the ending names no format");
        return check;
    }
    check.format = format->name;
    CheckStructure(path, check.faults);
    CObjectCanvas canvas;
    check.opens = LoadFile(canvas, path, services);
    if (check.opens) {
        check.canvas = canvas.Size();
        check.objects = canvas.objects.Count();
        check.statedObjects = check.objects;
        return check;
    }
    if (const std::optional<NativeSalvage> salvage =
            IsNativePath(path) ? SalvageNativeFile(path) : std::nullopt) {
        check.faults.insert(check.faults.end(), salvage->faults.begin(), salvage->faults.end());
        check.canvas = salvage->canvas.Size();
        check.objects = salvage->canvas.objects.Count();
        check.statedObjects = salvage->statedObjects;
    }
    if (check.faults.empty())
        check.faults.emplace_back("it is no such file, or its pixels cannot be read");
    return check;
}
