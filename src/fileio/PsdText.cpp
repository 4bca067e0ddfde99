// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/PsdText.h"

#include <bit>

namespace {

constexpr uint32_t kReplacement = 0xFFFD;
constexpr uint32_t kHighSurrogates = 0xD800;
constexpr uint32_t kLowSurrogates = 0xDC00;

/// Takes the first character off the text.
uint32_t TakeCharacter(std::string_view& text)
{
    constexpr uint32_t kSmallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const auto lead = static_cast<uint8_t>(text.front());
    text.remove_prefix(1);
    if (lead < 0x80)
        return lead;
    const int length = std::countl_one(lead);
    if (length < 2 || length > 4 || text.size() < static_cast<size_t>(length - 1))
        return kReplacement;
    uint32_t character = lead & (0x7Fu >> length);
    for (int index = 1; index < length; ++index) {
        const auto tail = static_cast<uint8_t>(text[static_cast<size_t>(index - 1)]);
        if (tail >> 6 != 2)
            return kReplacement;
        character = character << 6 | (tail & 0x3Fu);
    }
    const bool isSurrogate = character >= kHighSurrogates && character < 0xE000;
    if (character < kSmallest[length] || character > 0x10FFFF || isSurrogate)
        return kReplacement;
    text.remove_prefix(static_cast<size_t>(length - 1));
    return character;
}

} // namespace

void AppendUtf8(std::string& text, uint32_t character)
{
    constexpr uint32_t kLeads[] = {0, 0xC0, 0xE0, 0xF0};
    const int tail = character < 0x80 ? 0 : character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;
    text.push_back(static_cast<char>(kLeads[tail] | character >> (6 * tail)));
    for (int index = tail - 1; index >= 0; --index)
        text.push_back(static_cast<char>(0x80 | (character >> (6 * index) & 0x3F)));
}

std::u16string Utf16Of(std::string_view text)
{
    std::u16string units;
    while (!text.empty()) {
        const uint32_t character = TakeCharacter(text);
        if (character >= 0x10000) {
            units.push_back(static_cast<char16_t>(kHighSurrogates + ((character - 0x10000) >> 10)));
            units.push_back(static_cast<char16_t>(kLowSurrogates + (character & 0x3FF)));
        } else {
            units.push_back(static_cast<char16_t>(character));
        }
    }
    return units;
}
