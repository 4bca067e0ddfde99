// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Exports.h"
#include "cli/Quoting.h"
#include "cli/statements/StatementFamilies.h"

namespace {

Outcome Report(CSession& session, bool isWritten, const std::filesystem::path& path)
{
    return isWritten ? Outcome::Done : session.Fail("cannot write " + Quoted(path.string()));
}

template <bool (*write)(const CPixoluneView&, const std::filesystem::path&)>
Outcome Export(CSession& session, CArguments& arguments)
{
    const std::filesystem::path path = arguments.Path();
    if (!arguments.Finish())
        return Outcome::ScriptError;
    return Report(session, write(session.View(), path), path);
}

Outcome ExportObject(CSession& session, CArguments& arguments)
{
    const Ref<CPicObject> object = arguments.Object(session.Canvas());
    const std::filesystem::path path = arguments.Path();
    if (!arguments.Finish())
        return Outcome::ScriptError;
    return Report(session, ExportPicture(*object, path), path);
}

constexpr StatementRow kRows[] = {
    {"export-frame", "PATH", "Writes the frame as a PNG picture with alpha.", Needs::Document,
     Export<ExportFrame>},
    {"export-object", "K PATH", "Writes an object's own picture as a PNG picture with alpha.",
     Needs::Document, ExportObject},
    {"export-view", "PATH", "Writes what the view's window shows as a PNG picture.", Needs::Document,
     Export<ExportView>},
    {"export-selection", "PATH",
     "Writes the selection as a grey PNG picture of the document's size, white inside.", Needs::Document,
     Export<ExportSelection>},
};

} // namespace

std::span<const StatementRow> ExportStatements()
{
    return kRows;
}
