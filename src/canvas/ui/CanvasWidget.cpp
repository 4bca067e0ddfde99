// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/ui/CanvasWidget.h"

#include "canvas/SelectionOperations.h"
#include "canvas/ui/AddTextDialog.h"
#include "canvas/ui/CanvasCursors.h"
#include "canvas/ui/CanvasScrollBar.h"
#include "document/PanelOperations.h"
#include "document/PlacementOperations.h"
#include "platform/ui/FrameTime.h"
#include "platform/ui/QtPicture.h"
#include "platform/ui/QtText.h"

#include <QBackingStore>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEngine>
#include <QPainter>
#include <QTimer>

#include <cmath>

namespace {

constexpr int kWheelNotch = 120;
/// Time between two steps of the wandering outline of the selection.
constexpr int kOutlineMs = 120;
constexpr int kLine = 24;      ///< pixels of the desktop that one step of a scroll bar moves
constexpr int kWheelLines = 3; ///< steps of one notch
/// Pixels painted at a time: enough rows to share out, few enough to stay in the cache.
constexpr int kBandPixels = 1 << 18;
/// How long the frame is refined before input is looked at again.
constexpr std::chrono::milliseconds kSlice{6};

Point Floored(const QPointF& point)
{
    return {static_cast<int>(std::floor(point.x())), static_cast<int>(std::floor(point.y()))};
}

/// The smallest rectangle of whole pixels around the scaled one.
Rect ScaledOut(const QRect& rect, qreal factor)
{
    return {static_cast<int>(std::floor(rect.left() * factor)),
            static_cast<int>(std::floor(rect.top() * factor)),
            static_cast<int>(std::ceil((rect.left() + rect.width()) * factor)),
            static_cast<int>(std::ceil((rect.top() + rect.height()) * factor))};
}

MouseButton ToButton(Qt::MouseButton button)
{
    return button == Qt::LeftButton    ? MouseButton::Left
           : button == Qt::RightButton ? MouseButton::Right
                                       : MouseButton::None;
}

} // namespace

CCanvasWidget::CCanvasWidget(CPixoluneView& view, QWidget* parent) : QAbstractScrollArea(parent), m_view(view)
{
    setFocusPolicy(Qt::StrongFocus);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBar(new CCanvasScrollBar(Qt::Horizontal));
    setVerticalScrollBar(new CCanvasScrollBar(Qt::Vertical));
    viewport()->setMouseTracking(true);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    viewport()->setAttribute(Qt::WA_NoSystemBackground);
    m_view.SetHost(this);
    TakeColours();
    OnCursorChanged(m_view.Cursor());
}

CCanvasWidget::~CCanvasWidget()
{
    m_view.SetHost(nullptr);
}

Point CCanvasWidget::ToClient(const QPointF& position) const
{
    return Floored(position * devicePixelRatioF());
}

MouseInput CCanvasWidget::ToInput(const QMouseEvent& event) const
{
    return {ToClient(event.position()), ToButton(event.button()),
            event.modifiers().testFlag(Qt::ShiftModifier), event.modifiers().testFlag(Qt::ControlModifier),
            event.modifiers().testFlag(Qt::AltModifier)};
}

// Painting

void CCanvasWidget::Invalidate(const Rect& client)
{
    const Rect logical =
        ScaledOut(QRect(client.left, client.top, client.Width(), client.Height()), 1.0 / devicePixelRatioF())
            .Inflated(1);
    viewport()->update(logical.left, logical.top, logical.Width(), logical.Height());
    if (!m_outlineTimer.isActive() && !m_view.Selection().IsEmpty())
        m_outlineTimer.start(kOutlineMs, this);
}

void CCanvasWidget::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == m_playTimer.timerId())
        m_view.StepPlayback();
    else if (event->timerId() == m_refineTimer.timerId())
        Refine();
    else if (event->timerId() != m_outlineTimer.timerId())
        QAbstractScrollArea::timerEvent(event);
    else if (m_view.Selection().IsEmpty() || !isVisible())
        m_outlineTimer.stop();
    else
        m_view.AdvanceOutline();
}

void CCanvasWidget::hideEvent(QHideEvent* event)
{
    QAbstractScrollArea::hideEvent(event);
    m_view.ForgetPainting();
}

void CCanvasWidget::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::PaletteChange)
        TakeColours();
    QAbstractScrollArea::changeEvent(event);
}

void CCanvasWidget::TakeColours()
{
    const QPalette& colours = palette();
    m_view.SetSurroundings({colours.color(QPalette::Window).rgb(), colours.color(QPalette::Midlight).rgb(),
                            colours.color(QPalette::Dark).rgb()});
}

void CCanvasWidget::OnPlaybackChanged()
{
    if (m_view.IsPlaying())
        m_playTimer.start(FrameMilliseconds(m_view.Document().Canvas().frameDelay), this);
    else
        m_playTimer.stop();
    Q_EMIT LayoutChanged();
}

void CCanvasWidget::paintEvent(QPaintEvent* event)
{
    const qreal ratio = devicePixelRatioF();
    if (ratio != m_ratio) {
        // The window came to another screen.
        UpdateClientSize();
        m_shownCursor.reset();
        ShowCursor();
    }
    QPainter painter(viewport());
    // Undo the desktop's scaling: the bands are made of the screen's own pixels.
    painter.setTransform(QTransform::fromScale(1 / ratio, 1 / ratio));
    const Rect client = Rect::At({0, 0}, m_view.Geometry().client);
    // Pictures that are taken of the widget show the document as it is.
    const bool isOnScreen =
        backingStore() != nullptr && painter.paintEngine()->paintDevice() == backingStore()->paintDevice();
    const FrameScene scene = m_view.BeginPainting(ScaledOut(event->rect(), ratio).Intersected(client),
                                                  isOnScreen ? FrameRule::Prompt : FrameRule::Exact);
    for (const QRect& part : event->region()) {
        const Rect area = ScaledOut(part, ratio).Intersected(client);
        if (area.IsEmpty())
            continue;
        const int rows = std::clamp(kBandPixels / area.Width(), 1, area.Height());
        if (m_band.width() < area.Width() || m_band.height() < rows)
            m_band = QImage(area.Width(), rows, QImage::Format_RGB32);
        if (m_band.isNull())
            return;
        for (int top = area.top; top < area.bottom; top += rows) {
            const Rect band{area.left, top, area.right, std::min(top + rows, area.bottom)};
            const BitmapView target{m_band.bits(), m_band.bytesPerLine(), band.Width(), band.Height()};
            m_view.Paint(target, band, scene);
            painter.drawImage(QPoint(band.left, band.top), WrapOpaque(target));
        }
    }
    if (m_showsFocus)
        PaintFocus(painter);
    ScheduleRefinement();
}

void CCanvasWidget::Refine()
{
    const auto now = std::chrono::steady_clock::now();
    if (isVisible() && m_view.Frame().RefinesFrom() <= now)
        m_view.RefineFrame(now + kSlice);
    ScheduleRefinement();
}

void CCanvasWidget::ScheduleRefinement()
{
    using Milliseconds = std::chrono::milliseconds;
    if (!isVisible() || !m_view.IsFrameUnfinished()) {
        m_refineTimer.stop();
        return;
    }
    const auto wait =
        std::chrono::ceil<Milliseconds>(m_view.Frame().RefinesFrom() - std::chrono::steady_clock::now());
    m_refineTimer.start(static_cast<int>(std::max<Milliseconds::rep>(wait.count(), 0)), this);
}

void CCanvasWidget::PaintFocus(QPainter& painter) const
{
    constexpr int kWidth = 2;
    painter.resetTransform();
    painter.setPen(QPen(palette().color(QPalette::Highlight), kWidth));
    painter.drawRect(viewport()->rect().adjusted(kWidth / 2, kWidth / 2, -kWidth / 2, -kWidth / 2));
}

// Layout

bool CCanvasWidget::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride && IsWantedByTool(static_cast<QKeyEvent*>(event)->key())) {
        event->accept();
        return true;
    }
    return QAbstractScrollArea::event(event);
}

bool CCanvasWidget::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::Enter)
        m_view.SetPointerInside(true);
    if (event->type() == QEvent::Leave) {
        m_view.SetPointerInside(false);
        OnPointerText({});
    }
    // The tip of the window is for its tab; here it would hide the picture.
    if (event->type() == QEvent::ToolTip)
        return true;
    return QAbstractScrollArea::viewportEvent(event);
}

void CCanvasWidget::resizeEvent(QResizeEvent* /*event*/)
{
    UpdateClientSize();
}

void CCanvasWidget::UpdateClientSize()
{
    m_ratio = devicePixelRatioF();
    const Rect client = ScaledOut(QRect(QPoint(), viewport()->size()), m_ratio);
    m_view.SetClientSize({client.Width(), client.Height()});
}

void CCanvasWidget::OnLayoutChanged()
{
    UpdateScrollBars();
    viewport()->update();
    Q_EMIT LayoutChanged();
}

void CCanvasWidget::UpdateScrollBars()
{
    const ViewGeometry& geometry = m_view.Geometry();
    const Size extent = geometry.Extent();
    const Rect whole = ScaledOut(QRect(QPoint(), maximumViewportSize()), devicePixelRatioF());
    // Bars that only each other make necessary are not shown.
    const bool fits = extent.width <= whole.Width() && extent.height <= whole.Height();
    m_updatingBars = true;
    const auto update = [fits, step = qRound(kLine * m_ratio)](QScrollBar* bar, int range, int client,
                                                               int position) {
        bar->setPageStep(client);
        bar->setSingleStep(step);
        bar->setRange(0, fits ? 0 : std::max(0, range - client));
        bar->setValue(position);
    };
    update(horizontalScrollBar(), geometry.ScrollRange().width, geometry.client.width, geometry.scroll.x);
    update(verticalScrollBar(), geometry.ScrollRange().height, geometry.client.height, geometry.scroll.y);
    m_updatingBars = false;
}

void CCanvasWidget::scrollContentsBy(int /*dx*/, int /*dy*/)
{
    if (!m_updatingBars)
        m_view.SetScroll({horizontalScrollBar()->value(), verticalScrollBar()->value()});
}

// Pointer

void CCanvasWidget::OnPointerText(const std::string& text)
{
    Q_EMIT PointerTextChanged(ToQString(text));
}

void CCanvasWidget::OnDraggedRectText(const std::string& text)
{
    Q_EMIT DraggedRectTextChanged(ToQString(text));
}

void CCanvasWidget::OnToolModeChanged()
{
    Q_EMIT ToolModeChanged();
}

void CCanvasWidget::OnCursorChanged(CursorShape shape)
{
    m_cursor = shape;
    ShowCursor();
}

void CCanvasWidget::OnTextPoint(Point documentPoint)
{
    // After the press has been dealt with: the dialog runs an event loop of its own.
    QTimer::singleShot(0, this,
                       [this, documentPoint] { CAddTextDialog(m_view, documentPoint, this).exec(); });
}

void CCanvasWidget::OnTextObject(const Ref<CPicObject>& object)
{
    m_textObject = object;
    QTimer::singleShot(0, this, [this] {
        CAddTextDialog(m_view, m_textObject, this).exec();
        m_textObject = nullptr;
    });
}

void CCanvasWidget::ShowCursor()
{
    const bool panning = m_spaceHeld || m_panFrom;
    const CursorShape shape = panning ? CursorShape::Hand : m_cursor.value_or(CursorShape::Arrow);
    if (m_shownCursor == shape)
        return;
    m_shownCursor = shape;
    viewport()->setCursor(CanvasCursor(shape, devicePixelRatioF()));
}

void CCanvasWidget::PanTo(Point client)
{
    const Point scroll = m_view.Geometry().scroll;
    const Point from = *m_panFrom;
    m_panFrom = client;
    m_view.SetScroll({scroll.x - (client.x - from.x), scroll.y - (client.y - from.y)});
}

void CCanvasWidget::wheelEvent(QWheelEvent* event)
{
    event->accept();
    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        m_wheelRest += event->angleDelta().y();
        const Point pointer = ToClient(event->position());
        for (; std::abs(m_wheelRest) >= kWheelNotch;
             m_wheelRest -= m_wheelRest > 0 ? kWheelNotch : -kWheelNotch) {
            const int zoom = m_view.Zoom();
            m_view.SetZoomAt(m_wheelRest > 0 ? NextZoomIn(zoom) : NextZoomOut(zoom), pointer);
        }
        return;
    }
    QPointF delta = event->pixelDelta().isNull()
                        ? QPointF(event->angleDelta()) * (kWheelLines * kLine) / kWheelNotch
                        : QPointF(event->pixelDelta());
    delta *= devicePixelRatioF();
    if (event->modifiers().testFlag(Qt::ShiftModifier) && std::abs(delta.y()) > std::abs(delta.x()))
        delta = delta.transposed();
    const Point scroll = m_view.Geometry().scroll;
    m_view.SetScroll({scroll.x - qRound(delta.x()), scroll.y - qRound(delta.y())});
}

void CCanvasWidget::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::MiddleButton || m_spaceHeld) {
        m_panFrom = ToClient(event->position());
        ShowCursor();
        return;
    }
    const MouseInput input = ToInput(*event);
    if (input.button == MouseButton::None || m_held != Qt::NoButton)
        return;
    m_held = event->button();
    m_view.Press(input);
    ScheduleRefinement();
}

void CCanvasWidget::mouseMoveEvent(QMouseEvent* event)
{
    if (m_panFrom) {
        PanTo(ToClient(event->position()));
        return;
    }
    MouseInput input = ToInput(*event);
    if (m_held != Qt::NoButton && !event->buttons().testFlag(m_held)) {
        // A message box took the release.
        input.button = ToButton(m_held);
        m_held = Qt::NoButton;
        m_view.Release(input);
    }
    m_view.Move(input);
}

void CCanvasWidget::mouseReleaseEvent(QMouseEvent* event)
{
    if (m_panFrom) {
        m_panFrom.reset();
        ShowCursor();
        return;
    }
    if (event->button() != m_held)
        return;
    m_held = Qt::NoButton;
    m_view.Release(ToInput(*event));
    ScheduleRefinement();
}

void CCanvasWidget::mouseDoubleClickEvent(QMouseEvent* event)
{
    // Of two quick presses the second is one like the first, unless the tool knows double clicks.
    const bool isForTool = ToButton(event->button()) != MouseButton::None && !m_spaceHeld;
    if (!isForTool || !m_view.DoubleClick(ToInput(*event)))
        mousePressEvent(event);
}

// Keyboard

bool CCanvasWidget::IsWantedByTool(int key) const
{
    const bool isToolKey = key == Qt::Key_Escape || key == Qt::Key_Return || key == Qt::Key_Enter ||
                           key == Qt::Key_Backspace || key == Qt::Key_Delete;
    return isToolKey && (m_held != Qt::NoButton || m_view.CurrentTool().IsBusy() || m_view.IsPlaying());
}

void CCanvasWidget::contextMenuEvent(QContextMenuEvent* event)
{
    // Every other tool has a use of its own for the right button.
    if (m_view.Mode() != ToolMode::Default)
        return;
    m_view.CancelDrag();
    m_held = Qt::NoButton;
    if (event->reason() == QContextMenuEvent::Mouse) {
        MouseInput click;
        click.client = ToClient(event->pos());
        click.button = MouseButton::Left;
        m_view.Press(click);
        m_view.Release(click);
    }
    Q_EMIT MenuRequested(event->globalPos());
}

void CCanvasWidget::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Space:
        if (!event->isAutoRepeat() && m_held == Qt::NoButton) {
            m_spaceHeld = true;
            ShowCursor();
        }
        return;
    case Qt::Key_Escape:
        if (m_view.IsPlaying()) {
            m_view.SetPlaying(false);
            return;
        }
        if (m_view.CancelDrag()) {
            m_held = Qt::NoButton;
            return;
        }
        if (ClearMarks())
            return;
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (m_view.Key(ToolKey::Enter))
            return;
        break;
    case Qt::Key_Backspace:
        if (m_view.Key(ToolKey::Backspace))
            return;
        break;
    case Qt::Key_Delete:
        if (m_view.Key(ToolKey::Delete))
            return;
        break;
    default:
        if (NudgeOrScroll(*event))
            return;
        break;
    }
    event->ignore();
}

bool CCanvasWidget::ClearMarks()
{
    CPixoluneDoc& document = m_view.Document();
    if (!m_view.Selection().IsEmpty())
        return UnselectAll(m_view);
    if (m_view.Mode() != ToolMode::Default || document.Canvas().CountSelected() == 0)
        return false;
    SelectObjects(document, {});
    return true;
}

bool CCanvasWidget::NudgeOrScroll(const QKeyEvent& event)
{
    const bool far = event.modifiers().testFlag(Qt::ShiftModifier);
    const struct {
        int key;
        Point direction;
    } rows[] = {
        {Qt::Key_Left, {-1, 0}}, {Qt::Key_Right, {1, 0}}, {Qt::Key_Up, {0, -1}}, {Qt::Key_Down, {0, 1}}};
    for (const auto& row : rows) {
        if (row.key != event.key())
            continue;
        CPixoluneDoc& document = m_view.Document();
        if (m_view.Mode() == ToolMode::Default && document.Canvas().CountSelected() > 0) {
            const int step = far ? 10 : 1;
            if (m_held == Qt::NoButton)
                NudgeObjects(document, row.direction.x * step, row.direction.y * step);
        } else {
            const Point scroll = m_view.Geometry().scroll;
            m_view.SetScroll({scroll.x + row.direction.x * kLine, scroll.y + row.direction.y * kLine});
        }
        return true;
    }
    return false;
}

void CCanvasWidget::keyReleaseEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Space && !event->isAutoRepeat()) {
        m_spaceHeld = false;
        ShowCursor();
    } else {
        event->ignore();
    }
}

void CCanvasWidget::focusInEvent(QFocusEvent* event)
{
    m_showsFocus = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    viewport()->update();
    QAbstractScrollArea::focusInEvent(event);
}

void CCanvasWidget::focusOutEvent(QFocusEvent* event)
{
    m_spaceHeld = false;
    m_showsFocus = false;
    viewport()->update();
    ShowCursor();
    QAbstractScrollArea::focusOutEvent(event);
}
