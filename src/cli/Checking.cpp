// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Checking.h"

#include "cli/Quoting.h"
#include "cli/ScriptRunner.h"
#include "fileio/check/FileCheck.h"

namespace {

std::string ResultOf(const FileCheck& check)
{
    const std::string objects = std::to_string(check.objects);
    const std::string size = std::to_string(check.canvas.width) + " x " + std::to_string(check.canvas.height);
    if (check.opens)
        return std::string(check.faults.empty() ? "whole" : "opens in spite of that") + ", " + size +
               ", objects " + objects;
    if (check.objects > 0)
        return "does not open, whole objects " + objects + " of " + std::to_string(check.statedObjects);
    return "does not open";
}

} // namespace

int CheckFiles(CSession& session, std::span<const std::string> files)
{
    int status = kAllDone;
    for (const std::string& file : files) {
        const FileCheck check = CheckFile(file, session.App().Services());
        session.Output() << "file " << Quoted(file) << '\n';
        for (const std::string& fault : check.faults)
            session.Output() << "fault " << Quoted(fault) << '\n';
        session.Output() << "result " << Quoted(ResultOf(check)) << '\n';
        if (!check.opens || !check.faults.empty())
            status = kRefusedOrFailed;
    }
    return status;
}
