// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/BenchWindow.h"

#include <QAction>
#include <QApplication>
#include <QMouseEvent>
#include <QTest>
#include <QTimer>

namespace {

constexpr QSize kCanvas{1920, 1080};
constexpr int kPatienceMs = 10'000;

/// Notices that a widget is painted.
class CPaintWatch final : public QObject {
public:
    explicit CPaintWatch(QWidget& widget) { widget.installEventFilter(this); }
    [[nodiscard]] bool HasPainted() const { return m_hasPainted; }

    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        m_hasPainted = m_hasPainted || event->type() == QEvent::Paint;
        return false;
    }

private:
    bool m_hasPainted = false;
};

} // namespace

CBenchWindow::CBenchWindow()
    : m_settings(m_folder.filePath(QStringLiteral("settings.ini")), QSettings::IniFormat)
{
    m_window.resize(kCanvas);
    m_window.show();
    static_cast<void>(QTest::qWaitForWindowExposed(&m_window));
    Settle();
}

CBenchWindow::~CBenchWindow()
{
    CloseAll();
}

void CBenchWindow::Settle()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

void CBenchWindow::Paint()
{
    // Paints are posted; slices of frames come from timers and are not waited for.
    QCoreApplication::sendPostedEvents();
}

void CBenchWindow::AwaitExact()
{
    QTimer patience;
    patience.setSingleShot(true);
    patience.start(kPatienceMs);
    Settle();
    while (!View().IsFrameExact() && patience.isActive())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QCoreApplication::sendPostedEvents();
}

void CBenchWindow::CloseAll()
{
    while (CChildFrame* frame = m_window.ActiveFrame()) {
        frame->Document().SetModified(false);
        frame->close();
        // Windows that were closed go only when the event loop would end a round.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        Settle();
    }
}

void CBenchWindow::FitCanvas()
{
    for (int round = 0; round < 5 && Canvas().size() != kCanvas; ++round) {
        m_window.resize(m_window.size() + kCanvas - Canvas().size());
        QTest::qWait(50);
    }
    if (Canvas().size() != kCanvas)
        qWarning("The canvas has %d x %d pixels.", Canvas().width(), Canvas().height());
}

void CBenchWindow::Open(const QString& path)
{
    m_window.OpenFile(path);
    Settle();
}

void CBenchWindow::Show(CObjectCanvas canvas)
{
    CloseAll();
    m_window.Show(*m_app.AdoptDocument(std::move(canvas), "stack"));
    Settle();
    FitCanvas();
}

void CBenchWindow::Reset()
{
    View().CancelDrag();
    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::MiddleButton})
        Release(Canvas().rect().center(), button);
    View().SetMode(ToolMode::Default);
    View().SetZoom(1);
    View().SetScroll({900, 700});
    Settle();
}

void CBenchWindow::Run(CommandId id)
{
    m_window.Action(id)->trigger();
    Paint();
}

void CBenchWindow::Mouse(QEvent::Type type, QPoint place, Qt::MouseButton button, Qt::MouseButtons buttons)
{
    QMouseEvent event(type, place, Canvas().mapToGlobal(place), button, buttons, Qt::NoModifier);
    QCoreApplication::sendEvent(&Canvas(), &event);
    Paint();
}

void CBenchWindow::Press(QPoint place, Qt::MouseButton button)
{
    Mouse(QEvent::MouseButtonPress, place, button, button);
}

void CBenchWindow::Drag(QPoint place, Qt::MouseButton button)
{
    Mouse(QEvent::MouseMove, place, Qt::NoButton, button);
}

void CBenchWindow::Release(QPoint place, Qt::MouseButton button)
{
    Mouse(QEvent::MouseButtonRelease, place, button, Qt::NoButton);
}

void CBenchWindow::AwaitPaint()
{
    const CPaintWatch watch(Canvas());
    QTimer patience;
    patience.setSingleShot(true);
    patience.start(kPatienceMs);
    while (!watch.HasPainted() && patience.isActive())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}
