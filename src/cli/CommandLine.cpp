// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/CommandLine.h"

#include "cli/Checking.h"
#include "cli/Conversion.h"
#include "cli/Help.h"
#include "cli/Information.h"
#include "cli/Recover.h"
#include "cli/ScriptRunner.h"
#include "cli/Session.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <fstream>

namespace {

/// The verbs with the options of each.
class CCommandLine {
public:
    explicit CCommandLine(const Surroundings& surroundings) : m_surroundings(surroundings)
    {
        m_parser.require_subcommand(1);
        AddInfo();
        AddCheck();
        AddConvert();
        AddRun();
        AddRecover();
        AddHelp();
    }

    int Run(std::vector<std::string> arguments)
    {
        // The parser takes them from the back.
        std::ranges::reverse(arguments);
        try {
            m_parser.parse(std::move(arguments));
        } catch (const CLI::ParseError& error) {
            const int code = m_parser.exit(error, m_surroundings.output, m_surroundings.errors);
            return code == 0 ? kAllDone : kWrongUsage;
        }
        return m_status;
    }

private:
    CLI::App* AddVerb(const std::string& name, const std::string& description, int (CCommandLine::*run)())
    {
        CLI::App* verb = m_parser.add_subcommand(name, description);
        verb->callback([this, run] { m_status = (this->*run)(); });
        return verb;
    }

    void AddUserSettings(CLI::App* verb)
    {
        verb->add_flag("--user-settings", m_withUserSettings,
                       "start from the user's stored settings and store them again at the end");
    }

    void AddInfo()
    {
        CLI::App* verb = AddVerb("info", "what a file holds", &CCommandLine::InfoVerb);
        verb->add_option("FILE", m_files, "the files")->required();
        verb->add_flag("--json", m_asJson, "print JSON");
        AddUserSettings(verb);
    }

    void AddCheck()
    {
        CLI::App* verb = AddVerb("check", "what is wrong with a file and what of it can be read",
                                 &CCommandLine::CheckVerb);
        verb->add_option("FILE", m_files, "the files")->required();
    }

    void AddConvert()
    {
        CLI::App* verb = AddVerb("convert", "open the first file, add the others, save as the last one",
                                 &CCommandLine::ConvertVerb);
        verb->add_option("FILE", m_files, "IN... OUT; the ending of OUT chooses the format")
            ->required()
            ->expected(2, CLI::detail::expected_max_vector_size);
        verb->add_option("--set", m_assignments, "NAME=VALUE: changes a setting for this run")
            ->allow_extra_args(false);
        verb->add_option("--colors", m_colors, "the colour depth of a BMP file, as save-as takes it");
        verb->add_option("--hotspot", m_hotSpot, "X,Y of a cursor");
        AddUserSettings(verb);
    }

    void AddRun()
    {
        CLI::App* verb = AddVerb("run", "run a script", &CCommandLine::RunVerb);
        verb->add_option("SCRIPT", m_script, "the script; - reads standard input")->required();
        verb->add_flag("--keep-going", m_keepGoing, "go on after a statement that is refused");
        verb->add_option("--journal", m_journalFolder, "keep journals in this folder while the script runs");
        AddUserSettings(verb);
    }

    void AddRecover()
    {
        CLI::App* verb = AddVerb("recover", "list the documents of journals that were left behind",
                                 &CCommandLine::RecoverVerb);
        verb->add_option("FOLDER", m_journalFolder, "the folder of --journal")->required();
        verb->add_option("SCRIPT", m_script, "a script to run on them; - reads standard input");
        verb->add_flag("--keep-going", m_keepGoing, "go on after a statement that is refused");
        verb->add_flag("--discard", m_discards, "remove the journals afterwards");
        AddUserSettings(verb);
    }

    void AddHelp()
    {
        CLI::App* verb = AddVerb("help", "every statement with its arguments", &CCommandLine::HelpVerb);
        verb->add_option("STATEMENT", m_statement, "only this one");
    }

    /// Runs `work` with a session, whose settings are read and written where that is wanted.
    template <typename Work> int WithSession(Work work)
    {
        ISettingsStore* const store = m_withUserSettings ? m_surroundings.userSettings : nullptr;
        if (m_withUserSettings && store == nullptr) {
            m_surroundings.errors << "there are no stored settings" << std::endl;
            return kWrongUsage;
        }
        CSession session(m_surroundings.output);
        if (store != nullptr)
            session.Settings().ReadAll(*store);
        const int status = work(session);
        if (store != nullptr)
            session.Settings().WriteAll(*store);
        m_surroundings.output.flush();
        return status;
    }

    int InfoVerb()
    {
        return WithSession([&](CSession& session) {
            return m_asJson ? PrintInformationAsJson(session, m_files) : PrintInformation(session, m_files);
        });
    }

    int CheckVerb()
    {
        return WithSession([&](CSession& session) { return CheckFiles(session, m_files); });
    }

    int ConvertVerb()
    {
        return WithSession([&](CSession& session) {
            for (const std::string& assignment : m_assignments) {
                if (!Assign(session.Settings(), assignment)) {
                    m_surroundings.errors << assignment << " is no NAME=VALUE of a setting" << std::endl;
                    return kWrongUsage;
                }
            }
            Conversion conversion{{m_files.begin(), m_files.end() - 1}, m_files.back(), {}};
            if (!m_colors.empty())
                conversion.options.push_back("colors=" + m_colors);
            if (!m_hotSpot.empty())
                conversion.options.push_back("hotspot=" + m_hotSpot);
            return Convert(session, conversion, m_surroundings.errors);
        });
    }

    int RunVerb()
    {
        return WithSession([&](CSession& session) {
            if (!m_journalFolder.empty() && !session.App().KeepJournals(m_journalFolder)) {
                m_surroundings.errors << "cannot keep journals in " << m_journalFolder << std::endl;
                return kRefusedOrFailed;
            }
            return RunScriptIn(session);
        });
    }

    int RecoverVerb()
    {
        return WithSession([&](CSession& session) {
            const auto folders = CJournalFolder::TakeOver(m_journalFolder);
            std::vector<std::filesystem::path> journals;
            for (const auto& folder : folders)
                std::ranges::move(folder->Journals(), std::back_inserter(journals));
            int status = Recover(session, journals);
            if (!m_script.empty())
                status = std::max(status, RunScriptIn(session));
            std::error_code ignored;
            for (const std::filesystem::path& journal : journals) {
                if (m_discards)
                    std::filesystem::remove(journal, ignored);
            }
            return status;
        });
    }

    int RunScriptIn(CSession& session)
    {
        const ScriptOptions options{m_script, m_keepGoing};
        if (m_script == "-")
            return RunScript(session, m_surroundings.input, options, m_surroundings.errors);
        std::ifstream file(m_script);
        file.peek(); // a folder can be opened, but not read
        if (!file.is_open() || file.bad()) {
            m_surroundings.errors << "cannot read " << m_script << std::endl;
            return kWrongUsage;
        }
        return RunScript(session, file, options, m_surroundings.errors);
    }

    int HelpVerb()
    {
        if (m_statement.empty())
            PrintAllStatements(m_surroundings.output);
        else if (!PrintStatement(m_statement, m_surroundings.output)) {
            m_surroundings.errors << "there is no statement " << m_statement << std::endl;
            return kWrongUsage;
        }
        return kAllDone;
    }

    const Surroundings& m_surroundings;
    CLI::App m_parser{"The picture editor Pixolune without a window.", "pixolune-cli"};
    int m_status = kAllDone;
    bool m_withUserSettings = false;
    std::vector<std::string> m_files;
    bool m_asJson = false;
    std::vector<std::string> m_assignments;
    std::string m_colors;
    std::string m_hotSpot;
    std::string m_script;
    bool m_keepGoing = false;
    std::string m_journalFolder;
    bool m_discards = false;
    std::string m_statement;
};

} // namespace

int RunCommandLine(std::vector<std::string> arguments, const Surroundings& surroundings)
{
    return CCommandLine(surroundings).Run(std::move(arguments));
}
