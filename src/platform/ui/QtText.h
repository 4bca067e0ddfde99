// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/strings/Strings.h"

#include <QString>

#include <filesystem>
#include <string>
#include <string_view>

[[nodiscard]] inline QString ToQString(std::string_view utf8)
{
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

/// A text of a table in the language in use.
[[nodiscard]] inline QString TranslatedQString(std::string_view source)
{
    return ToQString(Translated(source));
}

[[nodiscard]] inline QString ToQString(Str id)
{
    return ToQString(Text(id));
}

[[nodiscard]] inline QString PathToQString(const std::filesystem::path& path)
{
    return QString::fromStdU16String(path.u16string());
}

[[nodiscard]] inline std::string ToUtf8(const QString& text)
{
    return text.toStdString();
}

[[nodiscard]] inline std::filesystem::path ToPath(const QString& text)
{
    return text.toStdU16String();
}
