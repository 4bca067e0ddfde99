// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMdiArea>

#include <functional>
#include <optional>
#include <span>
#include <vector>

class CChildFrame;
class CPixoluneDoc;

/// How the windows of the documents stand.
enum class WindowArrangement {
    Tabs,
    Cascade,
    TileHorizontally, ///< one below the other
    TileVertically,   ///< side by side
};

/// The windows of the open documents. A document may have several, each with a zoom, a tool and a selection
/// of its own; with the last one the document is closed, when the question about unsaved changes allows it.
class CDocumentArea final : public QMdiArea {
    Q_OBJECT

public:
    /// Asked once for a document that is to be closed; false keeps it open.
    using CloseQuestion = std::function<bool(CPixoluneDoc&)>;

    explicit CDocumentArea(CloseQuestion mayClose);
    ~CDocumentArea() override;

    /// Opens a window, the first or another one, on a document.
    CChildFrame* Open(CPixoluneDoc& document);
    /// The window that commands act on, also while another program is in front; none without documents.
    [[nodiscard]] CChildFrame* ActiveFrame() const { return m_active; }
    /// In the order in which they were opened.
    [[nodiscard]] std::span<CChildFrame* const> Frames() const { return m_frames; }

    /// Closes all windows of the document; false when the user keeps it open.
    bool CloseDocument(CPixoluneDoc& document);
    /// Closes all documents, up to the first that the user keeps open; false when there is one.
    bool CloseAll();
    /// Whether the program may end: asks about every document and closes none.
    [[nodiscard]] bool MayCloseAll();

    void Arrange(WindowArrangement arrangement);
    [[nodiscard]] bool IsTabbed() const { return viewMode() == TabbedView; }

Q_SIGNALS:
    /// Another window is the active one, or none is left.
    void FrameActivated();
    /// The last window of the document is gone.
    void DocumentClosed(CPixoluneDoc* document);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    [[nodiscard]] std::vector<CChildFrame*> FramesOf(const CPixoluneDoc& document) const;
    /// In the order of their first windows.
    [[nodiscard]] std::vector<CPixoluneDoc*> Documents() const;
    void Number(const CPixoluneDoc& document);
    bool MayClose(CChildFrame& frame);
    bool Ask(CPixoluneDoc& document);
    void OnClosed(CChildFrame* frame, CPixoluneDoc* document);
    void SetActive(CChildFrame* frame);
    void Tile(Qt::Orientation stacking);

    CloseQuestion m_mayClose;
    std::vector<CChildFrame*> m_frames;
    CChildFrame* m_active = nullptr;
    std::optional<Qt::Orientation> m_stacking; ///< while the windows are tiled
    QSize m_tiledSize;                         ///< of the area when they were
};
