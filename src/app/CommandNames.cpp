// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/CommandNames.h"

#include <algorithm>
#include <cctype>
#include <sstream>

namespace {

using enum CommandId;

constexpr std::string_view kPlaceSeparator = " > ";

/// The texts of the table are plain ASCII.
char Lower(char letter)
{
    return static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
}

bool IsLetterOrDigit(char letter)
{
    return std::isalnum(static_cast<unsigned char>(letter)) != 0;
}

std::string LowerCase(std::string_view text)
{
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), Lower);
    return lower;
}

std::string LettersAndDigits(std::string_view text)
{
    std::string letters;
    std::ranges::copy_if(text, std::back_inserter(letters), IsLetterOrDigit);
    return letters;
}

/// Whether the letters of the word stand in the text in their order, with others between them.
bool HasInOrder(std::string_view text, std::string_view word)
{
    for (const char letter : word) {
        const size_t at = text.find(letter);
        if (at == std::string_view::npos)
            return false;
        text.remove_prefix(at + 1);
    }
    return true;
}

bool BeginsAWord(std::string_view text, std::string_view word)
{
    for (size_t at = text.find(word); at != std::string_view::npos; at = text.find(word, at + 1)) {
        if (at == 0 || !IsLetterOrDigit(text[at - 1]))
            return true;
    }
    return false;
}

/// How badly a word fits, 0 the best; none when it does not.
std::optional<int> Misfit(const CommandRow& row, std::string_view word)
{
    const std::string name = LowerCase(CommandName(row));
    if (BeginsAWord(name, word))
        return name.starts_with(word) ? 0 : 1;
    if (name.find(word) != std::string::npos)
        return 2;
    if (LowerCase(CommandPlace(row)).find(word) != std::string::npos)
        return 3;
    if (LowerCase(row.prompt).find(word) != std::string::npos)
        return 4;
    return HasInOrder(name, word) ? std::optional(5) : std::nullopt;
}

} // namespace

std::string CommandName(const CommandRow& row)
{
    std::string name(row.text);
    std::erase(name, '&');
    if (name.ends_with("..."))
        name.resize(name.size() - 3);
    return name;
}

std::string CommandPlace(const CommandRow& row)
{
    if (row.menu.empty())
        return std::string(Text(Str::OptionsPanel));
    std::string place(row.menu);
    for (size_t at = place.find('/'); at != std::string::npos; at = place.find('/', at))
        place.replace(at, 1, kPlaceSeparator);
    return place;
}

std::string CommandKey(const CommandRow& row)
{
    return LettersAndDigits(CommandPlace(row)) + '-' + LettersAndDigits(row.text);
}

Str WhyDisabled(const CommandContext& context, CommandId id)
{
    constexpr struct {
        CommandId id;
        Str reason;
    } kReasons[] = {{EditUndo, Str::NothingToUndo},        {EditRedo, Str::NothingToRedo},
                    {EditPaste, Str::NothingToPaste},      {EditUnselectAll, Str::NothingSelected},
                    {ViewZoomIn, Str::LargestZoom},        {ViewZoomOut, Str::SmallestZoom},
                    {ViewActualSize, Str::ActualSizeShown}};
    if (context.document == nullptr)
        return Str::NoPictureOpen;
    const auto* row = std::ranges::find(kReasons, id, [](const auto& reason) { return reason.id; });
    return row == std::end(kReasons) ? Str::NotAvailable : row->reason;
}

std::vector<const CommandRow*> SearchCommands(std::string_view words)
{
    std::vector<std::pair<int, const CommandRow*>> found;
    for (const CommandRow& row : CommandTable()) {
        std::istringstream input(LowerCase(words));
        std::optional<int> sum = 0;
        for (std::string word; sum && input >> word;) {
            const std::optional<int> misfit = Misfit(row, word);
            sum = misfit ? std::optional(*sum + *misfit) : std::nullopt;
        }
        if (sum)
            found.emplace_back(*sum, &row);
    }
    std::ranges::stable_sort(found, {}, [](const auto& entry) { return entry.first; });
    std::vector<const CommandRow*> rows;
    std::ranges::transform(found, std::back_inserter(rows), [](const auto& entry) { return entry.second; });
    return rows;
}
