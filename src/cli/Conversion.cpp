// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Conversion.h"

#include "cli/Arguments.h"
#include "cli/SaveOptions.h"
#include "cli/ScriptRunner.h"
#include "fileio/DocumentFiles.h"
#include "fileio/NativeFile.h"

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

int Convert(CSession& session, const Conversion& conversion, std::ostream& errors)
{
    std::vector<std::string> words = conversion.options;
    words.insert(words.begin(), conversion.target);
    CArguments arguments(words);
    const bool isNative = words.size() == 1 && IsNativePath(conversion.target);
    const SaveTarget target = isNative ? SaveTarget{arguments.Path()} : TakeSaveTarget(arguments);
    if (!arguments.Finish()) {
        errors << arguments.Error() << std::endl;
        return kWrongUsage;
    }

    CPixoluneDoc* document = session.App().OpenDocument(conversion.sources.front());
    if (document == nullptr)
        return kRefusedOrFailed;
    const auto added = std::span(conversion.sources).subspan(1);
    if (!added.empty() && !AddFiles(*document, added, AddKind::ImageFiles))
        return kRefusedOrFailed;
    const bool isSaved = isNative ? SaveDocument(*document, target.path)
                                  : SaveDocumentAs(*document, target.path, *target.format, target.options);
    return isSaved ? kAllDone : kRefusedOrFailed;
}
