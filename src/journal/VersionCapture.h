// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "journal/PictureCapture.h"
#include "model/PictureVersion.h"

#include <optional>

/// Takes down a version that commands hold and no picture shows, a piece at a time.
class CVersionCapture {
public:
    using Sink = CPictureCapture::Sink;

    explicit CVersionCapture(Ref<CPictureVersion> version);

    [[nodiscard]] const Ref<CPictureVersion>& Version() const { return m_version; }
    [[nodiscard]] bool IsDone() const { return m_isDone; }
    /// Takes a piece more. False when memory ran out or the version has come to be kept in another way.
    [[nodiscard]] bool Advance(const Sink& sink);

private:
    [[nodiscard]] bool AdvanceWhole(const Sink& sink);
    [[nodiscard]] bool AdvanceChanged(const Sink& sink);

    Ref<CPictureVersion> m_version;
    CPictureVersion::Form m_form;
    size_t m_taken = 0; ///< bytes of a whole picture
    std::optional<CPixelChangesReader> m_changes;
    bool m_isDone = false;
};
