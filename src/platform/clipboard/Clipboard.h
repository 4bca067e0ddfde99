// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

/// What a copy offers. Each form is made only when somebody asks for it.
struct ClipboardOffer {
    std::function<std::vector<uint8_t>()> privateStream; ///< this program's own form
    std::function<CPackedDib()> picture;                 ///< one 32-bit picture for other programs
    std::vector<Point> origins;                          ///< corners of the stream's pictures on their canvas
};

/// The clipboard: the window system's, or one that is private to a run of the command line.
class IClipboard {
public:
    virtual ~IClipboard() = default;
    /// Replaces what the clipboard holds; false when the window system refuses.
    virtual bool Offer(ClipboardOffer offer) = 0;
    /// The private stream; none when the clipboard does not hold that form.
    [[nodiscard]] virtual std::optional<std::vector<uint8_t>> PrivateStream() const = 0;
    /// A picture put there by another program, 32 bits per pixel; empty when there is none.
    [[nodiscard]] virtual CPackedDib Picture() const = 0;
    /// Where the stream's pictures came from, in its order; empty when another process put them there.
    [[nodiscard]] virtual std::vector<Point> Origins() const { return {}; }
    /// Files that were copied in a file manager.
    [[nodiscard]] virtual std::vector<std::filesystem::path> Files() const { return {}; }
    /// Whether any form is there, without fetching it.
    [[nodiscard]] virtual bool HasContents() const = 0;
};

/// A clipboard that only its owner sees.
class CPrivateClipboard final : public IClipboard {
public:
    bool Offer(ClipboardOffer offer) override;
    [[nodiscard]] std::optional<std::vector<uint8_t>> PrivateStream() const override;
    [[nodiscard]] CPackedDib Picture() const override;
    [[nodiscard]] std::vector<Point> Origins() const override { return m_offer.origins; }
    [[nodiscard]] bool HasContents() const override;

private:
    ClipboardOffer m_offer;
};
