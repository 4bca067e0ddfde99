// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/SelectionState.h"
#include "journal/DocumentJournal.h"
#include "journal/JournalFile.h"
#include "model/PixoluneDoc.h"
#include "platform/Limits.h"

#include <filesystem>
#include <memory>
#include <optional>

/// A document as its journal tells it, up to the first damage.
struct RecoveredDocument {
    std::unique_ptr<CPixoluneDoc> document;
    std::vector<Ref<CSharedObj>> selections; ///< of its views, by number from 1
    JournalNumbers numbers;
    JournalExtent extent; ///< what of the file was taken

    /// What a new view of the document selects; none when nothing was ever selected.
    [[nodiscard]] Ref<CSelectionState> Selection() const;
};

/// Makes a document again, with its history. None when the bytes hold not even the document's begin. Whatever
/// the bytes are, memory stays below kJournalPiece bytes times three for each 20 bytes of them.
[[nodiscard]] std::optional<RecoveredDocument> RecoverDocument(std::span<const uint8_t> journal,
                                                               AppServices& services);
/// The same of a file.
[[nodiscard]] std::optional<RecoveredDocument> RecoverDocument(const std::filesystem::path& path,
                                                               AppServices& services);
