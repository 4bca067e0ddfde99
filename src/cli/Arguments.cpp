// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Arguments.h"

#include "cli/Quoting.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace {

/// Far more than any picture or window has, and small enough to be zoomed without overflow.
constexpr int kMaxCoordinate = 1'000'000;

std::string JoinedWith(std::string_view separator, std::span<const std::string_view> words)
{
    std::string joined;
    for (const std::string_view word : words) {
        if (!joined.empty())
            joined += separator;
        joined += word;
    }
    return joined;
}

} // namespace

std::optional<int64_t> ParseInteger(std::string_view text)
{
    int64_t value = 0;
    const char* end = text.data() + text.size();
    const auto [stop, failure] = std::from_chars(text.data(), end, value);
    if (failure != std::errc() || stop != end)
        return std::nullopt;
    return value;
}

std::string_view CArguments::Next() const
{
    return HasMore() ? std::string_view(m_rest.front()) : std::string_view();
}

std::string CArguments::Word(std::string_view what)
{
    if (!HasMore()) {
        Reject(std::string(what) + " is missing");
        return {};
    }
    std::string word = m_rest.front();
    m_rest = m_rest.subspan(1);
    return word;
}

int CArguments::Integer(std::string_view what, int minimum, int maximum)
{
    const std::string word = Word(what);
    return m_error.empty() ? IntegerOf(what, word, minimum, maximum) : minimum;
}

int CArguments::IntegerOf(std::string_view what, std::string_view text, int minimum, int maximum)
{
    const std::optional<int64_t> value = ParseInteger(text);
    if (value && *value >= minimum && *value <= maximum)
        return static_cast<int>(*value);
    const std::string problem =
        value ? " is not in " + std::to_string(minimum) + ".." + std::to_string(maximum) : " is no number";
    Reject(std::string(what) + ": " + Quoted(text) + problem);
    return minimum;
}

Point CArguments::Coordinates()
{
    const int x = Integer("X", -kMaxCoordinate, kMaxCoordinate);
    const int y = Integer("Y", -kMaxCoordinate, kMaxCoordinate);
    return {x, y};
}

int32_t CArguments::Colour(std::string_view what)
{
    const std::string word = Word(what);
    uint32_t rgb = 0;
    const char* begin = word.data() + 1;
    const bool hasForm = word.size() == 7 && word.front() == '#';
    if (!hasForm || std::from_chars(begin, begin + 6, rgb, 16).ptr != begin + 6) {
        Reject(std::string(what) + ": " + Quoted(word) + " is no colour #rrggbb");
        return 0;
    }
    return static_cast<int32_t>((rgb & 0xFF) << 16 | (rgb & 0xFF00) | rgb >> 16);
}

size_t CArguments::Choice(std::string_view what, std::span<const std::string_view> allowed)
{
    const std::string word = Word(what);
    const auto found = std::ranges::find(allowed, word);
    if (found != allowed.end())
        return static_cast<size_t>(found - allowed.begin());
    Reject(std::string(what) + ": " + Quoted(word) + " is none of " + JoinedWith(", ", allowed));
    return 0;
}

bool CArguments::Keyword(std::string_view keyword)
{
    if (!HasMore() || m_rest.front() != keyword)
        return false;
    m_rest = m_rest.subspan(1);
    return true;
}

Ref<CPicObject> CArguments::Object(const CObjectCanvas& canvas)
{
    const std::string word = Word("K");
    const std::optional<int64_t> index = ParseInteger(word);
    if (m_error.empty() && index && *index >= 0 && std::cmp_less(*index, canvas.objects.Count()))
        return canvas.objects.At(static_cast<size_t>(*index));
    Reject(Quoted(word) + " is no object's index");
    return {};
}

CObjectList CArguments::Objects(const CObjectCanvas& canvas)
{
    CObjectList objects;
    do {
        if (const Ref<CPicObject> object = Object(canvas))
            objects.AppendUnique(object);
    } while (HasMore());
    return objects;
}

std::optional<KeyValue> CArguments::Option(std::span<const std::string_view> names)
{
    if (!HasMore())
        return std::nullopt;
    const std::string word = Word("option");
    const size_t equals = word.find('=');
    const auto found = std::ranges::find(names, std::string_view(word).substr(0, equals));
    if (equals == std::string::npos || found == names.end()) {
        Reject(Quoted(word) + " is none of " + JoinedWith("=, ", names) + "=");
        return std::nullopt;
    }
    return KeyValue{static_cast<size_t>(found - names.begin()), word.substr(equals + 1)};
}

void CArguments::Reject(std::string error)
{
    if (m_error.empty())
        m_error = std::move(error);
}

bool CArguments::Finish()
{
    if (!m_rest.empty())
        Reject(Quoted(m_rest.front()) + " is not expected");
    return m_error.empty();
}
