// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Quoting.h"
#include "cli/statements/StatementFamilies.h"

#include <array>
#include <limits>

namespace {

/// The setting that the next word names.
std::optional<Setting> TakeSetting(CArguments& arguments)
{
    const std::string name = arguments.Word("NAME");
    const std::optional<Setting> setting = CSettings::Find(name);
    if (!setting)
        arguments.Reject(Quoted(name) + " is no setting");
    return setting;
}

Outcome SetSetting(CSession& session, CArguments& arguments)
{
    const std::optional<Setting> setting = TakeSetting(arguments);
    using Limits = std::numeric_limits<int32_t>;
    const int32_t value = arguments.Integer("VALUE", Limits::min(), Limits::max());
    if (!arguments.Finish())
        return Outcome::ScriptError;
    session.Settings().SetAsStored(*setting, value);
    return Outcome::Done;
}

Outcome GetSetting(CSession& session, CArguments& arguments)
{
    const std::optional<Setting> setting = TakeSetting(arguments);
    if (!arguments.Finish())
        return Outcome::ScriptError;
    session.Output() << CSettings::Row(*setting).name << ' ' << session.Settings().Get(*setting) << '\n';
    return Outcome::Done;
}

Outcome Answer(CSession& session, CArguments& arguments)
{
    constexpr std::array<std::string_view, 2> kAnswers{"no", "yes"};
    const bool isYes = arguments.Choice("answer", kAnswers) == 1;
    if (!arguments.Finish())
        return Outcome::ScriptError;
    session.Ui().SetAnswer(isYes);
    return Outcome::Done;
}

Outcome Echo(CSession& session, CArguments& arguments)
{
    std::string_view separator;
    while (arguments.HasMore()) {
        session.Output() << separator << arguments.Word("TEXT");
        separator = " ";
    }
    session.Output() << '\n';
    return Outcome::Done;
}

constexpr StatementRow kRows[] = {
    {"set", "NAME VALUE",
     "Changes a setting for this run; a value outside its range gives what the program would read at start.",
     Needs::Nothing, SetSetting},
    {"get", "NAME", "Prints a setting: NAME VALUE.", Needs::Nothing, GetSetting},
    {"answer", "yes|no", "Says how the following Yes/No questions are answered; at first Yes.",
     Needs::Nothing, Answer},
    {"echo", "TEXT...", "Prints the words, one blank between them.", Needs::Nothing, Echo},
};

} // namespace

std::span<const StatementRow> SessionStatements()
{
    return kRows;
}
