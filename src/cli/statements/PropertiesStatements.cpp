// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/statements/StatementFamilies.h"
#include "document/PanelOperations.h"
#include "document/PropertiesSession.h"
#include "document/SizeEntry.h"

#include <algorithm>
#include <array>
#include <vector>

namespace {

/// The controls of the dialog.
enum Key : size_t { Name, Left, Top, Width, Height, Transparency, Visible, Locked };
constexpr std::array<std::string_view, 8> kKeys{"name",   "left",         "top",     "width",
                                                "height", "transparency", "visible", "locked"};

struct Entry {
    size_t key = 0;
    int number = 0;
    std::string text;
};

/// What a number of the dialog may be.
CSizeEntry::Range RangeOf(size_t key, const CPicObject* object)
{
    const Size shown = object != nullptr ? object->Size() : Size();
    const CSizeEntry size({std::max(shown.width, 1), std::max(shown.height, 1)});
    switch (key) {
    case Left:
    case Top:
        return {CPropertiesSession::kMinPosition, CPropertiesSession::kMaxPosition};
    case Width:
        return size.PixelWidthRange();
    case Height:
        return size.PixelHeightRange();
    case Transparency:
        return {0, 255};
    default:
        return {0, 1};
    }
}

std::vector<Entry> TakeEntries(CArguments& arguments, const CPicObject* object)
{
    std::vector<Entry> entries;
    while (std::optional<KeyValue> option = arguments.Option(kKeys)) {
        Entry& entry = entries.emplace_back();
        entry.key = option->key;
        if (entry.key != Name) {
            const CSizeEntry::Range range = RangeOf(entry.key, object);
            entry.number = arguments.IntegerOf(kKeys[entry.key], option->value, range.minimum, range.maximum);
        } else if (LimitedName(option->value) != option->value) {
            arguments.Reject("name: more than 48 characters");
        }
        entry.text = std::move(option->value);
    }
    return entries;
}

/// Sets one control. Disabled when the dialog shows it so, Failed when it has shown a message instead.
Outcome Apply(CPropertiesSession& session, const Entry& entry)
{
    const CPicObject& object = session.Object();
    const Size size = object.Size();
    switch (entry.key) {
    case Name:
        session.SetName(entry.text);
        break;
    case Left:
    case Top:
        if (object.locked)
            return Outcome::Disabled;
        session.SetPosition(entry.key == Left ? Point{entry.number, object.y}
                                              : Point{object.x, entry.number});
        break;
    case Width:
        return session.SetSize({entry.number, size.height}) ? Outcome::Done : Outcome::Failed;
    case Height:
        return session.SetSize({size.width, entry.number}) ? Outcome::Done : Outcome::Failed;
    case Transparency:
        session.SetTransparency(static_cast<uint8_t>(entry.number));
        break;
    case Visible:
        session.SetVisible(entry.number != 0);
        break;
    default:
        session.SetLocked(entry.number != 0);
        break;
    }
    return Outcome::Done;
}

Outcome Properties(CSession& session, CArguments& arguments)
{
    CPixoluneDoc& document = session.Document();
    const bool isChosen = ParseInteger(arguments.Next()).has_value();
    Ref<CPicObject> object;
    if (isChosen)
        object = arguments.Object(session.Canvas());
    else if (session.Canvas().CountSelected() == 1)
        object = session.Canvas().ActiveObjects().Bottom();
    const std::vector<Entry> entries = TakeEntries(arguments, object.Get());
    if (!arguments.Finish())
        return Outcome::ScriptError;
    session.FinishDrag();
    if (!isChosen)
        object = CPropertiesSession::Target(document);
    if (!object)
        return Outcome::Done;

    CPropertiesSession dialog(document, object);
    // Destroyed without OK, the dialog puts everything back.
    for (const Entry& entry : entries) {
        const Outcome outcome = Apply(dialog, entry);
        if (outcome != Outcome::Done)
            return outcome == Outcome::Failed ? Outcome::Done : outcome;
    }
    dialog.Ok();
    return Outcome::Done;
}

constexpr StatementRow kRows[] = {
    {"properties",
     "[K] [name=T] [left=N] [top=N] [width=N] [height=N] [transparency=N] [visible=0|1] [locked=0|1]",
     "Sets the values of an object's Properties dialog in this order, of the selected object without K.",
     Needs::Document, Properties},
};

} // namespace

std::span<const StatementRow> PropertiesStatements()
{
    return kRows;
}
