// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/statements/StatementFamilies.h"

#include <array>

namespace {

/// Reads the words behind the coordinates, in any order. Without a button it is `usual`.
MouseInput TakeButtonAndKeys(CArguments& arguments, MouseButton usual)
{
    MouseInput input;
    input.button = usual;
    while (arguments.HasMore()) {
        if (arguments.Keyword("left"))
            input.button = MouseButton::Left;
        else if (arguments.Keyword("right"))
            input.button = MouseButton::Right;
        else if (arguments.Keyword("shift"))
            input.shift = true;
        else if (arguments.Keyword("ctrl"))
            input.ctrl = true;
        else if (arguments.Keyword("alt"))
            input.alt = true;
        else
            break;
    }
    return input;
}

void Press(CSession& session, const MouseInput& input)
{
    session.SetPressedButton(input.button);
    session.View().Press(input);
}

void Drag(CSession& session, const MouseInput& input)
{
    session.View().Move(input);
}

void Release(CSession& session, const MouseInput& input)
{
    session.View().Release(input);
}

void Click(CSession& session, const MouseInput& input)
{
    Press(session, input);
    Release(session, input);
}

/// What a window sends: the second press arrives as the double click.
void DoubleClick(CSession& session, const MouseInput& input)
{
    Click(session, input);
    session.View().DoubleClick(input);
}

/// Reads one point with its button and keys and sends the messages.
Outcome Send(CSession& session, CArguments& arguments, MouseButton usual,
             void (*send)(CSession&, const MouseInput&))
{
    const Point point = arguments.Coordinates();
    MouseInput input = TakeButtonAndKeys(arguments, usual);
    if (!arguments.Finish())
        return Outcome::ScriptError;
    input.client = session.ToClient(point);
    send(session, input);
    return Outcome::Done;
}

template <void (*send)(CSession&, const MouseInput&)>
Outcome WithLeftButton(CSession& session, CArguments& arguments)
{
    return Send(session, arguments, MouseButton::Left, send);
}

template <void (*send)(CSession&, const MouseInput&)>
Outcome WithPressedButton(CSession& session, CArguments& arguments)
{
    return Send(session, arguments, session.PressedButton(), send);
}

Outcome Stroke(CSession& session, CArguments& arguments)
{
    std::vector<Point> points;
    do
        points.push_back(arguments.Coordinates());
    while (arguments.HasMore() && ParseInteger(arguments.Next()));
    MouseInput input = TakeButtonAndKeys(arguments, MouseButton::Left);
    if (!arguments.Finish())
        return Outcome::ScriptError;
    input.client = session.ToClient(points.front());
    Press(session, input);
    for (const Point& point : std::span(points).subspan(1)) {
        input.client = session.ToClient(point);
        Drag(session, input);
    }
    Release(session, input);
    return Outcome::Done;
}

Outcome Pointer(CSession& session, CArguments& arguments)
{
    constexpr std::array<std::string_view, 2> kUnits{"document", "client"};
    const bool isClient = arguments.Choice("unit", kUnits) == 1;
    if (!arguments.Finish())
        return Outcome::ScriptError;
    session.SetPointerUnit(isClient ? PointerUnit::ClientPixels : PointerUnit::DocumentPixels);
    return Outcome::Done;
}

constexpr std::string_view kPointForm = "X Y [left|right] [shift] [ctrl] [alt]";

constexpr StatementRow kRows[] = {
    {"pointer", "document|client",
     "Says how the following coordinates are meant: pixels of the document, at first, or of the window.",
     Needs::Nothing, Pointer},
    {"press", kPointForm, "Presses a mouse button.", Needs::Document, WithLeftButton<Press>},
    {"drag", kPointForm, "Moves the pointer, with a button pressed or not.", Needs::Document,
     WithPressedButton<Drag>},
    {"release", kPointForm, "Releases the pressed button.", Needs::Document, WithPressedButton<Release>},
    {"click", kPointForm, "Presses and releases.", Needs::Document, WithLeftButton<Click>},
    {"double-click", kPointForm, "Clicks twice in quick succession.", Needs::Document,
     WithLeftButton<DoubleClick>},
    {"stroke", "X Y X Y... [left|right] [shift] [ctrl] [alt]",
     "Presses at the first point, drags through the others and releases at the last.", Needs::Document,
     Stroke},
};

} // namespace

std::span<const StatementRow> MouseStatements()
{
    return kRows;
}
