// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/ScriptRunner.h"

#include "cli/Quoting.h"
#include "cli/Script.h"
#include "cli/Statements.h"
#include "platform/strings/Strings.h"

#include <functional>
#include <string_view>

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// One run: knows where in the script it is.
class CScriptRun {
public:
    CScriptRun(CSession& session, const ScriptOptions& options, std::ostream& errors)
        : m_session(session), m_options(options), m_errors(errors)
    {
    }

    /// The exit status of one line alone.
    int RunLine(std::string_view text)
    {
        int status = kRefusedOrFailed;
        const auto run = [&] { status = Interpret(text); };
        const auto giveUp = [&] {
            if (m_session.HasDocument())
                m_session.View().CancelDrag();
        };
        return m_session.App().RunWithinMemory(std::ref(run), giveUp) ? status : kRefusedOrFailed;
    }

private:
    int Interpret(std::string_view text)
    {
        ++m_number;
        const ScriptLine line = ParseScriptLine(text);
        if (!line.error.empty())
            return ReportError(line.error);
        if (line.words.empty())
            return kAllDone;
        const StatementRow* row = FindStatement(line.words);
        if (row == nullptr)
            return ReportError("unknown statement " + Quoted(line.words.front()));
        if (row->needs == Needs::Document && !m_session.HasDocument())
            return ReportRefusal(line.statement);
        return RunStatement(*row, line);
    }

    int RunStatement(const StatementRow& row, const ScriptLine& line)
    {
        CArguments arguments(std::span(line.words).subspan(WordCount(row)));
        const int messagesBefore = m_session.Ui().MessageCount();
        const Outcome outcome = row.run(m_session, arguments);
        // What has been reported as done can be recovered from then on.
        if (CJournal* journal = m_session.App().Journal())
            journal->Finish();
        switch (outcome) {
        case Outcome::Disabled:
            return ReportRefusal(line.statement);
        case Outcome::Failed:
            ReportError(m_session.FailureReason());
            return kRefusedOrFailed;
        case Outcome::ScriptError:
            return ReportError(arguments.Error() + "; usage: " + FormOf(row));
        case Outcome::Done:
            break;
        }
        m_session.Output().flush();
        return m_session.Ui().MessageCount() == messagesBefore ? kAllDone : kRefusedOrFailed;
    }

    int ReportError(std::string_view text)
    {
        m_session.Output().flush();
        m_errors << m_options.name << ':' << m_number << ": " << text << std::endl;
        return kWrongUsage;
    }

    int ReportRefusal(std::string_view statement)
    {
        m_session.Output().flush();
        m_errors << "refused: " << statement << std::endl;
        return kRefusedOrFailed;
    }

    CSession& m_session;
    const ScriptOptions& m_options;
    std::ostream& m_errors;
    int m_number = 0;
};

} // namespace

int RunScript(CSession& session, std::istream& script, const ScriptOptions& options, std::ostream& errors)
{
    CScriptRun run(session, options, errors);
    int status = kAllDone;
    bool isFirst = true;
    for (std::string text; std::getline(script, text); isFirst = false) {
        std::string_view line = text;
        if (isFirst && line.starts_with(kByteOrderMark))
            line.remove_prefix(kByteOrderMark.size());
        const int ended = run.RunLine(line);
        if (ended == kWrongUsage)
            return kWrongUsage;
        if (ended == kRefusedOrFailed)
            status = kRefusedOrFailed;
        if (status != kAllDone && !options.keepGoing)
            break;
    }
    // Streams do not say why they end.
    if (script.bad())
        session.Ui().ShowMessage(std::string(Text(Str::OutOfMemory)));
    return script.bad() ? kRefusedOrFailed : status;
}
