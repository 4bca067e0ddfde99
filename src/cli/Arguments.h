// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/ObjectCanvas.h"
#include "platform/geometry/Geometry.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// A "name=value" word.
struct KeyValue {
    size_t key = 0; ///< place in the list of names that was asked for
    std::string value;
};

/// The words behind a statement's name, read one after another. The first word that does not fit leaves an
/// error; from then on the readers give plain defaults, so a statement reads all it wants, asks Finish once,
/// and only then acts.
class CArguments {
public:
    explicit CArguments(std::span<const std::string> words) : m_rest(words) {}

    [[nodiscard]] bool HasMore() const { return !m_rest.empty() && m_error.empty(); }
    /// What the next word is; empty without one.
    [[nodiscard]] std::string_view Next() const;

    // `what` names the argument in errors.
    std::string Word(std::string_view what);
    std::filesystem::path Path() { return Word("PATH"); }
    int Integer(std::string_view what, int minimum, int maximum);
    /// X and Y of a document or client point.
    Point Coordinates();
    /// "#rrggbb" as a colour reference, 0x00bbggrr.
    int32_t Colour(std::string_view what);
    /// The place of the next word among the allowed ones.
    size_t Choice(std::string_view what, std::span<const std::string_view> allowed);
    /// Takes the next word when it is this one.
    bool Keyword(std::string_view keyword);
    /// The object with the index that the next word gives.
    Ref<CPicObject> Object(const CObjectCanvas& canvas);
    /// All remaining words as objects, at least one, each once.
    CObjectList Objects(const CObjectCanvas& canvas);
    /// The next word, which must be NAME=VALUE with one of the names; none at the end.
    std::optional<KeyValue> Option(std::span<const std::string_view> names);
    /// A number that is part of a word, such as an option's value.
    int IntegerOf(std::string_view what, std::string_view text, int minimum, int maximum);

    /// Leaves an error unless there is one already.
    void Reject(std::string error);
    /// Whether every word was read and fitted. To be called before the statement acts.
    [[nodiscard]] bool Finish();
    [[nodiscard]] const std::string& Error() const { return m_error; }

private:
    std::span<const std::string> m_rest;
    std::string m_error;
};

/// A whole text as a decimal integer.
[[nodiscard]] std::optional<int64_t> ParseInteger(std::string_view text);
