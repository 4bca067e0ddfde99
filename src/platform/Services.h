// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>

class CSettings;
class IClipboard;
class IUserInterface;

/// Names new pictures "Obj - 1", "Obj - 2" and so on, across all documents of one run.
class CObjectNameCounter {
public:
    [[nodiscard]] std::string Next() { return "Obj - " + std::to_string(m_next++); }
    /// The number in the next name.
    [[nodiscard]] uint32_t NextNumber() const { return m_next; }
    /// Gives no number below this one again.
    void GoOnFrom(uint32_t number) { m_next = std::max(m_next, number); }

private:
    uint32_t m_next = 1;
};

/// What the application object lends to documents, views and tools.
struct AppServices {
    CSettings& settings;
    IUserInterface& ui;
    IClipboard& clipboard;
    CObjectNameCounter& names;
};
