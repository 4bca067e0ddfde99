// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "app/CommandTable.h"
#include "app/ui/FileDialogs.h"
#include "app/ui/Printing.h"
#include "app/ui/Shortcuts.h"

#include <QMainWindow>
#include <QSize>

class CChildFrame;
class CCommandActions;
class CDocumentArea;
class CHelp;
class CIdleWorker;
class CObjectsPanel;
class COptionsPanel;
class CPanelDock;
class CPanelLayout;
class CStatusBar;
class QMenu;
class QSettings;

/// The program's window: menus, tool bars, status bar, panels, and the windows of the open documents.
class CMainFrame final : public QMainWindow, private IShell {
    Q_OBJECT

public:
    /// The size at the first start, where the screen has room for it.
    static constexpr QSize kFirstSize{1340, 820};

    /// configuration: where the window keeps its layout and the recent files. Both must outlive the window.
    CMainFrame(CPixoluneApp& app, QSettings& configuration);
    ~CMainFrame() override;

    [[nodiscard]] CStatusBar& StatusBar() { return *m_statusBar; }
    /// Opens the file in a new window, or shows the one that it is open in; none when it cannot be loaded,
    /// which the user has been told.
    CChildFrame* OpenFile(const QString& path);
    /// Shows a document in a window, or in another one.
    CChildFrame* Show(CPixoluneDoc& document);
    /// Offers the documents that processes have left behind in `parent` when they died.
    void OfferRecovery(const std::filesystem::path& parent);
    [[nodiscard]] CChildFrame* ActiveFrame() const;
    /// None for a command that has no row in the table.
    [[nodiscard]] QAction* Action(CommandId id) const;

Q_SIGNALS:
    /// The window is on the screen; what takes time may begin.
    void Appeared();

protected:
    void paintEvent(QPaintEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    [[nodiscard]] QMenu* createPopupMenu() override;

private:
    bool RunWindowCommand(CommandId id) override;
    [[nodiscard]] bool IsWindowCommandChecked(CommandId id) const override;

    void CreateBars();
    void PlaceBars();
    void CreatePanels();
    /// What the docks hold; made once the window is on the screen.
    void FillPanels();
    void RestoreLayout();
    void SaveLayout();
    [[nodiscard]] CommandContext Context();
    void Connect(CChildFrame& frame);
    void OnDocumentClosed(CPixoluneDoc* document);
    void ScheduleRefresh();
    void Refresh();

    // One window command each; false when it was cancelled.
    bool RunNew();
    bool RunOpen();
    bool RunPreferences();
    bool RunFindCommand();
    bool RunHelp(CommandId id);
    bool RunAbout();
    bool RunFullScreen();
    /// The help page of the command that is running, or of the tool.
    [[nodiscard]] QString CurrentHelpPage() const;
    bool RunResetLayout();
    bool RunArrange(CommandId id);
    /// The bar that a View command shows and hides; none for other commands.
    [[nodiscard]] QWidget* BarOf(CommandId id) const;
    /// The dock that a View command shows and hides; none for other commands.
    [[nodiscard]] CPanelDock* DockOf(CommandId id) const;

    CPixoluneApp& m_app;
    QSettings& m_configuration;
    CShortcuts m_shortcuts;
    CRecentFiles m_recentFiles;
    CFileDialogs m_files;
    CPrinting m_printing;
    std::unique_ptr<CHelp> m_help;
    std::optional<CommandId> m_running; ///< the window command at work
    CDocumentArea* m_area;
    CStatusBar* m_statusBar;
    CCommandActions* m_actions;
    CIdleWorker* m_idleWorker;
    QToolBar* m_mainBar = nullptr;
    QToolBar* m_drawingBar = nullptr;
    CPanelLayout* m_panels;
    CPanelDock* m_optionsDock = nullptr;
    CPanelDock* m_objectsDock = nullptr;
    COptionsPanel* m_optionsPanel = nullptr; ///< none before the window is on the screen
    CObjectsPanel* m_objectsPanel = nullptr; ///< none before the window is on the screen
    bool m_refreshPending = false;
    bool m_hasAppeared = false;
};
