// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/PathExtension.h"

#include <algorithm>
#include <ranges>

std::string UpperCasedExtension(const std::filesystem::path& path)
{
    const std::string text = path.string();
    const size_t dot = text.rfind('.');
    if (dot == std::string::npos)
        return {};
    std::string extension = text.substr(dot + 1);
    for (char& letter : extension) {
        if (letter >= 'a' && letter <= 'z')
            letter = static_cast<char>(letter - 'a' + 'A');
    }
    return extension;
}

bool NamesExtension(std::string_view extensions, std::string_view extension)
{
    return std::ranges::any_of(extensions | std::views::split(' '),
                               [&](const auto& part) { return std::ranges::equal(part, extension); });
}
