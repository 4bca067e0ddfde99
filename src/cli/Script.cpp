// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Script.h"

#include <utility>

namespace {

bool IsBlank(char character)
{
    return character == ' ' || character == '\t' || character == '\r';
}

/// Walks over a line and collects its words.
class CLineParser {
public:
    explicit CLineParser(std::string_view line) : m_line(line) {}

    ScriptLine Parse()
    {
        for (SkipBlanks(); !IsAtEnd() && !IsComment(); SkipBlanks()) {
            if (m_result.words.empty())
                m_begin = m_at;
            if (!TakeWord())
                break;
            m_end = m_at;
        }
        m_result.statement = m_line.substr(m_begin, m_end - m_begin);
        return std::move(m_result);
    }

private:
    [[nodiscard]] bool IsAtEnd() const { return m_at == m_line.size(); }
    [[nodiscard]] bool IsBlankAt(size_t at) const { return at >= m_line.size() || IsBlank(m_line[at]); }
    /// Whether a comment begins here; what stands before is a blank or nothing.
    [[nodiscard]] bool IsComment() const
    {
        return m_line[m_at] == '#' && (m_result.words.empty() || IsBlankAt(m_at + 1));
    }

    void SkipBlanks()
    {
        while (!IsAtEnd() && IsBlank(m_line[m_at]))
            ++m_at;
    }

    bool TakeWord()
    {
        std::string word;
        for (; !IsBlankAt(m_at); ++m_at) {
            if (m_line[m_at] != '"')
                word += m_line[m_at];
            else if (!TakeQuoted(word))
                return false;
        }
        m_result.words.push_back(std::move(word));
        return true;
    }

    /// From an opening quote to the closing one.
    bool TakeQuoted(std::string& word)
    {
        for (++m_at; !IsAtEnd() && m_line[m_at] != '"'; ++m_at) {
            const bool isEscape = m_line[m_at] == '\\' && m_at + 1 < m_line.size() &&
                                  (m_line[m_at + 1] == '"' || m_line[m_at + 1] == '\\');
            if (isEscape)
                ++m_at;
            word += m_line[m_at];
        }
        if (!IsAtEnd())
            return true;
        m_end = m_at;
        m_result.error = "closing quote is missing";
        return false;
    }

    std::string_view m_line;
    size_t m_at = 0;
    size_t m_begin = 0;
    size_t m_end = 0;
    ScriptLine m_result;
};

} // namespace

ScriptLine ParseScriptLine(std::string_view line)
{
    return CLineParser(line).Parse();
}
