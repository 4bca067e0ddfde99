// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QStringList>

#include <vector>

class CEdgeLabel;
class CEdgeStrip;
class CPanelDock;
class CSlideOut;
class QMainWindow;

/// The panels of the main window. Each stands in a dock, which can be moved, tabbed and floated, or waits
/// behind a label at the window's edge until it is asked for, or is hidden.
class CPanelLayout final : public QObject {
    Q_OBJECT

public:
    explicit CPanelLayout(QMainWindow& window);

    void Add(CPanelDock& dock);
    /// Puts all docks back to where they were added, one below the other.
    void Reset();

    /// Whether the panel is beside the picture or behind a label.
    [[nodiscard]] bool IsShown(const CPanelDock& dock) const;
    void SetShown(CPanelDock& dock, bool shown);
    [[nodiscard]] bool IsPinned(const CPanelDock& dock) const;
    /// Unpinned, the panel collapses to a label at the edge of the window where its dock stood.
    void SetPinned(CPanelDock& dock, bool pinned);

    /// Names of the docks that wait at the edge, for a later SetUnpinned.
    [[nodiscard]] QStringList Unpinned() const;
    void SetUnpinned(const QStringList& names);

Q_SIGNALS:
    /// A panel that had the keyboard went back behind its label.
    void FocusReturned();

private:
    struct Entry {
        CPanelDock* dock;
        CEdgeStrip* strip = nullptr; ///< none while the dock is pinned
        CEdgeLabel* label = nullptr;
    };

    [[nodiscard]] size_t IndexOf(const CPanelDock& dock) const;
    [[nodiscard]] CEdgeStrip& Strip(Qt::ToolBarArea edge);
    void SlideOut(const Entry& entry);

    QMainWindow& m_window;
    std::vector<Entry> m_entries;
    std::vector<CEdgeStrip*> m_strips;
    CSlideOut* m_slideOut;
};
