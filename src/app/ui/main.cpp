// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/SettingsStore.h"
#include "app/ui/ChildFrame.h"
#include "app/ui/MainFrame.h"
#include "app/ui/QtClipboard.h"
#include "app/ui/QtUserInterface.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QSettings>

namespace {

/// Writes a picture of the window; 0 when that worked.
int Grab(CMainFrame& window, const QString& path)
{
    QApplication::processEvents();
    return window.grab().save(path) ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication::setHighDpiScaleFactorRoundingPolicy(Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    // A fast stroke goes through every point that the mouse or the pen reports.
    QApplication::setAttribute(Qt::AA_CompressHighFrequencyEvents, false);
    QApplication::setAttribute(Qt::AA_CompressTabletEvents, false);
    const QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("pixolune"));
    QApplication::setApplicationVersion(QStringLiteral(PIXOLUNE_VERSION));

    QCommandLineParser arguments;
    const QCommandLineOption grab(QStringLiteral("grab"),
                                  QStringLiteral("Write a picture of the main window and end."),
                                  QStringLiteral("file"));
    arguments.addOption(grab);
    arguments.addHelpOption();
    arguments.addVersionOption();
    arguments.addPositionalArgument(QStringLiteral("file"), QStringLiteral("Pictures to open."),
                                    QStringLiteral("[file...]"));
    arguments.process(application);

    const std::unique_ptr<QSettings> configuration = OpenUserConfiguration();
    CSettingsStore store(*configuration);
    CQtUserInterface ui(!arguments.isSet(grab));
    CQtClipboard clipboard;
    CPixoluneApp app(ui, clipboard);
    app.Settings().ReadAll(store);

    CMainFrame window(app, *configuration);
    ui.Attach(&window, &window.StatusBar());
    const QStringList files = arguments.positionalArguments();
    if (files.isEmpty()) {
        if (CPixoluneDoc* document = app.NewDocument())
            window.Show(*document);
    }
    for (const QString& file : files)
        window.OpenFile(file);
    window.show();
    if (arguments.isSet(grab))
        return Grab(window, arguments.value(grab));

    const int status = QApplication::exec();
    app.Settings().WriteAll(store);
    return status;
}
