// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/PixoluneView.h"
#include "platform/clipboard/Clipboard.h"
#include "platform/settings/Settings.h"
#include "platform/ui/UserInterface.h"

#include <vector>

/// A document with a view of a window's size, without a window: what is invalidated is painted on demand.
class CWorkbench final : public IViewHost {
public:
    /// An object of that picture on a canvas of its size, selected.
    explicit CWorkbench(CPackedDib picture);

    [[nodiscard]] CPixoluneView& View() { return m_view; }
    [[nodiscard]] CPixoluneDoc& Document() { return m_document; }
    [[nodiscard]] CSettings& Settings() { return m_settings; }
    /// Appends objects of 8 x 8 pixels, named, visible.
    void AddObjects(int count);
    [[nodiscard]] static MouseInput LeftAt(Point client) { return {client, MouseButton::Left}; }
    /// Paints what was invalidated since the last call, all in one go as a window does.
    void PaintInvalidated();
    void ForgetInvalidated() { m_invalid.clear(); }

    void Invalidate(const Rect& client) override { m_invalid.push_back(client); }

private:
    static constexpr Size kWindow{1600, 1000};

    class CSilentInterface final : public IUserInterface {
        void SetPosition(int /*percent*/) override {}
        void ShowMessage(const std::string& /*text*/) override {}
        bool AskYesNo(const std::string& /*question*/) override { return true; }
        void SetStatusText(const std::string& /*text*/) override {}
    };

    CSettings m_settings;
    CSilentInterface m_ui;
    CPrivateClipboard m_clipboard;
    CObjectNameCounter m_names;
    AppServices m_services{m_settings, m_ui, m_clipboard, m_names};
    CPixoluneDoc m_document{m_services};
    CPixoluneView m_view{m_document, this};
    CPackedDib m_window = CPackedDib::Create(kWindow.width, kWindow.height, 32);
    std::vector<Rect> m_invalid;
};
