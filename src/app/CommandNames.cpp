// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/CommandNames.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <ranges>
#include <sstream>

namespace {

using enum CommandId;

constexpr std::string_view kPlaceSeparator = " > ";

/// Of ASCII letters; the others have to be met as they are.
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

/// A text of the table without its mark and the dots that promise a dialog.
std::string PlainName(std::string_view text)
{
    std::string name(text);
    std::erase(name, '&');
    if (name.ends_with("..."))
        name.resize(name.size() - 3);
    return name;
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

/// The texts by which a command is found, in lower case.
struct SearchedTexts {
    std::string name;
    std::string place;
    std::string prompt;
};

/// How badly a word fits, 0 the best.
constexpr int kNoFit = 6;

int Misfit(const SearchedTexts& texts, std::string_view word)
{
    if (BeginsAWord(texts.name, word))
        return texts.name.starts_with(word) ? 0 : 1;
    if (texts.name.find(word) != std::string::npos)
        return 2;
    if (texts.place.find(word) != std::string::npos)
        return 3;
    if (texts.prompt.find(word) != std::string::npos)
        return 4;
    return HasInOrder(texts.name, word) ? 5 : kNoFit;
}

/// A command is found in the language in use and in that of the tables.
std::array<SearchedTexts, 2> TextsOf(const CommandRow& row)
{
    return {SearchedTexts{LowerCase(CommandName(row)), LowerCase(CommandPlace(row)),
                          LowerCase(Translated(row.prompt))},
            SearchedTexts{LowerCase(PlainName(row.text)), LowerCase(PlainName(row.menu)), LowerCase(row.prompt)}};
}

} // namespace

std::string CommandName(const CommandRow& row)
{
    return PlainName(Translated(row.text));
}

std::string CommandPlace(const CommandRow& row)
{
    if (row.menu.empty())
        return std::string(Text(Str::OptionsPanel));
    std::string place;
    for (const auto part : std::views::split(row.menu, '/')) {
        if (!place.empty())
            place += kPlaceSeparator;
        place += PlainName(Translated(std::string_view(part.begin(), part.end())));
    }
    return place;
}

std::string CommandKey(const CommandRow& row)
{
    const std::string_view place = row.menu.empty() ? SourceText(Str::OptionsPanel) : row.menu;
    return LettersAndDigits(place) + '-' + LettersAndDigits(row.text);
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
        const std::array<SearchedTexts, 2> texts = TextsOf(row);
        std::istringstream input(LowerCase(words));
        int sum = 0;
        bool isFound = true;
        for (std::string word; isFound && input >> word;) {
            const int misfit = std::min(Misfit(texts[0], word), Misfit(texts[1], word));
            isFound = misfit < kNoFit;
            sum += misfit;
        }
        if (isFound)
            found.emplace_back(sum, &row);
    }
    std::ranges::stable_sort(found, {}, [](const auto& entry) { return entry.first; });
    std::vector<const CommandRow*> rows;
    std::ranges::transform(found, std::back_inserter(rows), [](const auto& entry) { return entry.second; });
    return rows;
}
