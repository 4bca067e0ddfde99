// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/clipboard/Clipboard.h"

#include <QObject>

#include <optional>

/// The window system's clipboard. What is offered is made when somebody asks for it.
class CQtClipboard final : public IClipboard {
public:
    CQtClipboard();

    bool Offer(ClipboardOffer offer) override;
    [[nodiscard]] std::optional<std::vector<uint8_t>> PrivateStream() const override;
    [[nodiscard]] CPackedDib Picture() const override;
    [[nodiscard]] std::vector<std::filesystem::path> Files() const override;
    [[nodiscard]] std::vector<Point> Origins() const override;
    [[nodiscard]] bool HasContents() const override;

private:
    std::vector<Point> m_origins; ///< of what was offered last
    /// Asking the window system takes several round trips to it, and menus ask after every step.
    mutable std::optional<bool> m_hasContents;
    QObject m_watcher;
};
