// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "journal/DocumentRecords.h"
#include "journal/EntrySink.h"
#include "journal/JournalWriter.h"
#include "journal/PictureCapture.h"
#include "journal/VersionCapture.h"
#include "model/PixoluneDoc.h"

#include <chrono>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <vector>

class CHeldState;

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
/// A journal that has grown long, or could not be written, is written anew: all that the document and its
/// history hold by then goes to another file in the same way, while entries go on to both.
class CDocumentJournal final : private IDocumentObserver {
public:
    /// Begins with all that the document holds. The document must outlive the journal.
    CDocumentJournal(CPixoluneDoc& document, CJournalWriter& writer, std::shared_ptr<CJournalTarget> target);
    /// Goes on with a journal from which the document has just been recovered.
    CDocumentJournal(CPixoluneDoc& document, CJournalWriter& writer, std::shared_ptr<CJournalTarget> target,
                     const JournalNumbers& numbers, std::vector<Ref<CSharedObj>> selections);
    ~CDocumentJournal() override;

    /// Ends the entry of what happened since the last call; false when nothing has.
    bool Flush();
    /// Hands over what is finished until about `end`; false when there is nothing more to do.
    bool Work(std::chrono::steady_clock::time_point end);
    /// Whether all that was noted is on the disk.
    [[nodiscard]] bool IsOnDisk() const;
    /// Hands everything over now.
    void Finish();
    /// Tells everything anew.
    void Rewrite();
    /// What was told may not be what happened: nothing more counts until everything has been told anew.
    void Distrust() noexcept;

private:
    class CPartsWriter;
    struct Capture {
        CPictureCapture pixels;
        std::vector<uint8_t> head; ///< of its item; empty once it has been handed over
    };
    struct HeldCapture {
        CVersionCapture pixels;
        std::vector<uint8_t> head;
    };
    /// An entry in the order in which its parts are handed over.
    struct Entry {
        std::deque<Capture> captures;
        std::deque<HeldCapture> versions; ///< of the history, where everything is told anew
        CByteWriter objects;              ///< those met for the first time
        CByteWriter items;
        bool isComplete = false;
        bool isAnew = false;             ///< for the file that will take the journal's place
        JournalGap gap = JournalGap::No; ///< before it
    };

    void OnObjectsChanged() override { m_isDirty = true; }
    void OnObjectSelectionChanged() override { m_isDirty = true; }
    void OnCanvasSizeChanged() override { m_isDirty = true; }
    void OnStateChanged() override { m_isDirty = true; }
    void OnRecorded(const CEditCommand& command) override;
    void OnHistoryWillMove() override;
    void OnHistoryMoved(HistoryMove move) override;

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
    void CaptureShown(const Ref<CRasterImage>& image, Ref<CPictureVersion> base);
    void WriteHead(CByteWriter& writer, JournalItem item, const CRasterImage& image, uint32_t version,
                   uint32_t base, const CPackedDib& pixels);
    void WriteObject(CByteWriter& writer, const Ref<CPicObject>& object);
    void WriteCommand(CByteWriter& writer, const CEditCommand& command);
    bool EndEntry();
    /// Tells what objects are like that the list does not hold: told anew, they would not be told again when
    /// they come back.
    void TellHidden(const CHeldState& held);
    /// Runs a part of the journal's own work. When memory runs out, what the person at the program does goes
    /// on without it.
    template <typename Run> void Guard(Run run) noexcept;

    [[nodiscard]] bool HasEntry() const;
    [[nodiscard]] bool HasWork() const { return HasEntry() || m_rewrite; }
    /// Hands over a little; false when too much waits to be written already.
    [[nodiscard]] bool Step();
    void HandEntry();
    void HandAnew();
    /// Hands on a row of the first capture; the capture goes with its last row. True then.
    [[nodiscard]] bool HandCapture(Entry& entry, CEntrySink& sink);
    void AbandonRewrite();
    void DropEntries() noexcept;

    CPixoluneDoc& m_document;
    CJournalWriter& m_writer;
    std::shared_ptr<CJournalTarget> m_target;
    JournalNumbers m_numbers;
    std::deque<Entry> m_entries;
    std::optional<Entry> m_rewrite; ///< told anew and not handed over yet
    CEntrySink m_current;
    CEntrySink m_anew;
    bool m_isDirty = true;
    bool m_isDistrusted = false;

    // What has been written already
    std::map<uint32_t, ObjectRecord> m_objects;
    std::vector<uint32_t> m_list;
    CanvasRecord m_canvas;
    bool m_modified = false;
    std::string m_path;
    std::string m_title;
    uint32_t m_nextName = 0;
    std::vector<Ref<CSharedObj>> m_selections; ///< by number from 1
    std::vector<CRegion> m_regions;
};
