// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Conversion.h"

#include "cli/Arguments.h"
#include "cli/ScriptRunner.h"
#include "fileio/DocumentFiles.h"
#include "fileio/FormatTable.h"

#include <vector>

bool Assign(CSettings& settings, const std::string& assignment)
{
    const size_t equals = assignment.find('=');
    if (equals == std::string::npos)
        return false;
    const std::optional<Setting> setting = CSettings::Find(assignment.substr(0, equals));
    const std::optional<int64_t> value = ParseInteger(std::string_view(assignment).substr(equals + 1));
    if (!setting || !value || *value < INT32_MIN || *value > INT32_MAX)
        return false;
    settings.SetAsStored(*setting, static_cast<int32_t>(*value));
    return true;
}

int Convert(CSession& session, std::span<const std::string> sources, const std::string& target,
            std::ostream& errors)
{
    const FormatRow* format = FindFormat(target);
    if (format == nullptr || format->extensions != "PXD") {
        errors << "cannot save as " << target << std::endl;
        return kRefusedOrFailed;
    }
    CPixoluneDoc* document = session.App().OpenDocument(sources.front());
    if (document == nullptr)
        return kRefusedOrFailed;
    const std::vector<std::filesystem::path> added(sources.begin() + 1, sources.end());
    if (!added.empty() && !AddFiles(*document, added, AddKind::ImageFiles))
        return kRefusedOrFailed;
    return SaveDocument(*document, target) ? kAllDone : kRefusedOrFailed;
}
