// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/PixoluneView.h"

#include <QMdiSubWindow>

#include <functional>
#include <memory>

class CCanvasWidget;

/// One tab of the main window: a canvas view of a document.
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

Q_SIGNALS:
    /// Something that enables or names commands changed.
    void StateChanged();
    /// The view is gone; the document may go as well.
    void Closed(CPixoluneDoc* document);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void OnObjectsChanged() override { Q_EMIT StateChanged(); }
    void OnObjectSelectionChanged() override { Q_EMIT StateChanged(); }
    void OnCanvasSizeChanged() override { Q_EMIT StateChanged(); }
    void OnStateChanged() override;

    CPixoluneDoc& m_document;
    std::unique_ptr<CPixoluneView> m_view;
    CCanvasWidget* m_canvas;
    CloseQuestion m_mayClose;
};
