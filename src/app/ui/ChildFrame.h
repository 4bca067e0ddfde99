// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/PixoluneView.h"

#include <QMdiSubWindow>

#include <functional>
#include <memory>

class CCanvasWidget;

/// One window on a document: a canvas view with a zoom, a tool and a selection of its own.
class CChildFrame final : public QMdiSubWindow, private IDocumentObserver {
    Q_OBJECT

public:
    /// Asked before the frame closes; false keeps it open.
    using CloseQuestion = std::function<bool(CChildFrame&)>;

    CChildFrame(CPixoluneDoc& document, CloseQuestion mayClose);
    ~CChildFrame() override;

    [[nodiscard]] CPixoluneDoc& Document() { return m_document; }
    [[nodiscard]] CPixoluneView& View() { return *m_view; }
    [[nodiscard]] CCanvasWidget& Canvas() { return *m_canvas; }

    /// Distinguishes the windows of one document by ":1", ":2"; 0 when it is the only one.
    void SetNumber(int number);
    /// Closes the window when whether to keep the document has been settled.
    void CloseUnasked();
    /// The window was closed and waits for its deletion.
    [[nodiscard]] bool IsClosing() const { return m_closing; }

Q_SIGNALS:
    /// Something that enables or names commands changed.
    void StateChanged();
    /// The view is gone, and all of the frame but its address; the document may go as well.
    void Closed(CChildFrame* frame, CPixoluneDoc* document);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void OnObjectsChanged() override { OnContentChanged(); }
    void OnObjectSelectionChanged() override { OnContentChanged(); }
    void OnCanvasSizeChanged() override { OnContentChanged(); }
    void OnContentChanged();
    void OnStateChanged() override;

    CPixoluneDoc& m_document;
    std::unique_ptr<CPixoluneView> m_view;
    CCanvasWidget* m_canvas;
    CloseQuestion m_mayClose;
    int m_number = 0;
    bool m_closing = false;
};
