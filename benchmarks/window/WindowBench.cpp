// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/ChildFrame.h"
#include "app/ui/MainFrame.h"
#include "canvas/ui/CanvasWidget.h"
#include "fileio/DocumentFiles.h"
#include "platform/clipboard/Clipboard.h"
#include "platform/codec/SaveImage.h"
#include "platform/codec/SaveOptions.h"
#include "platform/ui/QtText.h"
#include "support/Cases.h"
#include "support/Inputs.h"

#include <QAction>
#include <QApplication>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QWheelEvent>

#include <benchmark/benchmark.h>

#include <cstdlib>

// What a user waits for: events go to the real window, and a case ends when the canvas has been painted.

namespace {

constexpr int kMegapixelsOpened = 12;
constexpr int kObjects = 50;

class CSilentInterface final : public IUserInterface {
public:
    void ShowMessage(const std::string& text) override { qWarning("%s", text.c_str()); }
    [[nodiscard]] bool AskYesNo(const std::string&) override { return true; }
    void SetStatusText(const std::string&) override {}
    void SetPosition(int) override {}
};

/// A main window of 1920 x 1080 that shows one document.
class CBenchWindow {
public:
    CBenchWindow() : m_settings(m_folder.filePath(QStringLiteral("settings.ini")), QSettings::IniFormat)
    {
        m_window.resize(1920, 1080);
        m_window.show();
        static_cast<void>(QTest::qWaitForWindowExposed(&m_window));
    }

    [[nodiscard]] QString File(const char* name) const { return m_folder.filePath(QLatin1String(name)); }
    [[nodiscard]] CMainFrame& Window() { return m_window; }
    [[nodiscard]] CPixoluneDoc& Document() { return m_window.ActiveFrame()->Document(); }
    [[nodiscard]] CPixoluneView& View() { return m_window.ActiveFrame()->View(); }
    [[nodiscard]] QWidget& Canvas() { return *m_window.ActiveFrame()->Canvas().viewport(); }

    void Open(const QString& path)
    {
        m_window.OpenFile(path);
        Settle();
    }
    void CloseAll()
    {
        while (CChildFrame* frame = m_window.ActiveFrame()) {
            frame->Document().SetModified(false);
            frame->close();
            Settle();
        }
    }
    /// Handles what is pending, paints included.
    static void Settle()
    {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
    void Run(CommandId id)
    {
        m_window.Action(id)->trigger();
        Settle();
    }
    void Mouse(QEvent::Type type, QPoint place, Qt::MouseButton button, Qt::MouseButtons buttons)
    {
        QMouseEvent event(type, place, Canvas().mapToGlobal(place), button, buttons, Qt::NoModifier);
        QCoreApplication::sendEvent(&Canvas(), &event);
        Settle();
    }
    void Drag(QPoint place, Qt::MouseButton button) { Mouse(QEvent::MouseMove, place, Qt::NoButton, button); }

private:
    QTemporaryDir m_folder;
    QSettings m_settings;
    CSilentInterface m_ui;
    CPrivateClipboard m_clipboard;
    CPixoluneApp m_app{m_ui, m_clipboard};
    CMainFrame m_window{m_app, m_settings};
};

CBenchWindow& Window()
{
    static CBenchWindow window;
    return window;
}

void ShowJpg()
{
    CBenchWindow& window = Window();
    window.CloseAll();
    const QString path = window.File("photo.jpg");
    if (!QFile::exists(path))
        static_cast<void>(CImage::SaveImageFile(ToPath(path), BackdropPicture(kMegapixelsOpened),
                                                JpgOptions{90}.Value(), nullptr));
    window.Open(path);
}

/// 50 objects of 12 megapixels, each a picture of its own.
void ShowStack()
{
    CBenchWindow& window = Window();
    window.CloseAll();
    ShowJpg();
    CObjectCanvas& canvas = window.Document().Canvas();
    canvas.DeselectAll();
    for (int index = 1; index < kObjects; ++index) {
        auto object = MakeShared<CPicObject>(
            MakeShared<CRasterImage>(PhotoPicture(kMegapixelsOpened).Duplicate(), "layer"));
        object->visible = true;
        canvas.objects.Append(std::move(object));
    }
    canvas.objects.At(kObjects / 2)->SetSelected(true);
    window.Document().NotifyObjectsChanged();
    window.Document().NotifyFrameChanged();
    CBenchWindow::Settle();
}

using Shown = void (*)();

/// The step of a drag, there and back again by turns, after a press in the middle.
std::function<void()> DragSteps(Qt::MouseButton button, QPoint step)
{
    CBenchWindow& window = Window();
    const QPoint middle = window.Canvas().rect().center();
    window.Mouse(QEvent::MouseButtonPress, middle, button, button);
    return [middle, button, step, turn = 0]() mutable {
        turn = (turn + 1) % 20;
        Window().Drag(middle + step * (turn < 10 ? turn : 20 - turn), button);
    };
}

void Release(Qt::MouseButton button)
{
    CBenchWindow& window = Window();
    window.Mouse(QEvent::MouseButtonRelease, window.Canvas().rect().center(), button, Qt::NoButton);
}

void Stroke()
{
    CBenchWindow& window = Window();
    const QPoint from(300, 300);
    window.Mouse(QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton);
    for (int step = 1; step <= 20; ++step)
        window.Drag(from + QPoint(step * 20, step * 10), Qt::LeftButton);
    window.Mouse(QEvent::MouseButtonRelease, from + QPoint(400, 200), Qt::LeftButton, Qt::NoButton);
}

struct WindowCase {
    const char* operation;
    std::function<std::function<void()>()> prepare; ///< with the document shown
};

const WindowCase kCases[] = {
    {"paint-all", [] { return [] { Window().Canvas().repaint(); }; }},
    {"pan-step",
     [] {
         return DragSteps(Qt::MiddleButton, {12, 7});
     }},
    {"zoom-step",
     [] {
         return [in = false]() mutable {
             in = !in;
             Window().Run(in ? CommandId::ViewZoomIn : CommandId::ViewZoomOut);
         };
     }},
    {"move-object-step",
     [] {
         Window().View().SetMode(ToolMode::Default);
         return DragSteps(Qt::LeftButton, {5, 3});
     }},
    {"stroke-step",
     [] {
         Window().View().SetMode(ToolMode::Pencil);
         return DragSteps(Qt::LeftButton, {9, 4});
     }},
    {"undo-and-redo-of-a-stroke",
     [] {
         Window().View().SetMode(ToolMode::Pencil);
         Stroke();
         return [] {
             Window().Run(CommandId::EditUndo);
             Window().Run(CommandId::EditRedo);
         };
     }},
    {"negative-of-an-object", [] { return [] { Window().Run(CommandId::TransformNegative); }; }},
    {"save-native",
     [] {
         return [] {
             CBenchWindow& window = Window();
             static_cast<void>(SaveDocument(window.Document(), ToPath(window.File("saved.pxd"))));
         };
     }},
};

void Register()
{
    AddCase({"window/open-jpg", "12MP", "ours", Threads::All}, [] { return ShowJpg; });
    for (const auto& [size, show] :
         {std::pair<const char*, Shown>{"12MP", ShowJpg}, {"12MP-50-objects", ShowStack}}) {
        for (const WindowCase& windowCase : kCases) {
            // A stack of 2.4 GB is not written over and over.
            if (show == ShowStack && windowCase.operation == std::string("save-native"))
                continue;
            AddCase({std::string("window/") + windowCase.operation, size, "ours", Threads::All},
                    [show = show, &windowCase] {
                        Release(Qt::NoButton);
                        show();
                        return windowCase.prepare();
                    });
        }
    }
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    QApplication::setAttribute(Qt::AA_CompressHighFrequencyEvents, false);
    benchmark::Initialize(&argc, argv);
    Register();
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return EXIT_SUCCESS;
}
