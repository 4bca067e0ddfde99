// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/DocumentArea.h"

#include "app/ui/ChildFrame.h"
#include "canvas/ui/CanvasWidget.h"
#include "platform/ui/QtText.h"
#include "platform/ui/ThemedIcon.h"

#include <QTabBar>

#include <algorithm>
#include <cmath>

namespace {

/// Where tiled windows stand. Those of one line follow each other in the stacking direction: up to three
/// windows share one line, more stand in as many lines as the square root of their number.
std::vector<QRect> TilePlaces(size_t windows, QSize whole, Qt::Orientation stacking)
{
    const int count = static_cast<int>(windows);
    const int lines = count <= 3 ? 1 : static_cast<int>(std::sqrt(count));
    const bool stacked = stacking == Qt::Vertical;
    const auto edge = [](int length, int index, int parts) { return length * index / parts; };
    std::vector<QRect> places;
    for (int line = 0, first = 0; line < lines && count > 0; ++line) {
        const int last = count * (line + 1) / lines;
        const int inLine = last - first;
        for (int i = 0; i < inLine; ++i) {
            const auto [column, columns] = stacked ? std::pair(line, lines) : std::pair(i, inLine);
            const auto [row, rows] = stacked ? std::pair(i, inLine) : std::pair(line, lines);
            const QPoint corner(edge(whole.width(), column, columns), edge(whole.height(), row, rows));
            const QPoint end(edge(whole.width(), column + 1, columns), edge(whole.height(), row + 1, rows));
            places.emplace_back(corner, end - QPoint(1, 1));
        }
        first = last;
    }
    return places;
}

} // namespace

CDocumentArea::CDocumentArea(CloseQuestion mayClose) : m_mayClose(std::move(mayClose))
{
    setDocumentMode(true);
    setTabsClosable(true);
    setTabsMovable(true);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    Arrange(WindowArrangement::Tabs);
    connect(this, &QMdiArea::subWindowActivated, this, [this](QMdiSubWindow* window) {
        // While another program's window is active no window here is; commands act on the one that is seen.
        if (auto* frame = qobject_cast<CChildFrame*>(window))
            SetActive(frame);
    });
}

CDocumentArea::~CDocumentArea()
{
    // Windows report their end; that must find the area whole.
    while (!m_frames.empty())
        delete m_frames.back();
}

CChildFrame* CDocumentArea::Open(CPixoluneDoc& document)
{
    auto* frame = new CChildFrame(document, [this](CChildFrame& closing) { return MayClose(closing); });
    frame->setWindowIcon(ApplicationIcon());
    m_frames.push_back(frame);
    addSubWindow(frame);
    connect(frame, &CChildFrame::Closed, this, &CDocumentArea::OnClosed);
    Number(document);
    if (IsTabbed()) {
        frame->showMaximized();
    } else {
        frame->resize(size() * 2 / 3);
        frame->show();
    }
    frame->Canvas().setFocus();
    SetActive(frame);
    return frame;
}

std::vector<CChildFrame*> CDocumentArea::FramesOf(const CPixoluneDoc& document) const
{
    std::vector<CChildFrame*> frames;
    std::ranges::copy_if(m_frames, std::back_inserter(frames), [&](CChildFrame* frame) {
        return &frame->Document() == &document && !frame->IsClosing();
    });
    return frames;
}

void CDocumentArea::Number(const CPixoluneDoc& document)
{
    const std::vector<CChildFrame*> frames = FramesOf(document);
    for (size_t i = 0; i < frames.size(); ++i)
        frames[i]->SetNumber(frames.size() > 1 ? static_cast<int>(i) + 1 : 0);
}

void CDocumentArea::SetActive(CChildFrame* frame)
{
    m_active = frame;
    Q_EMIT FrameActivated();
}

// Closing

bool CDocumentArea::Ask(CPixoluneDoc& document)
{
    const std::vector<CChildFrame*> frames = FramesOf(document);
    if (!frames.empty() && (!m_active || &m_active->Document() != &document))
        setActiveSubWindow(frames.front());
    return m_mayClose(document);
}

bool CDocumentArea::MayClose(CChildFrame& frame)
{
    return FramesOf(frame.Document()).size() > 1 || Ask(frame.Document());
}

void CDocumentArea::OnClosed(CChildFrame* frame, CPixoluneDoc* document)
{
    std::erase(m_frames, frame);
    if (m_active == frame) {
        auto* next = qobject_cast<CChildFrame*>(currentSubWindow());
        SetActive(next != frame && std::ranges::count(m_frames, next) > 0 ? next : nullptr);
    }
    if (std::ranges::any_of(m_frames, [&](CChildFrame* other) { return &other->Document() == document; }))
        Number(*document);
    else
        Q_EMIT DocumentClosed(document);
}

bool CDocumentArea::CloseDocument(CPixoluneDoc& document)
{
    if (!Ask(document))
        return false;
    for (CChildFrame* frame : FramesOf(document))
        frame->CloseUnasked();
    return true;
}

std::vector<CPixoluneDoc*> CDocumentArea::Documents() const
{
    std::vector<CPixoluneDoc*> documents;
    for (CChildFrame* frame : m_frames) {
        if (!frame->IsClosing() && std::ranges::count(documents, &frame->Document()) == 0)
            documents.push_back(&frame->Document());
    }
    return documents;
}

bool CDocumentArea::CloseAll()
{
    for (CPixoluneDoc* document : Documents()) {
        if (!CloseDocument(*document))
            return false;
    }
    return true;
}

bool CDocumentArea::MayCloseAll()
{
    for (CPixoluneDoc* document : Documents()) {
        if (!Ask(*document))
            return false;
    }
    return true;
}

// Arranging

void CDocumentArea::Arrange(WindowArrangement arrangement)
{
    if (arrangement == WindowArrangement::Tabs) {
        setViewMode(TabbedView);
        if (auto* bar = findChild<QTabBar*>()) {
            bar->setExpanding(false);
            bar->setAccessibleName(ToQString(Str::OpenDocuments));
        }
        if (m_active)
            m_active->showMaximized();
        return;
    }
    setViewMode(SubWindowView);
    m_stacking.reset();
    for (CChildFrame* frame : m_frames)
        frame->showNormal();
    if (arrangement == WindowArrangement::Cascade)
        cascadeSubWindows();
    else
        Tile(arrangement == WindowArrangement::TileHorizontally ? Qt::Vertical : Qt::Horizontal);
    if (m_active)
        setActiveSubWindow(m_active);
}

void CDocumentArea::Tile(Qt::Orientation stacking)
{
    m_stacking = stacking;
    m_tiledSize = viewport()->size();
    const std::vector<QRect> places = TilePlaces(m_frames.size(), m_tiledSize, stacking);
    for (size_t i = 0; i < places.size(); ++i)
        m_frames[i]->setGeometry(places[i]);
}

/// Tiles follow the size of the area until one of them is moved.
void CDocumentArea::resizeEvent(QResizeEvent* event)
{
    QMdiArea::resizeEvent(event);
    if (IsTabbed() || !m_stacking)
        return;
    const std::vector<QRect> places = TilePlaces(m_frames.size(), m_tiledSize, *m_stacking);
    if (std::ranges::equal(places, m_frames, {}, {}, [](CChildFrame* frame) { return frame->geometry(); }))
        Tile(*m_stacking);
}
