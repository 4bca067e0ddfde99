// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Exports.h"
#include "cli/Quoting.h"
#include "cli/statements/StatementFamilies.h"
#include "fileio/AnimationExport.h"

#include <array>

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

Outcome ExportFrames(CSession& session, CArguments& arguments)
{
    constexpr std::array<std::string_view, 3> kKeys{"loop", "delay", "palette"};
    const std::filesystem::path path = arguments.Path();
    if (FindAnimationFormat(path) == nullptr)
        arguments.Reject(Quoted(path.string()) + " has no extension of an animation");
    AnimationOptions options = DefaultAnimationOptions(session.Canvas());
    while (const std::optional<KeyValue> option = arguments.Option(kKeys)) {
        if (option->key == 0)
            options.plays = arguments.IntegerOf("loop", option->value, 0, kMostPlays);
        else if (option->key == 1)
            options.delay = arguments.IntegerOf("delay", option->value, 0, kMostFrameDelay);
        else if (option->value == "each")
            options.palette = AnimationPalette::OnePerFrame;
        else if (option->value != "one")
            arguments.Reject("palette: " + Quoted(option->value) + " is neither one nor each");
    }
    if (!arguments.Finish())
        return Outcome::ScriptError;
    if (session.Canvas().CountVisible() == 0)
        return Outcome::Disabled;
    ExportAnimation(session.Document(), path, options);
    return Outcome::Done;
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
    {"export-animation", "PATH [loop=N] [delay=N] [palette=one|each]",
     "Writes the visible objects as the frames of a GIF or PNG animation that plays N times, 0 without end.",
     Needs::Document, ExportFrames},
};

} // namespace

std::span<const StatementRow> ExportStatements()
{
    return kRows;
}
