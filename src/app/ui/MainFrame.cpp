// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/MainFrame.h"

#include "app/HelpPages.h"
#include "app/ui/AboutDialog.h"
#include "app/ui/BarTables.h"
#include "app/ui/ChildFrame.h"
#include "app/ui/CommandActions.h"
#include "app/ui/CommandSearch.h"
#include "app/ui/DialogCommands.h"
#include "app/ui/DocumentArea.h"
#include "app/ui/Help.h"
#include "app/ui/IdleWorker.h"
#include "app/ui/MenuLists.h"
#include "app/ui/ObjectsPanel.h"
#include "app/ui/OptionsPanel.h"
#include "app/ui/PanelDock.h"
#include "app/ui/PanelLayout.h"
#include "app/ui/PreferencesDialog.h"
#include "app/ui/RecoverDialog.h"
#include "app/ui/StatusBar.h"
#include "canvas/ui/CanvasAccessibility.h"
#include "canvas/ui/CanvasWidget.h"
#include "platform/ui/HelpPage.h"
#include "platform/ui/QtText.h"
#include "platform/ui/ThemedIcon.h"

#include <QClipboard>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QMenuBar>
#include <QMimeData>
#include <QScopedValueRollback>
#include <QScreen>
#include <QSettings>
#include <QTimer>
#include <QToolBar>

namespace {

using enum CommandId;

constexpr QLatin1String kGeometryKey("XWorkspace/Geometry");
constexpr QLatin1String kLayoutKey("XWorkspace/Layout");
constexpr QLatin1String kUnpinnedKey("XWorkspace/Unpinned");
constexpr QLatin1String kTabbedKey("XWorkspace/Tabbed");
/// Raised whenever bars or panels are added, so that layouts of older versions are not mistaken for it.
constexpr int kLayoutVersion = 2;

constexpr QSize kOptionsSize(310, 270);
constexpr QSize kObjectsSize(310, 440);

} // namespace

CMainFrame::CMainFrame(CPixoluneApp& app, QSettings& configuration)
    : m_app(app), m_configuration(configuration), m_shortcuts(configuration), m_recentFiles(configuration),
      m_files(app, m_recentFiles, *this), m_printing(configuration, *this),
      m_help(std::make_unique<CHelp>(m_shortcuts, configuration, [this] { return CurrentHelpPage(); })),
      m_area(new CDocumentArea([this](CPixoluneDoc& document) { return m_files.MayClose(document); })),
      m_statusBar(new CStatusBar),
      m_actions(new CCommandActions(*this, m_shortcuts, [this] { return Context(); })),
      m_idleWorker(new CIdleWorker(app, this)), m_panels(new CPanelLayout(*this))
{
    InstallCanvasAccessibility();
    setWindowIcon(ApplicationIcon());
    setWindowTitle(ToQString(Str::ApplicationTitle));
    setAcceptDrops(true);
    setStatusBar(m_statusBar);
    setCentralWidget(m_area);
    connect(m_area, &CDocumentArea::FrameActivated, this, &CMainFrame::Refresh);
    connect(m_area, &CDocumentArea::DocumentClosed, this, &CMainFrame::OnDocumentClosed);
    connect(m_panels, &CPanelLayout::FocusReturned, this, [this] {
        if (CChildFrame* frame = ActiveFrame())
            frame->Canvas().setFocus();
    });
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this, &CMainFrame::ScheduleRefresh);

    connect(m_actions, &CCommandActions::Ran, this, &CMainFrame::ScheduleRefresh);
    m_actions->FillMenuBar(*menuBar());
    auto* lists = new CMenuLists(m_recentFiles, *m_area, *Action(FileExit), this);
    connect(m_actions, &CCommandActions::MenuOpening, lists,
            [lists](QMenu* menu, const QString& path) { lists->Extend(*menu, path); });
    connect(lists, &CMenuLists::FileChosen, this, &CMainFrame::OpenFile);
    CreateBars();
    CreatePanels();
    RestoreLayout();
    // What is possible is shown with the first document, or once the window is there: icons drawn for none
    // are drawn in vain where a document is about to come.
}

CMainFrame::~CMainFrame()
{
    // What panels and windows of documents report as they go must find this window whole.
    hide();
    disconnect(m_area, &CDocumentArea::FrameActivated, this, nullptr);
    delete takeCentralWidget();
}

void CMainFrame::CreateBars()
{
    const struct {
        QToolBar*& bar;
        const char* name;
        Str title;
        std::span<const std::optional<CommandId>> commands;
    } rows[] = {{m_mainBar, "MainBar", Str::ToolBar, BarTables::kMainBar},
                {m_drawingBar, "DrawingBar", Str::DrawingBar, BarTables::kDrawingBar}};
    for (const auto& row : rows) {
        row.bar = new QToolBar(ToQString(row.title), this);
        row.bar->setObjectName(QLatin1String(row.name));
        m_actions->FillToolBar(*row.bar, row.commands);
    }
    PlaceBars();
}

void CMainFrame::PlaceBars()
{
    addToolBar(Qt::TopToolBarArea, m_mainBar);
    addToolBar(Qt::LeftToolBarArea, m_drawingBar);
    m_mainBar->show();
    m_drawingBar->show();
}

void CMainFrame::CreatePanels()
{
    const struct {
        CPanelDock*& dock;
        const char* name;
        Str title;
        const char* helpPage;
        QSize size;
    } rows[] = {{m_optionsDock, "OptionsPanel", Str::OptionsPanel, "options-panel", kOptionsSize},
                {m_objectsDock, "ObjectsPanel", Str::ObjectsPanel, "objects-panel", kObjectsSize}};
    for (const auto& row : rows) {
        row.dock = new CPanelDock(ToQString(row.title), QLatin1String(row.name), row.size);
        SetHelpPage(*row.dock, QLatin1String(row.helpPage));
        m_panels->Add(*row.dock);
        connect(row.dock, &QDockWidget::visibilityChanged, this, &CMainFrame::ScheduleRefresh);
    }
    m_panels->Reset();
}

void CMainFrame::paintEvent(QPaintEvent* event)
{
    QMainWindow::paintEvent(event);
    if (std::exchange(m_hasAppeared, true))
        return;
    QTimer::singleShot(0, this, [this] {
        Q_EMIT Appeared();
        FillPanels();
    });
}

void CMainFrame::FillPanels()
{
    if (m_objectsPanel)
        return;
    m_objectsPanel = new CObjectsPanel(m_app.Settings(), *m_actions, m_objectsDock);
    m_objectsDock->setWidget(m_objectsPanel);
    m_optionsPanel = new COptionsPanel(m_app.Settings(), *m_actions, m_optionsDock);
    m_optionsDock->setWidget(m_optionsPanel);
    connect(m_optionsPanel, &COptionsPanel::EditingEnded, this, [this] {
        if (ActiveFrame())
            ActiveFrame()->Canvas().setFocus();
    });
    Refresh();
}

void CMainFrame::RestoreLayout()
{
    if (!restoreGeometry(m_configuration.value(kGeometryKey).toByteArray()))
        resize(kFirstSize.boundedTo(screen()->availableSize()));
    restoreState(m_configuration.value(kLayoutKey).toByteArray(), kLayoutVersion);
    m_panels->SetUnpinned(m_configuration.value(kUnpinnedKey).toStringList());
    if (!m_configuration.value(kTabbedKey, true).toBool())
        m_area->Arrange(WindowArrangement::Cascade);
}

void CMainFrame::SaveLayout()
{
    m_configuration.setValue(kGeometryKey, saveGeometry());
    m_configuration.setValue(kLayoutKey, saveState(kLayoutVersion));
    m_configuration.setValue(kUnpinnedKey, m_panels->Unpinned());
    m_configuration.setValue(kTabbedKey, m_area->IsTabbed());
}

// Documents and their windows

CChildFrame* CMainFrame::OpenFile(const QString& path)
{
    for (CChildFrame* frame : m_area->Frames()) {
        std::error_code error;
        if (std::filesystem::equivalent(frame->Document().Path(), ToPath(path), error)) {
            m_area->setActiveSubWindow(frame);
            return frame;
        }
    }
    CPixoluneDoc* document = m_files.Open(path);
    return document ? Show(*document) : nullptr;
}

CChildFrame* CMainFrame::Show(CPixoluneDoc& document)
{
    CChildFrame* frame = m_area->Open(document);
    Connect(*frame);
    Refresh();
    m_idleWorker->Wake();
    return frame;
}

void CMainFrame::Connect(CChildFrame& frame)
{
    CCanvasWidget& canvas = frame.Canvas();
    connect(&frame, &CChildFrame::StateChanged, this, &CMainFrame::ScheduleRefresh);
    connect(&frame, &CChildFrame::StateChanged, m_idleWorker, &CIdleWorker::Wake);
    connect(&canvas, &CCanvasWidget::BusyChanged, this, &CMainFrame::ScheduleRefresh);
    connect(&canvas, &CCanvasWidget::PointerTextChanged, m_statusBar, &CStatusBar::SetPointerText);
    connect(&canvas, &CCanvasWidget::DraggedRectTextChanged, m_statusBar, &CStatusBar::SetDraggedRectText);
    connect(&canvas, &CCanvasWidget::ColorUnderPointer, this, [this](uint32_t pixel) {
        if (m_optionsPanel)
            m_optionsPanel->ShowPickedPixel(pixel);
    });
    connect(&canvas, &CCanvasWidget::PaintColorsChanged, this, [this] {
        if (m_optionsPanel)
            m_optionsPanel->Refresh();
    });
    connect(&canvas, &CCanvasWidget::MenuRequested, this, [this](const QPoint& position) {
        Refresh();
        QMenu menu;
        m_actions->FillMenu(menu, BarTables::kCanvasMenu);
        menu.exec(position);
    });
}

void CMainFrame::OfferRecovery(const std::filesystem::path& parent)
{
    // Held until the question is settled: no other process asks for the same documents.
    const auto folders = CJournalFolder::TakeOver(parent);
    std::vector<LeftBehind> found = FindLeftBehind(folders, m_app.Services());
    if (found.empty())
        return;
    const auto recover = [this](LeftBehind left) {
        const Ref<CSelectionState> selection = left.recovered.Selection();
        CChildFrame* frame = Show(*m_app.TakeRecovered(std::move(left.recovered), left.journal));
        if (selection)
            frame->View().TakeSelection(selection);
    };
    const auto confirm = [this](const QString& question) {
        return m_app.Services().ui.AskYesNo(ToUtf8(question));
    };
    CRecoverDialog(std::move(found), recover, confirm, this).exec();
}

void CMainFrame::OnDocumentClosed(CPixoluneDoc* document)
{
    if (m_objectsPanel && m_objectsPanel->Document() == document)
        m_objectsPanel->SetDocument(nullptr);
    m_app.CloseDocument(document);
    ScheduleRefresh();
}

CChildFrame* CMainFrame::ActiveFrame() const
{
    return m_area->ActiveFrame();
}

void CMainFrame::closeEvent(QCloseEvent* event)
{
    const bool closing = m_area->MayCloseAll();
    if (closing)
        SaveLayout();
    event->setAccepted(closing);
}

void CMainFrame::dragEnterEvent(QDragEnterEvent* event)
{
    if (event->mimeData()->hasUrls())
        event->acceptProposedAction();
}

void CMainFrame::dropEvent(QDropEvent* event)
{
    for (const QUrl& url : event->mimeData()->urls()) {
        if (url.isLocalFile())
            OpenFile(url.toLocalFile());
    }
}

// Commands

QAction* CMainFrame::Action(CommandId id) const
{
    return m_actions->Find(id);
}

CommandContext CMainFrame::Context()
{
    CChildFrame* frame = ActiveFrame();
    return {m_app, frame ? &frame->Document() : nullptr, frame ? &frame->View() : nullptr, this};
}

void CMainFrame::ScheduleRefresh()
{
    if (m_refreshPending)
        return;
    m_refreshPending = true;
    QTimer::singleShot(0, this, &CMainFrame::Refresh);
}

void CMainFrame::Refresh()
{
    m_refreshPending = false;
    m_actions->Refresh();
    if (m_optionsPanel)
        m_optionsPanel->ShowPage(ActiveFrame() ? ActiveFrame()->View().Mode() : ToolMode::Default);
    if (m_objectsPanel)
        m_objectsPanel->SetDocument(ActiveFrame() ? &ActiveFrame()->Document() : nullptr);
    const QString title = ToQString(Str::ApplicationTitle);
    if (CChildFrame* frame = ActiveFrame()) {
        m_statusBar->SetCanvas(frame->Document().Canvas().Size(), frame->View().Zoom());
        m_statusBar->SetDraggedRectText(ToQString(frame->View().DraggedRectText()));
        setWindowTitle(frame->windowTitle() + QStringLiteral(" - ") + title);
        setWindowModified(frame->isWindowModified());
    } else {
        m_statusBar->ClearCanvas();
        setWindowTitle(title);
        setWindowModified(false);
    }
}

void CMainFrame::changeEvent(QEvent* event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange)
        ScheduleRefresh();
}

void CMainFrame::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && isFullScreen())
        RunFullScreen();
    else
        QMainWindow::keyPressEvent(event);
}

QMenu* CMainFrame::createPopupMenu()
{
    Refresh();
    auto* menu = new QMenu(this);
    m_actions->FillMenu(*menu, BarTables::kWindowParts);
    return menu;
}

QWidget* CMainFrame::BarOf(CommandId id) const
{
    return id == ViewToolBar      ? static_cast<QWidget*>(m_mainBar)
           : id == ViewDrawingBar ? static_cast<QWidget*>(m_drawingBar)
           : id == ViewStatusBar  ? m_statusBar
                                  : nullptr;
}

CPanelDock* CMainFrame::DockOf(CommandId id) const
{
    return id == ViewOptionsPanel ? m_optionsDock : id == ViewObjectsPanel ? m_objectsDock : nullptr;
}

bool CMainFrame::IsWindowCommandChecked(CommandId id) const
{
    if (id == ViewFullScreen)
        return isFullScreen();
    if (id == WindowTabs)
        return m_area->IsTabbed();
    if (const CPanelDock* dock = DockOf(id))
        return m_panels->IsShown(*dock);
    const QWidget* bar = BarOf(id);
    return bar && !bar->isHidden();
}

bool CMainFrame::RunWindowCommand(CommandId id)
{
    // Help on a dialog is help on the command that opened it.
    const QScopedValueRollback running(m_running, std::optional(id));
    if (QWidget* bar = BarOf(id)) {
        bar->setVisible(bar->isHidden());
        return true;
    }
    if (CPanelDock* dock = DockOf(id)) {
        m_panels->SetShown(*dock, !m_panels->IsShown(*dock));
        return true;
    }
    CChildFrame* frame = ActiveFrame();
    if (frame && id >= FileSaveAsJpg && id <= FileSaveAsAni) {
        const auto row = static_cast<size_t>(id) - static_cast<size_t>(FileSaveAsJpg);
        return m_files.Export(frame->Document(), SaveFormatTable()[row]);
    }
    switch (id) {
    case FileNew:
        return RunNew();
    case FileOpen:
        return RunOpen();
    case FileSave:
        return frame && m_files.Save(frame->Document());
    case FileSaveAs:
        return frame && m_files.SaveAs(frame->Document());
    case FileExportAnimation:
        return frame && m_files.ExportFrames(frame->Document());
    case FileClose:
        return frame && m_area->CloseDocument(frame->Document());
    case FilePageSetup:
        return m_printing.SetUpPage(*this);
    case FilePrintPreview:
        return frame && m_printing.Preview(frame->Document());
    case FilePrint:
        return frame && m_printing.Print(frame->Document());
    case FileExit:
        return close();
    case ObjectAddImages:
        return frame && m_files.Add(frame->Document(), AddKind::ImageFiles);
    case ObjectAddAvi:
        return frame && m_files.Add(frame->Document(), AddKind::Avi);
    case EditPreferences:
        return RunPreferences();
    case ViewFullScreen:
        return RunFullScreen();
    case ViewResetLayout:
        return RunResetLayout();
    case WindowNew:
        return frame && Show(frame->Document());
    case WindowTabs:
    case WindowCascade:
    case WindowTileHorizontally:
    case WindowTileVertically:
        return RunArrange(id);
    case WindowNext:
        m_area->activateNextSubWindow();
        return true;
    case WindowPrevious:
        m_area->activatePreviousSubWindow();
        return true;
    case HelpTopics:
    case HelpKeyboard:
        return RunHelp(id);
    case HelpFindCommand:
        return RunFindCommand();
    case WindowClose:
        return frame && frame->close();
    case WindowCloseAll:
        return m_area->CloseAll();
    case HelpAbout:
        return RunAbout();
    default:
        return frame && RunDialogCommand(id, frame->Document(), *this);
    }
}

bool CMainFrame::RunNew()
{
    CPixoluneDoc* document = m_files.New();
    return document && Show(*document);
}

bool CMainFrame::RunOpen()
{
    bool opened = false;
    for (const QString& path : m_files.ChooseToOpen())
        opened = OpenFile(path) || opened;
    return opened;
}

bool CMainFrame::RunPreferences()
{
    CPreferencesDialog dialog(m_app.Settings(), m_shortcuts, this);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    m_shortcuts.Write(m_configuration);
    m_actions->SetShortcuts(m_shortcuts);
    return true;
}

bool CMainFrame::RunFindCommand()
{
    const CommandContext context = Context();
    CCommandSearch search(context, m_shortcuts, this);
    if (search.exec() != QDialog::Accepted)
        return false;
    Refresh();
    Action(*search.Chosen())->trigger();
    return true;
}

bool CMainFrame::RunHelp(CommandId id)
{
    if (id == HelpTopics)
        m_help->ShowFor(focusWidget());
    else
        m_help->Show(ToQString(HelpPage(id)));
    return true;
}

QString CMainFrame::CurrentHelpPage() const
{
    if (m_running && *m_running != HelpTopics)
        return ToQString(HelpPage(*m_running));
    return ToQString(ActiveFrame() ? HelpPage(ActiveFrame()->View().Mode()) : HelpPage(HelpTopics));
}

bool CMainFrame::RunAbout()
{
    CAboutDialog(this).exec();
    return true;
}

bool CMainFrame::RunFullScreen()
{
    setWindowState(windowState() ^ Qt::WindowFullScreen);
    return true;
}

bool CMainFrame::RunResetLayout()
{
    PlaceBars();
    m_statusBar->show();
    m_panels->Reset();
    m_area->Arrange(WindowArrangement::Tabs);
    return true;
}

bool CMainFrame::RunArrange(CommandId id)
{
    m_area->Arrange(id == WindowCascade            ? WindowArrangement::Cascade
                    : id == WindowTileHorizontally ? WindowArrangement::TileHorizontally
                    : id == WindowTileVertically   ? WindowArrangement::TileVertically
                                                   : WindowArrangement::Tabs);
    return true;
}
