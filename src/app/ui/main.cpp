// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/CommandNames.h"
#include "app/SettingsStore.h"
#include "app/ui/Application.h"
#include "app/ui/ChildFrame.h"
#include "app/ui/MainFrame.h"
#include "app/ui/ProgramStyle.h"
#include "app/ui/QtClipboard.h"
#include "app/ui/QtUserInterface.h"
#include "app/ui/Translations.h"
#include "platform/ui/QtText.h"

#include <QAction>
#include <QCommandLineParser>
#include <QSettings>
#include <QTimer>

#include <fontconfig/fontconfig.h>

#include <algorithm>
#include <span>
#include <thread>

namespace {

/// Time for panels to be filled and previews to be drawn.
constexpr int kGrabMs = 300;

/// Writes a picture of the dialog that is open, of a part of the window by its name, or of the window; 0
/// when that worked.
int Grab(CMainFrame& window, const QString& path, const QString& part)
{
    QWidget* target = QApplication::activeModalWidget();
    if (!part.isEmpty())
        target = window.findChild<QWidget*>(part);
    else if (!target)
        target = &window;
    return target && target->grab().save(path) ? 0 : 1;
}

/// What the command line may say.
struct Arguments {
    Arguments()
    {
        pseudoLocale.setFlags(QCommandLineOption::HiddenFromHelp);
        parser.addOptions({grab, part, command, pseudoLocale});
        help = parser.addHelpOption();
        version = parser.addVersionOption();
        parser.addPositionalArgument(QStringLiteral("file"), QStringLiteral("Pictures to open."),
                                     QStringLiteral("[file...]"));
    }

    QCommandLineParser parser;
    QCommandLineOption grab{QStringLiteral("grab"), QStringLiteral("Write a picture of the window and end."),
                            QStringLiteral("file")};
    QCommandLineOption part{QStringLiteral("part"),
                            QStringLiteral("With --grab: only the part of that name."),
                            QStringLiteral("name")};
    QCommandLineOption command{QStringLiteral("command"),
                               QStringLiteral("Run a command, found as Find Command does."),
                               QStringLiteral("words")};
    QCommandLineOption pseudoLocale{QStringLiteral("pseudo-locale")};
    QCommandLineOption help{QStringLiteral("help")};
    QCommandLineOption version{QStringLiteral("version")};
};

/// Prints what --help and --version ask for, and ends then: that needs no display.
void AnswerOnTerminal(int& argc, char** argv)
{
    QStringList texts;
    for (const char* text : std::span(argv, static_cast<size_t>(argc)))
        texts.append(QString::fromLocal8Bit(text));
    const auto asks = [&](const QCommandLineOption& option) {
        return std::ranges::any_of(option.names(), [&](const QString& name) {
            return texts.contains((name.size() > 1 ? QLatin1String("--") : QLatin1String("-")) + name);
        });
    };
    Arguments arguments;
    if (asks(arguments.help) || asks(arguments.version) || texts.contains(QLatin1String("--help-all")))
        arguments.parser.process(QCoreApplication(argc, argv));
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication::setApplicationName(QStringLiteral("pixolune"));
    QCoreApplication::setApplicationVersion(QStringLiteral(PIXOLUNE_VERSION));
    AnswerOnTerminal(argc, argv);
    // Takes a while and is wanted with the first text; by then it is done, beside what else has to start.
    const std::jthread fonts([] { FcInit(); });
    QApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    // A fast stroke goes through every point that the mouse or the pen reports.
    QApplication::setAttribute(Qt::AA_CompressHighFrequencyEvents, false);
    QApplication::setAttribute(Qt::AA_CompressTabletEvents, false);
    CApplication application(argc, argv);
    // Not before: only now the desktop's own style is known, which it stands on.
    QApplication::setStyle(new CProgramStyle);
    Arguments arguments;
    arguments.parser.process(application);
    InstallTranslations(application, arguments.parser.isSet(arguments.pseudoLocale) ? Language::Pseudo
                                                                                    : Language::Desktop);

    const std::unique_ptr<QSettings> configuration = OpenUserConfiguration();
    CSettingsStore store(*configuration);
    CQtUserInterface ui(!arguments.parser.isSet(arguments.grab));
    CQtClipboard clipboard;
    CPixoluneApp app(ui, clipboard);
    app.Settings().ReadAll(store);
    const std::filesystem::path journals =
        arguments.parser.isSet(arguments.grab) ? std::filesystem::path() : UserJournalFolder();
    app.KeepJournals(journals);

    CMainFrame window(app, *configuration);
    if (arguments.parser.isSet(arguments.grab))
        window.resize(CMainFrame::kFirstSize); // also where the screen is smaller, as the one in memory is
    ui.Attach(&window, &window.StatusBar());
    const QStringList files = arguments.parser.positionalArguments();
    if (files.isEmpty()) {
        if (CPixoluneDoc* document = app.NewDocument())
            window.Show(*document);
    }
    const std::vector<const CommandRow*> commands =
        arguments.parser.isSet(arguments.command)
            ? SearchCommands(ToUtf8(arguments.parser.value(arguments.command)))
            : std::vector<const CommandRow*>();
    if (arguments.parser.isSet(arguments.command) && commands.empty())
        return 1;
    QObject::connect(&window, &CMainFrame::Appeared, &window, [&] {
        for (const QString& file : files)
            window.OpenFile(file);
        if (!commands.empty())
            QTimer::singleShot(0, window.Action(commands.front()->id), &QAction::trigger);
        if (arguments.parser.isSet(arguments.grab)) {
            QTimer::singleShot(kGrabMs, &window, [&] {
                QApplication::exit(Grab(window, arguments.parser.value(arguments.grab),
                                        arguments.parser.value(arguments.part)));
            });
        } else if (!journals.empty()) {
            QTimer::singleShot(0, &window, [&] { window.OfferRecovery(journals); });
        }
    });
    window.show();
    // Where no window manager does, the window takes the keyboard itself.
    window.activateWindow();

    const int status = application.Run(app, window);
    if (arguments.parser.isSet(arguments.grab))
        return status;
    app.Settings().WriteAll(store);
    return status;
}
