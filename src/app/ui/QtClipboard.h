// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/clipboard/Clipboard.h"

/// The window system's clipboard. What is offered is made when somebody asks for it.
class CQtClipboard final : public IClipboard {
public:
    bool Offer(ClipboardOffer offer) override;
    [[nodiscard]] std::optional<std::vector<uint8_t>> PrivateStream() const override;
    [[nodiscard]] CPackedDib Picture() const override;
    [[nodiscard]] std::vector<std::filesystem::path> Files() const override;
    [[nodiscard]] std::vector<Point> Origins() const override;
    [[nodiscard]] bool HasContents() const override;

private:
    std::vector<Point> m_origins; ///< of what was offered last
};
