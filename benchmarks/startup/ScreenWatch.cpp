// SPDX-License-Identifier: GPL-3.0-or-later
#include "startup/ScreenWatch.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <cstdlib>
#include <memory>

namespace {

constexpr int kSmallestWindow = 150;
constexpr int kLines = 6;
constexpr int kRun = 8;
constexpr int kTolerance = 4; ///< of each channel

/// Windows may go between two questions about them.
int Ignore(Display* /*display*/, XErrorEvent* /*error*/)
{
    return 0;
}

bool IsNear(unsigned long pixel, uint32_t rgb)
{
    for (int shift = 0; shift < 24; shift += 8) {
        const int seen = static_cast<int>(pixel >> shift & 0xFF);
        if (std::abs(seen - static_cast<int>(rgb >> shift & 0xFF)) > kTolerance)
            return false;
    }
    return true;
}

} // namespace

CScreenWatch::CScreenWatch() : m_display(XOpenDisplay(nullptr))
{
    XSetErrorHandler(Ignore);
}

CScreenWatch::~CScreenWatch()
{
    if (m_display != nullptr)
        XCloseDisplay(m_display);
}

bool CScreenWatch::ShowsWindow() const
{
    Window root = 0;
    Window parent = 0;
    Window* windows = nullptr;
    unsigned count = 0;
    if (XQueryTree(m_display, DefaultRootWindow(m_display), &root, &parent, &windows, &count) == 0)
        return false;
    const std::unique_ptr<Window, int (*)(void*)> freed(windows, XFree);
    for (unsigned i = 0; i < count; ++i) {
        XWindowAttributes is;
        if (XGetWindowAttributes(m_display, windows[i], &is) != 0 && is.map_state == IsViewable &&
            is.override_redirect == 0 && is.width >= kSmallestWindow && is.height >= kSmallestWindow)
            return true;
    }
    return false;
}

bool CScreenWatch::ShowsColour(uint32_t rgb) const
{
    const int screen = DefaultScreen(m_display);
    const int width = DisplayWidth(m_display, screen);
    for (int line = 1; line <= kLines; ++line) {
        const int y = DisplayHeight(m_display, screen) * line / (kLines + 1);
        const std::unique_ptr<XImage, void (*)(XImage*)> row(
            XGetImage(m_display, RootWindow(m_display, screen), 0, y, static_cast<unsigned>(width), 1,
                      AllPlanes, ZPixmap),
            [](XImage* image) { XDestroyImage(image); });
        int run = 0;
        for (int x = 0; row && x < width; ++x) {
            run = IsNear(XGetPixel(row.get(), x, 0), rgb) ? run + 1 : 0;
            if (run == kRun)
                return true;
        }
    }
    return false;
}
