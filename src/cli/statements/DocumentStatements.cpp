// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/SaveOptions.h"
#include "cli/statements/StatementFamilies.h"
#include "fileio/DocumentFiles.h"

#include <limits>
#include <vector>

namespace {

constexpr int kLargestNewSide = 2000;

/// What the New Image dialog's OK would do.
Outcome New(CSession& session, CArguments& arguments)
{
    const int width = arguments.Integer("W", 1, kLargestNewSide);
    const int height = arguments.Integer("H", 1, kLargestNewSide);
    CSettings& settings = session.Settings();
    int32_t isTransparent = settings.Get(Setting::InitTransparent);
    int32_t colour = settings.Get(Setting::InitColor);
    if (arguments.Keyword("transparent"))
        isTransparent = 1;
    else if (arguments.HasMore()) {
        colour = arguments.Colour("COLOUR");
        isTransparent = 0;
    }
    if (!arguments.Finish())
        return Outcome::ScriptError;

    settings.Set(Setting::NewImageWidth, width);
    settings.Set(Setting::NewImageHeight, height);
    settings.Set(Setting::InitTransparent, isTransparent);
    settings.Set(Setting::InitColor, colour);
    if (CPixoluneDoc* document = session.App().NewDocument())
        session.Show(document);
    return Outcome::Done;
}

Outcome Open(CSession& session, CArguments& arguments)
{
    const std::filesystem::path path = arguments.Path();
    if (!arguments.Finish())
        return Outcome::ScriptError;
    if (CPixoluneDoc* document = session.App().OpenDocument(path))
        session.Show(document);
    return Outcome::Done;
}

Outcome Add(CSession& session, CArguments& arguments)
{
    std::vector<std::filesystem::path> paths;
    do
        paths.push_back(arguments.Path());
    while (arguments.HasMore());
    if (!arguments.Finish())
        return Outcome::ScriptError;
    AddFiles(session.Document(), paths, AddKind::ImageFiles);
    return Outcome::Done;
}

Outcome AddAvi(CSession& session, CArguments& arguments)
{
    const std::filesystem::path path = arguments.Path();
    if (!arguments.Finish())
        return Outcome::ScriptError;
    AddFiles(session.Document(), std::span(&path, 1), AddKind::Avi);
    return Outcome::Done;
}

Outcome Save(CSession& session, CArguments& arguments)
{
    const std::filesystem::path path = arguments.Path();
    if (!arguments.Finish())
        return Outcome::ScriptError;
    SaveDocument(session.Document(), path);
    return Outcome::Done;
}

Outcome SaveAs(CSession& session, CArguments& arguments)
{
    const SaveTarget target = TakeSaveTarget(arguments);
    if (!arguments.Finish())
        return Outcome::ScriptError;
    SaveDocumentAs(session.Document(), target.path, *target.format, target.options);
    return Outcome::Done;
}

Outcome SwitchDocument(CSession& session, CArguments& arguments)
{
    const int number = arguments.Integer("N", 1, std::numeric_limits<int>::max());
    if (!arguments.Finish())
        return Outcome::ScriptError;
    if (session.SwitchTo(number))
        return Outcome::Done;
    arguments.Reject("document " + std::to_string(number) + " is not open");
    return Outcome::ScriptError;
}

Outcome Close(CSession& session, CArguments& arguments)
{
    if (!arguments.Finish())
        return Outcome::ScriptError;
    session.CloseCurrent();
    return Outcome::Done;
}

constexpr StatementRow kRows[] = {
    {"new", "W H [COLOUR|transparent]",
     "Makes a new document; without the third word filled as the settings InitColor and InitTransparent say.",
     Needs::Nothing, New},
    {"open", "PATH", "Opens a file as a new document.", Needs::Nothing, Open},
    {"add", "PATH...", "Adds the objects of picture files.", Needs::Document, Add},
    {"add-avi", "PATH", "Adds the frames of a video.", Needs::Document, AddAvi},
    {"save", "PATH", "Saves the native file.", Needs::Document, Save},
    {"save-as", "PATH [colors=black-white|16-colors|256-colors|high|true|16-grays|256-grays] [hotspot=X,Y]",
     "Saves the picture in the format of the path's ending; colors is for BMP, hotspot for CUR and ANI.",
     Needs::Document, SaveAs},
    {"document", "N", "Makes the N-th opened document, counted from 1, the current one.", Needs::Nothing,
     SwitchDocument},
    {"close", "", "Closes the current document without saving.", Needs::Document, Close},
};

} // namespace

std::span<const StatementRow> DocumentStatements()
{
    return kRows;
}
