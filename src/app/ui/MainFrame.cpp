// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/MainFrame.h"

#include "app/HelpPages.h"
#include "app/ui/AboutDialog.h"
#include "app/ui/ChildFrame.h"
#include "app/ui/CommandActions.h"
#include "app/ui/CommandSearch.h"
#include "app/ui/DialogCommands.h"
#include "app/ui/Help.h"
#include "app/ui/ObjectsPanel.h"
#include "app/ui/OptionsPanel.h"
#include "app/ui/PreferencesDialog.h"
#include "app/ui/StatusBar.h"
#include "canvas/ui/CanvasWidget.h"
#include "platform/ui/QtText.h"
#include "platform/ui/ThemedIcon.h"

#include <QClipboard>
#include <QCloseEvent>
#include <QDockWidget>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMdiArea>
#include <QMenuBar>
#include <QMimeData>
#include <QScopedValueRollback>
#include <QSettings>
#include <QTabBar>
#include <QTimer>
#include <QToolBar>

namespace {

using enum CommandId;

constexpr QLatin1String kGeometryKey("XWorkspace/Geometry");
constexpr QLatin1String kLayoutKey("XWorkspace/Layout");
/// Raised whenever bars or panels are added, so that layouts of older versions are not mistaken for it.
constexpr int kLayoutVersion = 1;

constexpr int kPanelWidth = 260;
constexpr int kOptionsHeight = 270;
constexpr int kObjectsHeight = 440;

constexpr std::optional<CommandId> kSeparator;

constexpr std::optional<CommandId> kMainBar[] = {
    FileNew,
    FileOpen,
    FileSave,
    kSeparator,
    EditCut,
    EditCopy,
    EditPaste,
    EditDelete,
    kSeparator,
    EditUndo,
    EditRedo,
    kSeparator,
    ViewZoomIn,
    ViewZoomOut,
    ViewActualSize,
    kSeparator,
    ObjectNew,
    ObjectDuplicate,
    kSeparator,
    EditResize,
    TransformRedGreenBlue,
    TransformHueSaturationLightness,
    TransformGaussianBlur,
    TransformSharpness,
    TransformEmboss,
};

constexpr std::optional<CommandId> kDrawingBar[] = {
    ToolDefault,
    kSeparator,
    ToolRectangularSelection,
    ToolEllipticalSelection,
    ToolLassoSelection,
    ToolMagicWandSelection,
    kSeparator,
    ToolPencil,
    ToolErase,
    ToolFloodFill,
    ToolPickColor,
    kSeparator,
    ToolText,
    ToolRectangle,
    ToolEllipse,
    ToolPolygon,
};

constexpr std::optional<CommandId> kCanvasMenu[] = {
    EditCut,       EditCopy,   EditPaste,         EditDelete,        kSeparator,         ObjectDuplicate,
    ObjectCombine, kSeparator, ObjectMoveToFront, ObjectMoveForward, ObjectMoveBackward, ObjectMoveToBack,
    kSeparator,    ObjectTrim, ObjectProperties,
};

} // namespace

CMainFrame::CMainFrame(CPixoluneApp& app, QSettings& configuration)
    : m_app(app), m_configuration(configuration), m_shortcuts(configuration), m_recentFiles(configuration),
      m_files(app, m_recentFiles, *this),
      m_help(std::make_unique<CHelp>(m_shortcuts, configuration, [this] { return CurrentHelpPage(); })),
      m_tabs(new QMdiArea), m_statusBar(new CStatusBar),
      m_actions(new CCommandActions(*this, m_shortcuts, [this] { return Context(); }))
{
    setWindowIcon(ApplicationIcon());
    setWindowTitle(ToQString(Str::ApplicationTitle));
    setAcceptDrops(true);
    setStatusBar(m_statusBar);

    m_tabs->setViewMode(QMdiArea::TabbedView);
    m_tabs->setDocumentMode(true);
    m_tabs->setTabsClosable(true);
    m_tabs->setTabsMovable(true);
    if (auto* bar = m_tabs->findChild<QTabBar*>())
        bar->setExpanding(false);
    m_tabs->setFrameShape(QFrame::NoFrame);
    setCentralWidget(m_tabs);
    connect(m_tabs, &QMdiArea::subWindowActivated, this, &CMainFrame::OnFrameActivated);
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this, &CMainFrame::ScheduleRefresh);

    connect(m_actions, &CCommandActions::Ran, this, &CMainFrame::ScheduleRefresh);
    connect(m_actions, &CCommandActions::MenuOpening, this,
            [this](QMenu* menu, const QString& path) { ExtendMenu(*menu, path); });
    m_actions->FillMenuBar(*menuBar());
    CreateBars();
    CreatePanels();
    RestoreLayout();
    Refresh();
}

CMainFrame::~CMainFrame()
{
    // Tabs report their end; that must find the window whole.
    delete takeCentralWidget();
}

void CMainFrame::CreateBars()
{
    const struct {
        QToolBar*& bar;
        const char* name;
        Str title;
        Qt::ToolBarArea area;
        std::span<const std::optional<CommandId>> commands;
    } rows[] = {{m_mainBar, "MainBar", Str::ToolBar, Qt::TopToolBarArea, kMainBar},
                {m_drawingBar, "DrawingBar", Str::DrawingBar, Qt::LeftToolBarArea, kDrawingBar}};
    for (const auto& row : rows) {
        row.bar = new QToolBar(ToQString(row.title));
        row.bar->setObjectName(QLatin1String(row.name));
        m_actions->FillToolBar(*row.bar, row.commands);
        addToolBar(row.area, row.bar);
    }
}

void CMainFrame::CreatePanels()
{
    const struct {
        QDockWidget*& dock;
        const char* name;
        Str title;
        const char* helpPage;
    } rows[] = {{m_optionsDock, "OptionsPanel", Str::OptionsPanel, "options-panel"},
                {m_objectsDock, "ObjectsPanel", Str::ObjectsPanel, "objects-panel"}};
    for (const auto& row : rows) {
        row.dock = new QDockWidget(ToQString(row.title));
        row.dock->setObjectName(QLatin1String(row.name));
        SetHelpPage(*row.dock, row.helpPage);
        addDockWidget(Qt::RightDockWidgetArea, row.dock);
    }
    resizeDocks({m_optionsDock, m_objectsDock}, {kPanelWidth, kPanelWidth}, Qt::Horizontal);
    resizeDocks({m_optionsDock, m_objectsDock}, {kOptionsHeight, kObjectsHeight}, Qt::Vertical);
}

void CMainFrame::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    QTimer::singleShot(0, this, &CMainFrame::FillPanels);
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
        resize(1280, 820);
    restoreState(m_configuration.value(kLayoutKey).toByteArray(), kLayoutVersion);
}

void CMainFrame::SaveLayout()
{
    m_configuration.setValue(kGeometryKey, saveGeometry());
    m_configuration.setValue(kLayoutKey, saveState(kLayoutVersion));
}

// Documents and tabs

CChildFrame* CMainFrame::OpenFile(const QString& path)
{
    CPixoluneDoc* document = m_files.Open(path);
    return document ? Show(*document) : nullptr;
}

CChildFrame* CMainFrame::Show(CPixoluneDoc& document)
{
    auto* frame = new CChildFrame(document, [this](CChildFrame& closing) { return MayClose(closing); });
    m_tabs->addSubWindow(frame);
    connect(frame, &CChildFrame::StateChanged, this, &CMainFrame::ScheduleRefresh);
    connect(frame, &CChildFrame::Closed, this, &CMainFrame::OnFrameClosed);
    connect(&frame->Canvas(), &CCanvasWidget::PointerTextChanged, m_statusBar, &CStatusBar::SetPointerText);
    connect(&frame->Canvas(), &CCanvasWidget::DraggedRectTextChanged, m_statusBar,
            &CStatusBar::SetDraggedRectText);
    connect(&frame->Canvas(), &CCanvasWidget::ColorUnderPointer, this, [this](uint32_t pixel) {
        if (m_optionsPanel)
            m_optionsPanel->ShowPickedPixel(pixel);
    });
    connect(&frame->Canvas(), &CCanvasWidget::PaintColorsChanged, this, [this] {
        if (m_optionsPanel)
            m_optionsPanel->Refresh();
    });
    connect(&frame->Canvas(), &CCanvasWidget::MenuRequested, this, [this](const QPoint& position) {
        Refresh();
        QMenu menu;
        m_actions->FillMenu(menu, kCanvasMenu);
        menu.exec(position);
    });
    frame->showMaximized();
    frame->Canvas().setFocus();
    m_activeFrame = frame;
    Refresh();
    return frame;
}

void CMainFrame::OnFrameClosed(CPixoluneDoc* document)
{
    if (m_activeFrame && &m_activeFrame->Document() == document)
        m_activeFrame = nullptr;
    if (m_objectsPanel && m_objectsPanel->Document() == document)
        m_objectsPanel->SetDocument(nullptr);
    m_app.CloseDocument(document);
    ScheduleRefresh();
}

CChildFrame* CMainFrame::ActiveFrame() const
{
    return m_activeFrame;
}

void CMainFrame::OnFrameActivated(QMdiSubWindow* window)
{
    // While another program's window is active no tab is; commands still act on the one that is seen.
    if (auto* frame = qobject_cast<CChildFrame*>(window))
        m_activeFrame = frame;
    Refresh();
}

bool CMainFrame::MayClose(CChildFrame& frame)
{
    m_tabs->setActiveSubWindow(&frame);
    return m_files.MayClose(frame.Document());
}

bool CMainFrame::MayCloseAll()
{
    for (QMdiSubWindow* window : m_tabs->subWindowList()) {
        auto* frame = qobject_cast<CChildFrame*>(window);
        if (frame && !MayClose(*frame))
            return false;
    }
    return true;
}

void CMainFrame::closeEvent(QCloseEvent* event)
{
    const bool closing = MayCloseAll();
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

QWidget* CMainFrame::PartOf(CommandId id) const
{
    switch (id) {
    case ViewToolBar:
        return m_mainBar;
    case ViewDrawingBar:
        return m_drawingBar;
    case ViewStatusBar:
        return m_statusBar;
    case ViewOptionsPanel:
        return m_optionsDock;
    case ViewObjectsPanel:
        return m_objectsDock;
    default:
        return nullptr;
    }
}

bool CMainFrame::IsWindowCommandChecked(CommandId id) const
{
    if (id == ViewFullScreen)
        return isFullScreen();
    const QWidget* part = PartOf(id);
    return part && part->isVisibleTo(this);
}

bool CMainFrame::RunWindowCommand(CommandId id)
{
    // Help on a dialog is help on the command that opened it.
    const QScopedValueRollback running(m_running, std::optional(id));
    if (QWidget* part = PartOf(id)) {
        part->setVisible(!part->isVisibleTo(this));
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
    case FileClose:
        return frame && frame->close();
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
    case WindowNext:
        m_tabs->activateNextSubWindow();
        return true;
    case WindowPrevious:
        m_tabs->activatePreviousSubWindow();
        return true;
    case HelpTopics:
    case HelpKeyboard:
        return RunHelp(id);
    case HelpFindCommand:
        return RunFindCommand();
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

// Menus that list files and windows

void CMainFrame::ExtendMenu(QMenu& menu, const QString& path)
{
    if (path == QLatin1String("File"))
        AddRecentFiles(menu);
    else if (path == QLatin1String("Window"))
        AddWindowList(menu);
}

void CMainFrame::AddRecentFiles(QMenu& menu)
{
    if (!m_recentMenu) {
        m_recentMenu = new QMenu(ToQString(Str::RecentFiles), &menu);
        m_recentMenu->setIcon(ThemedIcon("recent"));
        QAction* exit = Action(FileExit);
        menu.insertMenu(exit, m_recentMenu);
        menu.insertSeparator(exit);
    }
    m_recentMenu->clear();
    int number = 0;
    for (const QString& path : m_recentFiles.Paths()) {
        QString name = QFileInfo(path).fileName();
        name.replace(QLatin1Char('&'), QLatin1String("&&"));
        QAction* entry = m_recentMenu->addAction(QStringLiteral("&%1  %2").arg(++number).arg(name));
        entry->setStatusTip(path);
        connect(entry, &QAction::triggered, this, [this, path] { OpenFile(path); });
    }
    m_recentMenu->setEnabled(number > 0);
}

void CMainFrame::AddWindowList(QMenu& menu)
{
    for (QAction* entry : m_windowEntries)
        delete entry;
    m_windowEntries.clear();
    m_windowEntries.push_back(menu.addSeparator());
    int number = 0;
    for (QMdiSubWindow* window : m_tabs->subWindowList()) {
        QString name = window->windowTitle();
        name.replace(QLatin1String("[*]"), window->isWindowModified() ? QLatin1String("*") : QLatin1String());
        name.replace(QLatin1Char('&'), QLatin1String("&&"));
        QAction* entry = menu.addAction(QStringLiteral("&%1  %2").arg(++number).arg(name));
        entry->setCheckable(true);
        entry->setChecked(window == m_activeFrame);
        connect(entry, &QAction::triggered, window, [this, window] { m_tabs->setActiveSubWindow(window); });
        m_windowEntries.push_back(entry);
    }
}
