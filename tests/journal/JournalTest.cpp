// SPDX-License-Identifier: GPL-3.0-or-later
#include "journal/Journal.h"

#include "platform/io/ByteWriter.h"
#include "platform/io/FileBytes.h"
#include "support/FullDisk.h"
#include "support/RandomEditor.h"
#include "support/TestFiles.h"

#include <cstring>

namespace {

using Bytes = std::vector<uint8_t>;

/// Without the addresses, and with what undo need not bring back.
struct ShownState {
    DocumentState document;
    std::vector<bool> selected;
    std::vector<std::string> history;
    bool modified = false;
    bool operator==(const ShownState&) const = default;

    static ShownState Of(const CPixoluneDoc& doc)
    {
        ShownState state{DocumentState::Of(doc), {}, {}, doc.IsModified()};
        for (DocumentState::Object& object : state.document.objects)
            object.identity = nullptr;
        for (const Ref<CPicObject>& object : doc.Canvas().objects)
            state.selected.push_back(object->IsSelected());
        for (const auto& command : doc.History().UndoList())
            state.history.push_back(command->Name());
        for (const auto& command : doc.History().RedoList())
            state.history.push_back(command->Name());
        return state;
    }
};

/// The states on the way back to the begin and then forth to the end of all that can be redone.
std::vector<ShownState> Walk(CPixoluneDoc& doc)
{
    std::vector<ShownState> states;
    while (doc.Undo())
        states.push_back(ShownState::Of(doc));
    while (doc.Redo())
        states.push_back(ShownState::Of(doc));
    return states;
}

/// A document that is edited at random and the states that its journal has to tell, one for each entry.
struct JournalledEditing {
    /// rewrites: the journal is written anew time and again.
    explicit JournalledEditing(uint32_t seed, int steps, bool rewrites = false) : editor(test, seed)
    {
        test.settings.Set(Setting::UndoMaxTimes, 2 + static_cast<int>(seed % 30));
        test.doc.Canvas().width = test.doc.Canvas().height = 10;
        test.Add(RandomDib(9, 30, seed), 1, 2, true);
        CDocumentJournal journal(test.doc, writer, writer.Open(file));
        states.push_back(ShownState::Of(test.doc));
        for (int step = 0; step < steps; ++step) {
            const int choice = editor.Below(5);
            if (choice == 0)
                test.doc.Undo();
            else if (choice == 1)
                test.doc.Redo();
            else
                editor.SelectSome(), editor.Step();
            // Commands change flags without saying so.
            test.doc.NotifyObjectSelectionChanged();
            if (journal.Flush())
                states.push_back(ShownState::Of(test.doc));
            if (rewrites && editor.Below(6) == 0)
                journal.Rewrite();
            for (int works = editor.Below(rewrites ? 12 : 2); works > 0; --works)
                journal.Work(std::chrono::steady_clock::now());
            if (rewrites)
                CheckWhatIsThere();
            else
                editor.Tidy();
        }
        journal.Finish();
        writer.Drain();
        bytes = FileContents(file);
    }

    /// The file tells the document as it was at some time, and never an earlier one than before.
    void CheckWhatIsThere()
    {
        writer.Drain();
        TestDocument other;
        const auto recovered = RecoverDocument(FileContents(file), other.services);
        ASSERT_TRUE(recovered || told == 0);
        if (!recovered)
            return;
        const auto state = std::find(states.begin() + static_cast<ptrdiff_t>(told), states.end(),
                                     ShownState::Of(*recovered->document));
        ASSERT_NE(state, states.end());
        told = static_cast<size_t>(state - states.begin());
    }

    CTemporaryFolder folder;
    std::filesystem::path file = folder.File("test.journal");
    TestDocument test;
    CRandomEditor editor;
    CJournalWriter writer;
    std::vector<ShownState> states;
    size_t told = 0; ///< of the states
    Bytes bytes;
};

TEST(Journal, BringsBackDocumentAndHistoryOfRandomEditing)
{
    for (uint32_t seed = 1; seed <= 300; ++seed) {
        SCOPED_TRACE(seed);
        JournalledEditing editing(seed, 50, seed % 3 == 0);
        ASSERT_FALSE(HasFailure());
        TestDocument other;
        auto recovered = RecoverDocument(editing.bytes, other.services);
        ASSERT_TRUE(recovered);
        EXPECT_EQ(recovered->extent.bytes, editing.bytes.size());
        ASSERT_EQ(ShownState::Of(*recovered->document), editing.states.back());
        EXPECT_EQ(other.names.Next(), editing.test.names.Next()) << "the next object's name";
        ASSERT_EQ(Walk(*recovered->document), Walk(editing.test.doc));
        editing.editor.ForgetTidying();
    }
}

/// A document whose strokes and transforms each change pixels that do not pack.
struct LongSession {
    LongSession() { test.Add(RandomDib(kSide, kSide, 1), 0, 0, true); }
    void Step(uint32_t seed)
    {
        auto command = std::make_unique<CTransformCommand>(TransformKind::Blur);
        const Ref<CRasterImage> image = test.doc.Canvas().objects.Top()->image;
        command->AddPicture(image, image->Exchange(RandomDib(kSide, kSide, seed)));
        test.doc.Record(std::move(command));
    }
    static constexpr int kSide = 64;
    TestDocument test;
    CTemporaryFolder folder;
    std::filesystem::path file = folder.File("1.journal");
    CJournalWriter writer;
};

TEST(Journal, OfALongSessionStaysBounded)
{
    constexpr uint64_t kPicture = LongSession::kSide * LongSession::kSide * 4;
    constexpr uint64_t kMostKept = 4;
    LongSession session;
    session.test.settings.Set(Setting::UndoMaxTimes, static_cast<int>(kMostKept) - 1);
    CDocumentJournal journal(session.test.doc, session.writer, session.writer.Open(session.file));
    for (uint32_t step = 2; step < 200; ++step) {
        session.Step(step);
        journal.Finish();
        session.writer.Drain();
        const uint64_t held = (kMostKept + 1) * kPicture * 11 / 10;
        ASSERT_LE(std::filesystem::file_size(session.file),
                  std::max(kLeastRewrittenBytes, kMostJournalGrowth * held) + 2 * kPicture);
    }
    TestDocument other;
    const auto recovered = RecoverDocument(session.file, other.services);
    ASSERT_TRUE(recovered);
    EXPECT_EQ(Walk(*recovered->document), Walk(session.test.doc));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(session.folder.Path()), {}), 1);
}

TEST(Journal, IsWholeAgainAfterTheDiskWasFull)
{
    LongSession session;
    CDocumentJournal journal(session.test.doc, session.writer, session.writer.Open(session.file));
    journal.Finish();
    session.writer.Drain();
    {
        const CFullDisk disk(std::filesystem::file_size(session.file) + 1000);
        session.Step(2);
        journal.Finish();
        session.writer.Drain();
    }
    session.Step(3);
    journal.Finish(); // sees that something is missing
    session.Step(4);
    journal.Finish();
    session.writer.Drain();
    TestDocument other;
    const auto recovered = RecoverDocument(session.file, other.services);
    ASSERT_TRUE(recovered);
    EXPECT_EQ(ShownState::Of(*recovered->document), ShownState::Of(session.test.doc));
    EXPECT_EQ(Walk(*recovered->document), Walk(session.test.doc));
}

TEST(Journal, IsWholeAgainAfterMemoryRanOut)
{
    LongSession session;
    CDocumentJournal journal(session.test.doc, session.writer, session.writer.Open(session.file));
    session.Step(2);
    journal.Distrust();
    session.Step(3);
    journal.Flush();
    session.Step(4);
    session.test.doc.Undo();
    journal.Finish();
    session.writer.Drain();
    TestDocument other;
    const auto recovered = RecoverDocument(session.file, other.services);
    ASSERT_TRUE(recovered);
    EXPECT_EQ(ShownState::Of(*recovered->document), ShownState::Of(session.test.doc));
    EXPECT_EQ(Walk(*recovered->document), Walk(session.test.doc));
}

TEST(Journal, CanBeGoneOnWithAfterRecovery)
{
    for (uint32_t seed = 1; seed <= 40; ++seed) {
        SCOPED_TRACE(seed);
        JournalledEditing editing(seed, 20);
        // The last entry was cut off; what follows takes its place.
        editing.bytes.pop_back();
        ShownState last;
        std::vector<ShownState> walked;
        {
            TestDocument test;
            auto recovered = RecoverDocument(editing.bytes, test.services);
            ASSERT_TRUE(recovered);
            CDocumentJournal journal(*recovered->document, editing.writer,
                                     editing.writer.Open(editing.file, recovered->extent), recovered->numbers,
                                     recovered->selections);
            NewObject(*recovered->document);
            journal.Flush();
            DuplicateObjects(*recovered->document);
            recovered->document->Undo();
            journal.Finish();
            editing.writer.Drain();
            last = ShownState::Of(*recovered->document);
            walked = Walk(*recovered->document);
        }
        auto again = RecoverDocument(editing.file, editing.test.services);
        ASSERT_TRUE(again);
        EXPECT_EQ(ShownState::Of(*again->document), last);
        EXPECT_EQ(Walk(*again->document), walked);
        editing.editor.ForgetTidying();
    }
}

/// Whether damaged bytes give exactly the state after the whole entries before the damage.
testing::AssertionResult TellsThePast(const JournalledEditing& editing, std::span<const uint8_t> bytes,
                                      size_t damageAt)
{
    TestDocument test;
    const auto recovered = RecoverDocument(bytes, test.services);
    // Entries that end before the damage, found in the whole journal.
    size_t whole = 0;
    {
        const std::span<const uint8_t> before = std::span(editing.bytes).first(damageAt);
        whole = ReadJournal(before, [](std::span<const uint8_t>) { return true; }).entries;
    }
    if (!recovered || whole == 0)
        return recovered.has_value() == (whole != 0) ? testing::AssertionSuccess()
                                                     : testing::AssertionFailure() << "begin";
    if (recovered->extent.entries != whole)
        return testing::AssertionFailure() << recovered->extent.entries << " entries for " << whole;
    if (ShownState::Of(*recovered->document) != editing.states[whole - 1])
        return testing::AssertionFailure() << "another state after " << whole << " entries";
    return testing::AssertionSuccess();
}

TEST(Journal, CutOrDamagedAnywhereTellsWhatWasBefore)
{
    for (uint32_t seed = 1; seed <= 6; ++seed) {
        SCOPED_TRACE(seed);
        JournalledEditing editing(seed, 40);
        const Bytes& bytes = editing.bytes;
        const JournalExtent all = ReadJournal(bytes, [](std::span<const uint8_t>) { return true; });
        ASSERT_EQ(all.entries, editing.states.size()) << "an entry for each state";
        // Every end of a record, then bytes and bits anywhere.
        for (size_t at = kJournalNameBytes; at <= bytes.size();) {
            ASSERT_TRUE(TellsThePast(editing, std::span(bytes).first(at), at)) << at;
            uint32_t stored = 0;
            if (at + sizeof stored > bytes.size())
                break;
            std::memcpy(&stored, bytes.data() + at, sizeof stored);
            at += 20 + stored;
        }
        std::mt19937 random(seed);
        for (int trial = 0; trial < 150; ++trial) {
            const size_t at = random() % bytes.size();
            ASSERT_TRUE(TellsThePast(editing, std::span(bytes).first(at), at)) << "cut at " << at;
            Bytes flipped = bytes;
            flipped[at] = static_cast<uint8_t>(flipped[at] ^ 1u << random() % 8);
            ASSERT_TRUE(TellsThePast(editing, flipped, at)) << "bit of byte " << at;
        }
        editing.editor.ForgetTidying();
    }
}

TEST(Journal, LiesWithRightChecksumsAreHarmless)
{
    const JournalledEditing editing(7, 30);
    std::vector<Bytes> entries;
    ReadJournal(editing.bytes, [&](std::span<const uint8_t> entry) {
        entries.emplace_back(entry.begin(), entry.end());
        return true;
    });
    std::mt19937 random(1);
    for (int trial = 0; trial < 3000; ++trial) {
        CJournalPacker packer(0);
        Bytes journal(JournalName().begin(), JournalName().end());
        const size_t lie = random() % entries.size();
        for (size_t index = 0; index < entries.size(); ++index) {
            Bytes entry = entries[index];
            for (uint32_t changes = index == lie ? 1 + static_cast<uint32_t>(random() % 3) : 0; changes > 0;
                 --changes)
                entry[random() % entry.size()] = static_cast<uint8_t>(random() % 4 == 0 ? 0xFF : random());
            const auto record = packer.Pack(entry, EntryEnd::Yes);
            journal.insert(journal.end(), record.begin(), record.end());
        }
        TestDocument test;
        auto recovered = RecoverDocument(journal, test.services);
        while (recovered && recovered->document->Undo()) {
        }
        while (recovered && recovered->document->Redo()) {
        }
    }
}

TEST(Journal, APictureThatTheFileCannotFillTakesNoMemory)
{
    CByteWriter entry;
    entry.U8('P');
    for (const uint32_t number : {1u, 1u, 0u})
        entry.U32(number);
    entry.I32(11000);
    entry.I32(12000);
    CJournalPacker packer(0);
    Bytes journal(JournalName().begin(), JournalName().end());
    const auto record = packer.Pack(entry.Collected(), EntryEnd::Yes);
    journal.insert(journal.end(), record.begin(), record.end());
    TestDocument test;
    EXPECT_FALSE(RecoverDocument(journal, test.services));
}

TEST(CJournalFolder, IsTakenOverOnlyFromTheDead)
{
    const CTemporaryFolder parent;
    auto alive = CJournalFolder::Create(parent.Path());
    ASSERT_TRUE(alive);
    const auto other = CJournalFolder::Create(parent.Path());
    ASSERT_TRUE(other);
    CJournalWriter writer;
    ASSERT_TRUE(writer.Open(alive->NewJournal()));
    EXPECT_TRUE(CJournalFolder::TakeOver(parent.Path()).empty());
    alive = nullptr; // its lock goes as with a process that dies; the journal stays
    {
        const auto taken = CJournalFolder::TakeOver(parent.Path());
        ASSERT_EQ(taken.size(), 1u);
        EXPECT_EQ(taken.front()->Journals().size(), 1u);
        EXPECT_TRUE(CJournalFolder::TakeOver(parent.Path()).empty()) << "by one only";
        std::filesystem::remove(taken.front()->Journals().front());
    }
    EXPECT_TRUE(CJournalFolder::TakeOver(parent.Path()).empty()) << "empty folders go";
}

TEST(CJournal, OfAClosedDocumentIsGone)
{
    const CTemporaryFolder parent;
    TestDocument test;
    const auto journal = CJournal::Create(parent.Path());
    ASSERT_TRUE(journal);
    journal->Begin(test.doc);
    NewObject(test.doc);
    journal->Finish();
    const auto count = [&] {
        int files = 0;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(parent.Path()))
            files += entry.path().extension() == ".journal";
        return files;
    };
    EXPECT_EQ(count(), 1);
    journal->End(test.doc);
    EXPECT_EQ(count(), 0);
    NewObject(test.doc); // nobody listens any more
}

} // namespace
