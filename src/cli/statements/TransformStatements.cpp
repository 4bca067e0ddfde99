// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/statements/StatementFamilies.h"
#include "imageops/ImmediateTransform.h"
#include "imageops/TransformSession.h"

#include <array>
#include <vector>

namespace {

using enum CommandId;

Outcome Mirror(CSession& session, CArguments& arguments)
{
    constexpr std::array<std::string_view, 2> kDirections{"horizontally", "vertically"};
    const bool isVertical = arguments.Choice("direction", kDirections) == 1;
    if (!arguments.Finish())
        return Outcome::ScriptError;
    return session.RunMenuCommand(isVertical ? TransformMirrorVertically : TransformMirrorHorizontally);
}

/// What a parameter is called without the colon that its label ends with.
std::string_view NameOf(const TransformParameter& parameter)
{
    const std::string_view label = Text(parameter.label);
    return label.substr(0, label.find(':'));
}

/// An operation's dialog: its values in the order of its parameters, closed with OK.
Outcome RunTransform(CSession& session, CArguments& arguments, const TransformRow& transform)
{
    std::vector<int> values;
    for (const TransformParameter& parameter : transform.parameters)
        values.push_back(arguments.Integer(NameOf(parameter), parameter.minimum, parameter.maximum));
    if (!arguments.Finish())
        return Outcome::ScriptError;
    session.FinishDrag();
    if (RequireTransformTargets(session.Document()))
        CTransformSession(session.Document(), transform).Ok(values);
    return Outcome::Done;
}

template <TransformKind kind> Outcome Transform(CSession& session, CArguments& arguments)
{
    return RunTransform(session, arguments, FindTransform(kind));
}

Outcome Rotate(CSession& session, CArguments& arguments)
{
    return RunTransform(session, arguments, RotateTransform());
}

template <TransformKind kind>
constexpr StatementRow Row(std::string_view name, std::string_view values, std::string_view help)
{
    return {name, values, help, Needs::Document, Transform<kind>};
}

constexpr StatementRow kRows[] = {
    MenuRow<TransformNegative>("negative", "Inverts the colours of the selected objects."),
    MenuRow<TransformGray>("gray", "Makes the selected objects grey."),
    {"mirror", "horizontally|vertically", "Mirrors the selected objects.", Needs::Document, Mirror},
    Row<TransformKind::Blur>("blur", "N", "Averages each pixel with those around it."),
    Row<TransformKind::GaussianBlur>("gaussian-blur", "N", "Blurs with a bell-shaped weight."),
    Row<TransformKind::Sharpness>("sharpness", "N", "Increases the difference between neighbouring pixels."),
    Row<TransformKind::Emboss>("emboss", "ELEVATION WEIGHT ANGLE", "Makes a relief in grey."),
    Row<TransformKind::Sunspot>("sunspot", "H V BRIGHTNESS", "Puts a spot of light on the objects."),
    Row<TransformKind::BrightnessContrast>("brightness-contrast", "B C", "Changes brightness and contrast."),
    Row<TransformKind::RedGreenBlue>("red-green-blue", "R G B", "Adds to the three channels."),
    Row<TransformKind::HueSaturationLightness>("hue-saturation-lightness", "H S L",
                                               "Changes hue, saturation and lightness."),
    {"rotate", "ANGLE", "Turns the selected objects clockwise about their centres, in degrees.",
     Needs::Document, Rotate},
};

} // namespace

std::span<const StatementRow> TransformStatements()
{
    return kRows;
}
