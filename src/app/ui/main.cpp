// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/CommandNames.h"
#include "app/SettingsStore.h"
#include "app/ui/ChildFrame.h"
#include "app/ui/MainFrame.h"
#include "app/ui/QtClipboard.h"
#include "app/ui/QtUserInterface.h"
#include "app/ui/Translations.h"
#include "platform/ui/QtText.h"

#include <QAction>
#include <QApplication>
#include <QCommandLineParser>
#include <QSettings>
#include <QTimer>

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

} // namespace

int main(int argc, char** argv)
{
    QApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    // A fast stroke goes through every point that the mouse or the pen reports.
    QApplication::setAttribute(Qt::AA_CompressHighFrequencyEvents, false);
    QApplication::setAttribute(Qt::AA_CompressTabletEvents, false);
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("pixolune"));
    QApplication::setApplicationVersion(QStringLiteral(PIXOLUNE_VERSION));

    QCommandLineParser arguments;
    const QCommandLineOption grab(QStringLiteral("grab"),
                                  QStringLiteral("Write a picture of the window and end."),
                                  QStringLiteral("file"));
    const QCommandLineOption part(QStringLiteral("part"),
                                  QStringLiteral("With --grab: only the part of that name."),
                                  QStringLiteral("name"));
    const QCommandLineOption command(QStringLiteral("command"),
                                     QStringLiteral("Run a command, found as Find Command does."),
                                     QStringLiteral("words"));
    QCommandLineOption pseudoLocale(QStringLiteral("pseudo-locale"));
    pseudoLocale.setFlags(QCommandLineOption::HiddenFromHelp);
    arguments.addOptions({grab, part, command, pseudoLocale});
    arguments.addHelpOption();
    arguments.addVersionOption();
    arguments.addPositionalArgument(QStringLiteral("file"), QStringLiteral("Pictures to open."),
                                    QStringLiteral("[file...]"));
    arguments.process(application);
    InstallTranslations(application, arguments.isSet(pseudoLocale) ? Language::Pseudo : Language::Desktop);

    const std::unique_ptr<QSettings> configuration = OpenUserConfiguration();
    CSettingsStore store(*configuration);
    CQtUserInterface ui(!arguments.isSet(grab));
    CQtClipboard clipboard;
    CPixoluneApp app(ui, clipboard);
    app.Settings().ReadAll(store);
    const std::filesystem::path journals =
        arguments.isSet(grab) ? std::filesystem::path() : UserJournalFolder();
    app.KeepJournals(journals);

    CMainFrame window(app, *configuration);
    ui.Attach(&window, &window.StatusBar());
    const QStringList files = arguments.positionalArguments();
    if (files.isEmpty()) {
        if (CPixoluneDoc* document = app.NewDocument())
            window.Show(*document);
    }
    const std::vector<const CommandRow*> commands = arguments.isSet(command)
                                                        ? SearchCommands(ToUtf8(arguments.value(command)))
                                                        : std::vector<const CommandRow*>();
    if (arguments.isSet(command) && commands.empty())
        return 1;
    QObject::connect(&window, &CMainFrame::Appeared, &window, [&] {
        for (const QString& file : files)
            window.OpenFile(file);
        if (!commands.empty())
            QTimer::singleShot(0, window.Action(commands.front()->id), &QAction::trigger);
        if (arguments.isSet(grab)) {
            QTimer::singleShot(kGrabMs, &window, [&] {
                QApplication::exit(Grab(window, arguments.value(grab), arguments.value(part)));
            });
        } else if (!journals.empty()) {
            QTimer::singleShot(0, &window, [&] { window.OfferRecovery(journals); });
        }
    });
    window.show();
    // Where no window manager does, the window takes the keyboard itself.
    window.activateWindow();

    const int status = QApplication::exec();
    if (arguments.isSet(grab))
        return status;
    app.Settings().WriteAll(store);
    return status;
}
