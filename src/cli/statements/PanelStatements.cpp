// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/statements/StatementFamilies.h"
#include "document/PanelOperations.h"

namespace {

Outcome Select(CSession& session, CArguments& arguments)
{
    CObjectList chosen;
    if (arguments.Keyword("all"))
        chosen = session.Canvas().objects;
    else if (!arguments.Keyword("none"))
        chosen = arguments.Objects(session.Canvas());
    if (!arguments.Finish())
        return Outcome::ScriptError;
    SelectObjects(session.Document(), chosen);
    return Outcome::Done;
}

/// One of the panel's icons, clicked for some objects.
template <bool (*setFlag)(CPixoluneDoc&, const CObjectList&, bool), bool value>
Outcome SetFlag(CSession& session, CArguments& arguments)
{
    const CObjectList objects = arguments.Objects(session.Canvas());
    if (!arguments.Finish())
        return Outcome::ScriptError;
    setFlag(session.Document(), objects, value);
    return Outcome::Done;
}

Outcome Opacity(CSession& session, CArguments& arguments)
{
    CObjectList objects;
    objects.Append(arguments.Object(session.Canvas()));
    const int transparency = arguments.Integer("VALUE", 0, 255);
    if (!arguments.Finish())
        return Outcome::ScriptError;
    SetTransparency(session.Document(), objects, static_cast<uint8_t>(transparency));
    return Outcome::Done;
}

Outcome Rename(CSession& session, CArguments& arguments)
{
    const Ref<CPicObject> object = arguments.Object(session.Canvas());
    const std::string name = arguments.Word("NAME");
    if (!arguments.Finish())
        return Outcome::ScriptError;
    RenameObject(session.Document(), object, name);
    return Outcome::Done;
}

constexpr StatementRow kRows[] = {
    {"select", "all|none|K...", "Selects exactly these objects; not recorded for undo.", Needs::Document,
     Select},
    {"show", "K...", "Shows objects.", Needs::Document, SetFlag<SetVisible, true>},
    {"hide", "K...", "Hides objects.", Needs::Document, SetFlag<SetVisible, false>},
    {"lock", "K...", "Locks objects.", Needs::Document, SetFlag<SetLocked, true>},
    {"unlock", "K...", "Unlocks objects.", Needs::Document, SetFlag<SetLocked, false>},
    {"opacity", "K VALUE", "Sets an object's transparency: 0 as its picture says, 255 invisible.",
     Needs::Document, Opacity},
    {"rename", "K NAME", "Renames an object; a name has at most 48 characters.", Needs::Document, Rename},
};

} // namespace

std::span<const StatementRow> PanelStatements()
{
    return kRows;
}
