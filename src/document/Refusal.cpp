// SPDX-License-Identifier: GPL-3.0-or-later
#include "document/Refusal.h"

#include "platform/ui/UserInterface.h"

bool Refuse(const CPixoluneDoc& document, Str reason)
{
    document.Services().ui.ShowMessage(std::string(Text(reason)));
    return false;
}

bool RefuseFile(const CPixoluneDoc& document, Str reason, const std::filesystem::path& path)
{
    std::error_code ignored;
    const std::filesystem::path full = std::filesystem::absolute(path, ignored);
    document.Services().ui.ShowMessage(Text(reason, (full.empty() ? path : full).string()));
    return false;
}

bool RequireActiveObjects(const CPixoluneDoc& document)
{
    if (document.Canvas().objects.IsEmpty())
        return Refuse(document, Str::NoObject);
    if (document.Canvas().CountSelected() == 0)
        return Refuse(document, Str::NoneSelected);
    return true;
}
