// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/PixoluneDoc.h"

#include <chrono>
#include <optional>

/// Makes histories smaller while nobody waits: whole pictures of commands become what differs from the
/// pictures that followed them, where that is less than half of them, and what differs is packed.
class CHistoryTidier {
public:
    /// Goes on for about `budget`; false when there is nothing more to do.
    bool Work(CPixoluneDoc& document, std::chrono::microseconds budget);
    /// Lets go of everything that was begun.
    void Forget();

private:
    /// A whole picture that is being compared with the picture that followed it.
    struct Comparison {
        Ref<CRasterImage> image;
        Ref<CPictureVersion> version;
        Ref<CPictureVersion> base;
        CPixelChangesBuilder changes;
        size_t done = 0; ///< words
    };
    class CSearch;

    /// Begins with something that is left to do; false when nothing is.
    bool Begin(CPixoluneDoc& document);
    void GoOnComparing();
    void GoOnPacking();

    std::optional<Comparison> m_comparison;
    Ref<CPictureVersion> m_packing; ///< whose changes are being packed
    CZstdPacker m_packer;
    Ref<CZstdReader> m_unpacker = MakeShared<CZstdReader>();
};
