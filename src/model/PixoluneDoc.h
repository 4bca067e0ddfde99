// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "history/undo/UndoManager.h"
#include "model/Compositing.h"
#include "model/ObjectCanvas.h"
#include "platform/Services.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

/// How a history moved.
enum class HistoryMove : uint8_t { Undone, Redone, Withdrawn };

/// What a document tells its views and panels. Each call says what is different now; who listens decides
/// what to redraw.
class IDocumentObserver {
public:
    virtual ~IDocumentObserver() = default;
    /// What the frame shows inside the rectangle of document pixels changed.
    virtual void OnFrameChanged(const Rect& /*rect*/) {}
    /// What floats above the objects changed inside the rectangle of document pixels.
    virtual void OnFloatingChanged(const Rect& /*rect*/) {}
    /// Objects came, went or changed their order, or one changed its name, flags, picture or place.
    virtual void OnObjectsChanged() {}
    /// Selected flags of objects changed.
    virtual void OnObjectSelectionChanged() {}
    virtual void OnCanvasSizeChanged() {}
    /// Undo and redo lists, modified flag, or title changed.
    virtual void OnStateChanged() {}
    /// A command was recorded whose change has been made.
    virtual void OnRecorded(const CEditCommand& /*command*/) {}
    /// Undo or redo is about to change the document.
    virtual void OnHistoryWillMove() {}
    virtual void OnHistoryMoved(HistoryMove /*move*/) {}
};

/// One open picture: its canvas and its history.
class CPixoluneDoc {
public:
    explicit CPixoluneDoc(AppServices& services);
    ~CPixoluneDoc();
    CPixoluneDoc(const CPixoluneDoc&) = delete;
    CPixoluneDoc& operator=(const CPixoluneDoc&) = delete;

    [[nodiscard]] AppServices& Services() const { return m_services; }
    [[nodiscard]] CObjectCanvas& Canvas() { return m_canvas; }
    [[nodiscard]] const CObjectCanvas& Canvas() const { return m_canvas; }
    [[nodiscard]] const CUndoManager& History() const { return m_history; }

    /// Takes a command whose change has been made and marks the document modified.
    void Record(std::unique_ptr<CEditCommand> command);
    /// The same with another limit than the settings'.
    void Record(std::unique_ptr<CEditCommand> command, int maxTimes);
    /// Takes a command whose change was made and undone in another run: the next one to be redone.
    void AddUndone(std::unique_ptr<CEditCommand> command);
    /// Forgets the newest command without running it: a drag was given up and has put everything back.
    void WithdrawNewest();
    /// Runs the newest command of the list; false when it is empty.
    bool Undo();
    bool Redo();

    /// Replaces canvas and history by what was loaded or newly created; not modified afterwards.
    void Adopt(CObjectCanvas canvas);

    /// A picture record for a new object, with the next default name.
    [[nodiscard]] Ref<CRasterImage> NewImage(CPackedDib dib) const;

    [[nodiscard]] bool IsModified() const { return m_modified; }
    void SetModified(bool modified);
    /// Where the document was opened from or saved to; empty for a new one.
    [[nodiscard]] const std::filesystem::path& Path() const { return m_path; }
    void SetPath(std::filesystem::path path);
    /// File name, or the name given to a new document.
    [[nodiscard]] std::string Title() const;
    void SetNewTitle(std::string title) { m_newTitle = std::move(title); }

    void AddObserver(IDocumentObserver* observer);
    void RemoveObserver(IDocumentObserver* observer);
    void NotifyFrameChanged(const Rect& rect);
    /// The whole frame.
    void NotifyFrameChanged() { NotifyFrameChanged(m_canvas.Rectangle()); }
    /// A picture that a tool shows above an object while it works, in every window; an empty one takes it
    /// away. The tool keeps it alive. touched: document pixels that look different now.
    void SetFloating(const FloatingImage& floating, const Rect& touched);
    [[nodiscard]] const FloatingImage& Floating() const { return m_floating; }
    void NotifyObjectsChanged();
    void NotifyObjectSelectionChanged();
    void NotifyCanvasSizeChanged();

private:
    template <typename Call> void Notify(Call call);
    bool MoveHistory(bool (CUndoManager::*run)(), HistoryMove move);

    AppServices& m_services;
    CObjectCanvas m_canvas;
    CUndoManager m_history;
    FloatingImage m_floating;
    std::filesystem::path m_path;
    std::string m_newTitle;
    bool m_modified = false;
    std::vector<IDocumentObserver*> m_observers;
};
