// SPDX-License-Identifier: GPL-3.0-or-later
#include "journal/Journal.h"

#include "journal/HeldState.h"
#include "platform/io/ByteWriter.h"
#include "platform/io/FileBytes.h"
#include "support/FullDisk.h"
#include "support/RandomEditor.h"
#include "support/TestFiles.h"

#include <algorithm>
#include <array>
#include <set>

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
            editor.Tidy();
        }
        journal.Finish();
        writer.Drain();
        bytes = FileContents(file);
    }

    /// The file tells the document as it was at some time, and never an earlier one than before, whatever the
    /// writer is at.
    void CheckWhatIsThere()
    {
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

/// How many entries of a journal end each of its steps: those that go on with the next one are counted with
/// it.
std::vector<uint32_t> StepsIn(std::span<const uint8_t> journal)
{
    // The end of a picture's runs, and that there is more to the step.
    constexpr std::array<uint8_t, 9> kGoesOn{0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0, 'M'};
    std::vector<uint32_t> steps;
    uint32_t entries = 0;
    ReadJournal(journal, [&](std::span<const uint8_t> entry) {
        ++entries;
        const bool goesOn =
            entry.size() > kGoesOn.size() && std::ranges::equal(entry.last(kGoesOn.size()), kGoesOn);
        if (!goesOn)
            steps.push_back(entries);
        return true;
    });
    return steps;
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
    /// What the file tells is the document as it is, with its history.
    void ExpectTold()
    {
        TestDocument other;
        const auto recovered = RecoverDocument(file, other.services);
        ASSERT_TRUE(recovered);
        EXPECT_EQ(ShownState::Of(*recovered->document), ShownState::Of(test.doc));
        EXPECT_EQ(Walk(*recovered->document), Walk(test.doc));
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
    session.ExpectTold();
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(session.folder.Path()), {}), 1);
}

TEST(Journal, IsWholeAgainAfterSomethingWasLost)
{
    struct Row {
        const char* name;
        void (*lose)(LongSession& session, CDocumentJournal& journal);
    };
    constexpr Row kCases[] = {
        {"the disk was full",
         [](LongSession& session, CDocumentJournal& journal) {
             const CFullDisk disk(std::filesystem::file_size(session.file) + 1000);
             session.Step(2);
             journal.Finish();
             session.writer.Drain();
         }},
        {"memory ran out",
         [](LongSession& session, CDocumentJournal& journal) {
             session.Step(2);
             journal.Distrust();
         }},
    };
    for (const Row& row : kCases) {
        SCOPED_TRACE(row.name);
        LongSession session;
        CDocumentJournal journal(session.test.doc, session.writer, session.writer.Open(session.file));
        journal.Finish();
        session.writer.Drain();
        row.lose(session, journal);
        session.Step(3);
        journal.Flush(); // sees that something is missing
        session.Step(4);
        session.test.doc.Undo();
        for (uint32_t step = 5; step < 7; ++step) {
            journal.Finish();
            session.writer.Drain();
            EXPECT_TRUE(journal.IsOnDisk());
            session.ExpectTold();
            session.Step(step);
        }
    }
}

/// Commands that hold their versions packed, with one undone, as the program comes to hold them while idle.
TEST(Journal, WrittenAnewTellsPackedVersions)
{
    LongSession session;
    CDocumentJournal journal(session.test.doc, session.writer, session.writer.Open(session.file));
    const Ref<CRasterImage> image = session.test.doc.Canvas().objects.Top()->image;
    for (int step = 1; step <= 6; ++step) {
        CPackedDib next = image->Dib().Duplicate();
        for (uint8_t& byte : next.Bits().first(next.Bits().size() / 8 * 3))
            byte ^= static_cast<uint8_t>(step);
        auto command = std::make_unique<CTransformCommand>(TransformKind::Negative);
        command->AddPicture(image, image->Exchange(std::move(next)));
        session.test.doc.Record(std::move(command));
    }
    CHistoryTidier tidier;
    while (tidier.Work(session.test.doc, std::chrono::milliseconds(1))) {
    }
    session.test.doc.Undo();
    journal.Rewrite();
    const CHeldState held(session.test.doc);
    EXPECT_GT(std::ranges::count_if(held.versions,
                                    [](const auto& each) { return each.version->Changes().IsPacked(); }),
              4);
    journal.Finish();
    session.writer.Drain();
    EXPECT_EQ(StepsIn(FileContents(session.file)).size(), 1u);
    session.ExpectTold();
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

/// What the whole steps of a journal tell one after another. They must be the states that there were, in
/// order and up to the last; one that was written anew begins with any of them. A step may tell what a state
/// already shown needs later.
std::vector<ShownState> StatesIn(const JournalledEditing& editing, bool isWrittenAnew)
{
    std::vector<ShownState> told;
    std::set<size_t> possible;
    for (size_t index = 0; index < (isWrittenAnew ? editing.states.size() : 1); ++index)
        possible.insert(index);
    for (const uint32_t entries : StepsIn(editing.bytes)) {
        uint32_t read = 0;
        const JournalExtent extent =
            ReadJournal(editing.bytes, [&](std::span<const uint8_t>) { return read++ < entries; });
        TestDocument test;
        const auto recovered = RecoverDocument(std::span(editing.bytes).first(extent.bytes), test.services);
        EXPECT_TRUE(recovered);
        if (!recovered)
            break;
        told.push_back(ShownState::Of(*recovered->document));
        std::set<size_t> next;
        for (const size_t before : possible) {
            for (const size_t index : {before, before + 1}) {
                if (index < editing.states.size() && editing.states[index] == told.back())
                    next.insert(index);
            }
        }
        possible = std::move(next);
    }
    EXPECT_TRUE(possible.contains(editing.states.size() - 1));
    return told;
}

/// Whether damaged bytes give exactly the state after the whole steps before the damage.
testing::AssertionResult TellsThePast(std::span<const uint8_t> bytes, std::span<const uint8_t> before,
                                      std::span<const ShownState> states)
{
    TestDocument test;
    const auto recovered = RecoverDocument(bytes, test.services);
    const std::vector<uint32_t> whole = StepsIn(before);
    if (!recovered || whole.empty())
        return recovered.has_value() != whole.empty() ? testing::AssertionSuccess()
                                                      : testing::AssertionFailure() << "begin";
    if (recovered->extent.entries != whole.back())
        return testing::AssertionFailure() << recovered->extent.entries << " entries for " << whole.back();
    if (ShownState::Of(*recovered->document) != states[whole.size() - 1])
        return testing::AssertionFailure() << "another state after " << whole.size() << " steps";
    return testing::AssertionSuccess();
}

TEST(Journal, CutOrDamagedAnywhereTellsWhatWasBefore)
{
    size_t longest = 0;
    for (uint32_t seed = 1; seed <= 12; ++seed) {
        SCOPED_TRACE(seed);
        const bool isWrittenAnew = seed % 2 == 0;
        JournalledEditing editing(seed, 40, isWrittenAnew);
        const Bytes& bytes = editing.bytes;
        const std::vector<ShownState> told = StatesIn(editing, isWrittenAnew);
        if (isWrittenAnew && told.size() < editing.states.size())
            longest = std::max(longest, told.size());
        const auto tellsThePast = [&](std::span<const uint8_t> damaged, size_t damageAt) {
            return TellsThePast(damaged, std::span(bytes).first(damageAt), told);
        };
        // Every end of a record, then bytes and bits anywhere.
        for (size_t at = kJournalNameBytes; at <= bytes.size();) {
            ASSERT_TRUE(tellsThePast(std::span(bytes).first(at), at)) << at;
            if (at + kJournalRecordHeader > bytes.size())
                break;
            at += RecordBytes(std::span(bytes).subspan(at));
        }
        std::mt19937 random(seed);
        for (int trial = 0; trial < 150; ++trial) {
            const size_t at = random() % bytes.size();
            ASSERT_TRUE(tellsThePast(std::span(bytes).first(at), at)) << "cut at " << at;
            Bytes flipped = bytes;
            flipped[at] = static_cast<uint8_t>(flipped[at] ^ 1u << random() % 8);
            ASSERT_TRUE(tellsThePast(flipped, at)) << "bit of byte " << at;
        }
        editing.editor.ForgetTidying();
    }
    EXPECT_GT(longest, 4u) << "steps behind the one that tells everything anew";
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

TEST(Journal, ThatIsTooLongIsNotRead)
{
    LongSession session;
    CDocumentJournal(session.test.doc, session.writer, session.writer.Open(session.file)).Finish();
    session.writer.Drain();
    std::filesystem::resize_file(session.file, std::filesystem::file_size(session.file) + 1000);
    session.ExpectTold();
    std::filesystem::resize_file(session.file, static_cast<uintmax_t>(kMostJournalBytes) + 1);
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_FALSE(RecoverDocument(session.file, session.test.services));
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(1));
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
