// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

class CSettings;
class IClipboard;
class IUserInterface;

/// Names new pictures "Obj - 1", "Obj - 2" and so on, across all documents of one run.
class CObjectNameCounter {
public:
    [[nodiscard]] std::string Next() { return "Obj - " + std::to_string(m_next++); }

private:
    int m_next = 1;
};

/// What the application object lends to documents, views and tools.
struct AppServices {
    CSettings& settings;
    IUserInterface& ui;
    IClipboard& clipboard;
    CObjectNameCounter& names;
};
