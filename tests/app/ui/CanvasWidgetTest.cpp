// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/ui/CanvasWidget.h"

#include "canvas/ui/CanvasScrollBar.h"
#include "ui/UiTest.h"

#include <QBackingStore>
#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>
#include <cstdlib>

namespace {

/// A canvas larger than its window, full of pixels that differ from their neighbours.
class CCanvasWidgetTest : public testing::Test {
protected:
    CCanvasWidgetTest()
    {
        CObjectCanvas canvas;
        canvas.width = 1400;
        canvas.height = 1000;
        auto object = MakeShared<CPicObject>(m_document.NewImage(RandomDib(canvas.width, canvas.height, 3)));
        object->visible = true;
        canvas.objects.Append(std::move(object));
        m_document.Adopt(std::move(canvas));
        m_widget.resize(301, 223);
        m_widget.show();
        QCoreApplication::processEvents();
    }

    void Wheel(const QPointF& at, int notches, Qt::KeyboardModifiers modifiers)
    {
        QWheelEvent event(at, m_widget.viewport()->mapToGlobal(at), {}, {0, notches * 120}, Qt::NoButton,
                          modifiers, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(m_widget.viewport(), &event);
    }

    [[nodiscard]] Point DocumentAt(const QPointF& at) const
    {
        const QPointF client = at * m_widget.devicePixelRatioF();
        return m_view.Geometry().ToDocument(
            Point{static_cast<int>(client.x()), static_cast<int>(client.y())});
    }

    CRecordingInterface m_ui;
    CPrivateClipboard m_clipboard;
    CPixoluneApp m_app{m_ui, m_clipboard};
    CPixoluneDoc m_document{m_app.Services()};
    CPixoluneView m_view{m_document};
    CCanvasWidget m_widget{m_view};
};

TEST_F(CCanvasWidgetTest, ContextMenuSelectsWhatIsUnderThePointerAndLeavesNothingHeld)
{
    const Ref<CPicObject> object = m_document.Canvas().objects.Top();
    int asked = 0;
    QObject::connect(&m_widget, &CCanvasWidget::MenuRequested, &m_widget, [&] { ++asked; });
    const auto ask = [&] {
        QContextMenuEvent event(QContextMenuEvent::Mouse, {50, 50}, {50, 50});
        QCoreApplication::sendEvent(m_widget.viewport(), &event);
    };
    QTest::mousePress(m_widget.viewport(), Qt::RightButton, {}, {50, 50});
    ask();
    EXPECT_EQ(asked, 1);
    EXPECT_TRUE(object->IsSelected());
    QTest::mousePress(m_widget.viewport(), Qt::LeftButton, {}, {50, 50});
    QTest::mouseMove(m_widget.viewport(), {60, 50});
    QTest::mouseRelease(m_widget.viewport(), Qt::LeftButton, {}, {60, 50});
    EXPECT_GT(object->x, 0) << "a new drag begins although the menu took the release";
    m_view.SetMode(ToolMode::Pencil);
    ask();
    EXPECT_EQ(asked, 1) << "painting tools use the right button themselves";
}

TEST_F(CCanvasWidgetTest, SurroundingsFollowTheTheme)
{
    m_view.SetZoom(-8);
    for (const QColor colour : {QColor(40, 44, 52), QColor(240, 240, 240)}) {
        QPalette palette = m_widget.palette();
        palette.setColor(QPalette::Window, colour);
        m_widget.setPalette(palette);
        EXPECT_EQ(m_widget.viewport()->grab().toImage().pixelColor(2, 2), colour);
    }
}

/// Notes what of a widget is painted.
class CPaintedArea final : public QObject {
public:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            region += static_cast<QPaintEvent*>(event)->region();
        return false;
    }
    QRegion region;
};

} // namespace

TEST_F(CCanvasWidgetTest, ShowsTheViewPixelForPixelAtAnyDesktopScale)
{
    for (const int zoom : {1, 3, -2}) {
        SCOPED_TRACE(zoom);
        m_view.SetZoom(zoom);
        m_view.SetScroll({37, 21});
        const QImage shown = m_widget.viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32);
        const int width = std::min(shown.width(), m_view.Geometry().client.width);
        const int height = std::min(shown.height(), m_view.Geometry().client.height);
        ASSERT_GT(width, 250);
        QImage expected(width, height, QImage::Format_RGB32);
        m_view.Paint({expected.bits(), expected.bytesPerLine(), width, height}, {0, 0, width, height});
        EXPECT_EQ(shown.copy(0, 0, width, height), expected);
    }
}

TEST_F(CCanvasWidgetTest, TheScreenBecomesExactWithoutFurtherInput)
{
    const auto onScreen = [this] {
        const auto* screen = dynamic_cast<QImage*>(m_widget.backingStore()->paintDevice());
        return screen == nullptr ? QImage() : screen->convertToFormat(QImage::Format_RGB32);
    };
    if (onScreen().isNull())
        GTEST_SKIP() << "what this platform shows cannot be read";
    // The desktop's pixels may end within the last ones of the screen.
    const Size client{m_view.Geometry().client.width - 1, m_view.Geometry().client.height - 1};
    const auto isExact = [&](const QImage& shown) {
        QImage image(client.width, client.height, QImage::Format_RGB32);
        m_view.Paint({image.bits(), image.bytesPerLine(), client.width, client.height},
                     {0, 0, client.width, client.height});
        return shown.copy(image.rect()) == image;
    };
    m_view.Frame().SetBudget({});
    for (const int zoom : {2, -2, 1}) {
        m_view.SetZoom(zoom);
        QCoreApplication::sendPostedEvents();
        EXPECT_FALSE(m_view.IsFrameExact());
        m_view.SetScroll({61, 47}); // input between the slices
        QCoreApplication::processEvents();
        ASSERT_TRUE(QTest::qWaitFor([this] { return m_view.IsFrameExact(); }));
        QCoreApplication::sendPostedEvents();
        EXPECT_TRUE(isExact(onScreen()));
    }
    // A picture of the widget does not wait.
    m_view.SetZoom(3);
    EXPECT_TRUE(isExact(m_widget.viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32)));
}

TEST_F(CCanvasWidgetTest, WheelZoomsAtThePointerAndScrolls)
{
    const QPointF pointer(120, 80);
    m_view.SetScroll({200, 150});
    const Point kept = DocumentAt(pointer);
    Wheel(pointer, 2, Qt::ControlModifier);
    EXPECT_EQ(m_view.Zoom(), 3);
    EXPECT_EQ(DocumentAt(pointer), kept);
    Wheel(pointer, -3, Qt::ControlModifier);
    EXPECT_EQ(m_view.Zoom(), -2) << "there is no factor between actual size and one half";

    m_view.SetZoom(1);
    m_view.SetScroll({100, 100});
    Wheel(pointer, -1, Qt::NoModifier);
    EXPECT_EQ(m_view.Geometry().scroll.x, 100);
    EXPECT_GT(m_view.Geometry().scroll.y, 100);
    EXPECT_EQ(m_widget.verticalScrollBar()->value(), m_view.Geometry().scroll.y);
    const int down = m_view.Geometry().scroll.y;
    Wheel(pointer, 1, Qt::ShiftModifier);
    EXPECT_LT(m_view.Geometry().scroll.x, 100);
    EXPECT_EQ(m_view.Geometry().scroll.y, down);
}

TEST_F(CCanvasWidgetTest, MiddleButtonAndSpaceDragTheCanvas)
{
    QWidget* port = m_widget.viewport();
    const auto drag = [&](Qt::MouseButton button) {
        m_view.SetScroll({100, 100});
        QTest::mousePress(port, button, {}, {60, 60});
        QTest::mouseMove(port, {40, 70});
        QTest::mouseRelease(port, button, {}, {40, 70});
        const qreal ratio = m_widget.devicePixelRatioF();
        EXPECT_NEAR(m_view.Geometry().scroll.x, 100 + 20 * ratio, 1);
        EXPECT_NEAR(m_view.Geometry().scroll.y, 100 - 10 * ratio, 1);
    };
    drag(Qt::MiddleButton);
    QTest::keyPress(&m_widget, Qt::Key_Space);
    drag(Qt::LeftButton);
    QTest::keyRelease(&m_widget, Qt::Key_Space);
    EXPECT_EQ(m_document.Canvas().CountSelected(), 0) << "the tool must not see a drag of the canvas";
}

TEST_F(CCanvasWidgetTest, TwoQuickClicksAreTwoStrokes)
{
    QWidget* port = m_widget.viewport();
    m_view.SetMode(ToolMode::Pencil);
    m_document.Canvas().objects.Top()->SetSelected(true);
    QTest::mouseClick(port, Qt::LeftButton, {}, {60, 60});
    const QPointF position(60, 60);
    QMouseEvent second(QEvent::MouseButtonDblClick, position, port->mapToGlobal(position), Qt::LeftButton,
                       Qt::LeftButton, {});
    QCoreApplication::sendEvent(port, &second);
    EXPECT_EQ(m_document.History().UndoList().size(), 1u);
    QTest::mouseRelease(port, Qt::LeftButton, {}, {60, 60});
    EXPECT_EQ(m_document.History().UndoList().size(), 2u);
}

TEST_F(CCanvasWidgetTest, EscapeGivesUpADragOfObjects)
{
    QWidget* port = m_widget.viewport();
    QTest::mousePress(port, Qt::LeftButton, {}, {60, 60});
    QTest::mouseMove(port, {90, 75});
    EXPECT_NE(m_document.Canvas().objects.Bottom()->x, 0);
    QTest::keyClick(&m_widget, Qt::Key_Escape);
    QTest::mouseRelease(port, Qt::LeftButton, {}, {90, 75});
    EXPECT_EQ(m_document.Canvas().objects.Bottom()->x, 0);
    EXPECT_EQ(m_document.History().PeekUndo(), nullptr);
    QTest::keyClick(&m_widget, Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(m_document.Canvas().objects.Bottom()->x, 10) << "arrow keys move what is selected";
}

TEST_F(CCanvasWidgetTest, DraggingAnObjectRepaintsWhereItWasAndWhereItIs)
{
    auto small = MakeShared<CPicObject>(m_document.NewImage(RandomDib(20, 10, 4)));
    small->visible = true;
    m_document.Canvas().objects.Append(small);
    QWidget* port = m_widget.viewport();
    QTest::mousePress(port, Qt::LeftButton, {}, {6, 4});
    QTest::mouseMove(port, {10, 8});
    QCoreApplication::processEvents();
    CPaintedArea painted;
    port->installEventFilter(&painted);
    for (const QPoint to : {QPoint(60, 40), QPoint(63, 42)}) {
        const Rect old = m_view.Geometry().ToClient(small->Rectangle());
        painted.region = {};
        QTest::mouseMove(port, to);
        QCoreApplication::processEvents();
        const Rect now = m_view.Geometry().ToClient(small->Rectangle());
        EXPECT_NE(old, now);
        const qreal ratio = m_widget.devicePixelRatioF();
        QRegion needed;
        for (const Rect& rect : {old, now}) {
            // Two pixels for the frame of a selected object, and what rounding to the desktop's pixels takes.
            const Rect around = rect.Inflated(2);
            needed += QRectF(around.left / ratio, around.top / ratio, around.Width() / ratio,
                             around.Height() / ratio)
                          .toAlignedRect()
                          .adjusted(-1, -1, 1, 1);
        }
        EXPECT_FALSE(painted.region.isEmpty());
        EXPECT_TRUE(painted.region.subtracted(needed).isEmpty());
    }
    QTest::mouseRelease(port, Qt::LeftButton, {}, {63, 42});
}

TEST(CanvasScrollBar, LooksLikeAnyOther)
{
    constexpr struct {
        int length, page, value;
    } kBars[] = {{300, 200, 0}, {300, 200, 251}, {300, 200, 500}, {300, 40, 500}, {260, 40, 3}};
    for (const Qt::Orientation orientation : {Qt::Horizontal, Qt::Vertical}) {
        CCanvasScrollBar ours(orientation);
        QScrollBar plain(orientation);
        // The pictures are kept from value to value and drawn again for another page or size.
        for (const auto& [length, page, value] : kBars) {
            for (QScrollBar* bar : {static_cast<QScrollBar*>(&ours), &plain}) {
                bar->resize(orientation == Qt::Horizontal ? QSize(length, 16) : QSize(16, length));
                bar->setRange(0, 500);
                bar->setPageStep(page);
                bar->setValue(value);
            }
            const QImage drawn = ours.grab().toImage().convertToFormat(QImage::Format_ARGB32);
            const QImage expected = plain.grab().toImage().convertToFormat(QImage::Format_ARGB32);
            ASSERT_EQ(drawn.size(), expected.size());
            int most = 0;
            for (qsizetype i = 0; i < drawn.sizeInBytes(); ++i)
                most = std::max(most, std::abs(drawn.constBits()[i] - expected.constBits()[i]));
            // Where the outline of the slider ends, mixing in another order rounds otherwise.
            EXPECT_LE(most, 4) << length << ' ' << page << ' ' << value;
        }
    }
}
