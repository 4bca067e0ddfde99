// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

struct _XDisplay;

/// Looks at an X display that the program has for itself.
class CScreenWatch {
public:
    /// The display of the environment; see IsOpen.
    CScreenWatch();
    ~CScreenWatch();
    CScreenWatch(const CScreenWatch&) = delete;
    CScreenWatch& operator=(const CScreenWatch&) = delete;

    [[nodiscard]] bool IsOpen() const { return m_display != nullptr; }
    /// Whether a window of an application's size is on the screen.
    [[nodiscard]] bool ShowsWindow() const;
    /// Whether a row of at least eight pixels of a colour is on one of some lines across the screen. No
    /// window manager and no colour management may have touched it by more than a little.
    [[nodiscard]] bool ShowsColour(uint32_t rgb) const;

private:
    _XDisplay* m_display;
};
