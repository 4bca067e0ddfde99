// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "journal/DocumentRecords.h"
#include "journal/JournalWriter.h"
#include "journal/PictureCapture.h"
#include "model/PixoluneDoc.h"

#include <chrono>
#include <deque>
#include <map>
#include <memory>
#include <vector>

/// The numbers that a journal has given so far.
struct JournalNumbers {
    uint32_t objects = 0;
    uint32_t pictures = 0;
    uint32_t versions = 0;
    uint32_t selections = 0;
};

/// Writes down what happens to a document. Every command, undo and redo becomes a part of an entry as it
/// happens; Flush ends the entry with what else is different, so that an entry is one step of the person at
/// the program, taken back as a whole or not at all. Pixels follow in Work. Entries are handed over in order.
class CDocumentJournal final : private IDocumentObserver, private IPictureWatcher {
public:
    /// Begins with all that the document holds. The document must outlive the journal.
    CDocumentJournal(CPixoluneDoc& document, CJournalWriter& writer, std::shared_ptr<CJournalTarget> target);
    /// Goes on with a journal from which the document has just been recovered.
    CDocumentJournal(CPixoluneDoc& document, CJournalWriter& writer, std::shared_ptr<CJournalTarget> target,
                     const JournalNumbers& numbers, std::vector<Ref<CSharedObj>> selections);
    ~CDocumentJournal() override;

    /// Ends the entry of what happened since the last call; false when nothing has.
    bool Flush();
    /// Hands finished entries over until about `end`; false when there is nothing more to do.
    bool Work(std::chrono::steady_clock::time_point end);
    /// Hands everything over now.
    void Finish();

private:
    class CPartsWriter;
    struct Capture {
        CPictureCapture pixels;
        std::vector<uint8_t> head; ///< of its item; empty once it has been handed over
    };
    /// An entry in the order in which its parts are handed over.
    struct Entry {
        std::deque<Capture> captures;
        CByteWriter objects; ///< those met for the first time
        CByteWriter items;
        bool isComplete = false;
    };

    void OnObjectsChanged() override { m_isDirty = true; }
    void OnObjectSelectionChanged() override { m_isDirty = true; }
    void OnCanvasSizeChanged() override { m_isDirty = true; }
    void OnStateChanged() override { m_isDirty = true; }
    void OnRecorded(const CEditCommand& command) override;
    void OnHistoryWillMove() override { Flush(); }
    void OnHistoryMoved(HistoryMove move) override;
    void OnPixelsWillChange(CRasterImage& image, int top, int bottom) override;

    /// The entry that is being made.
    Entry& Open();
    void WriteDifferences();
    void WriteList();
    void WriteSelections();
    /// Writes an object the first time it is met.
    uint32_t NumberOf(const Ref<CPicObject>& object);
    uint32_t NumberOf(const Ref<CSharedObj>& selection);
    /// The number of the version that the picture shows, whose pixels are captured the first time.
    uint32_t NumberOfShown(const Ref<CRasterImage>& image, const Ref<CPictureVersion>& before);
    void Hand(std::span<const uint8_t> bytes);
    void HandPiece(EntryEnd end);
    void HandStep();
    void StopWatching(CRasterImage& image);

    CPixoluneDoc& m_document;
    CJournalWriter& m_writer;
    std::shared_ptr<CJournalTarget> m_target;
    JournalNumbers m_numbers;
    std::deque<Entry> m_entries;
    std::vector<uint8_t> m_piece;
    bool m_isDirty = true;

    // What has been written already
    std::map<uint32_t, ObjectRecord> m_objects;
    std::vector<uint32_t> m_list;
    CanvasRecord m_canvas;
    bool m_modified = false;
    std::string m_path;
    std::string m_title;
    std::vector<Ref<CSharedObj>> m_selections; ///< by number from 1
    std::vector<CRegion> m_regions;
};
