// SPDX-License-Identifier: GPL-3.0-or-later
#include "journal/DocumentJournal.h"

#include "canvas/SelectionState.h"
#include "journal/HeldState.h"

#include <algorithm>
#include <new>
#include <utility>

namespace {

/// More would only fill the memory while the disk is busy.
constexpr size_t kMostWaitingBytes = size_t{64} << 20;

/// Of what is told anew; enough for the thread not to run dry between two steps.
constexpr size_t kMostWaitingAnew = size_t{8} << 20;

/// More is not copied at once for the sake of a new file: whoever works would notice.
constexpr size_t kMostEarlyBytes = size_t{2} << 20;

constexpr int kNoPicture = -1;

CSelectionState& StateOf(const Ref<CSharedObj>& selection)
{
    return static_cast<CSelectionState&>(*selection);
}

void WriteItem(CByteWriter& writer, JournalItem item)
{
    writer.U8(static_cast<uint8_t>(item));
}

/// The end of a picture's runs.
std::vector<uint8_t> EndOfRuns()
{
    CByteWriter end;
    end.U32(kEndOfRuns);
    end.U32(0);
    return end.Take();
}

constexpr uint8_t kMore[] = {static_cast<uint8_t>(JournalItem::More)};

} // namespace

/// Writes the parts of a command.
class CDocumentJournal::CPartsWriter final : public ICommandParts {
public:
    CPartsWriter(CDocumentJournal& journal, CByteWriter& writer) : m_journal(journal), m_writer(writer) {}

    void Attribute(const Ref<CPicObject>& object, ObjectAttribute which, int saved) override
    {
        Begin(CommandPart::Attribute, m_journal.NumberOf(object));
        m_writer.U8(static_cast<uint8_t>(which));
        m_writer.I32(saved);
    }
    void Name(const Ref<CPicObject>& object, const std::string& saved) override
    {
        Begin(CommandPart::Name, m_journal.NumberOf(object));
        WriteText(m_writer, saved);
    }
    void Picture(const Ref<CRasterImage>& image, const Ref<CPictureVersion>& saved) override
    {
        m_journal.NumberOfShown(image, saved);
        Begin(CommandPart::Picture, image->Number());
        m_writer.U32(saved->Number());
    }
    void List(const CObjectList& objects, const CObjectList& selection, OtherFlags others) override
    {
        m_writer.U8(static_cast<uint8_t>(CommandPart::List));
        for (const CObjectList* list : {&objects, &selection}) {
            m_writer.U32(static_cast<uint32_t>(list->Count()));
            for (const Ref<CPicObject>& object : *list)
                m_writer.U32(m_journal.NumberOf(object));
        }
        m_writer.U8(static_cast<uint8_t>(others));
    }
    void CanvasSize(Size saved) override
    {
        m_writer.U8(static_cast<uint8_t>(CommandPart::CanvasSize));
        m_writer.I32(saved.width);
        m_writer.I32(saved.height);
    }
    void Selects(const Ref<CPicObject>& object) override
    {
        Begin(CommandPart::Selects, m_journal.NumberOf(object));
    }
    void Selection(const Ref<CSharedObj>& selection, const CRegion& saved) override
    {
        Begin(CommandPart::Selection, m_journal.NumberOf(selection));
        WriteRegion(m_writer, saved);
    }
    void SelectionMove(const Ref<CSharedObj>& selection, Point distance) override
    {
        Begin(CommandPart::SelectionMove, m_journal.NumberOf(selection));
        m_writer.I32(distance.x);
        m_writer.I32(distance.y);
    }

private:
    void Begin(CommandPart part, uint32_t number)
    {
        m_writer.U8(static_cast<uint8_t>(part));
        m_writer.U32(number);
    }

    CDocumentJournal& m_journal;
    CByteWriter& m_writer;
};

CDocumentJournal::CDocumentJournal(CPixoluneDoc& document, CJournalWriter& writer,
                                   std::shared_ptr<CJournalTarget> target)
    : CDocumentJournal(document, writer, std::move(target), {}, {})
{
    Flush();
}

CDocumentJournal::CDocumentJournal(CPixoluneDoc& document, CJournalWriter& writer,
                                   std::shared_ptr<CJournalTarget> target, const JournalNumbers& numbers,
                                   std::vector<Ref<CSharedObj>> selections)
    : m_document(document), m_writer(writer), m_target(std::move(target)), m_numbers(numbers),
      m_current(writer, m_target, JournalCopy::Current), m_anew(writer, m_target, JournalCopy::Anew),
      m_selections(std::move(selections)), m_regions(m_selections.size())
{
    m_document.AddObserver(this);
}

CDocumentJournal::~CDocumentJournal()
{
    m_document.RemoveObserver(this);
    DropEntries();
}

CDocumentJournal::Entry& CDocumentJournal::Open()
{
    if (m_entries.empty() || m_entries.back().isComplete)
        m_entries.emplace_back();
    return m_entries.back();
}

uint32_t CDocumentJournal::NumberOfShown(const Ref<CRasterImage>& image, const Ref<CPictureVersion>& before)
{
    CPictureVersion& version = *image->Version();
    if (version.Number() != 0)
        return version.Number();
    version.SetNumber(++m_numbers.versions);
    Ref<CPictureVersion> base;
    if (image->Number() == 0)
        image->SetNumber(++m_numbers.pictures);
    else if (before && before->Number() != 0 &&
             (before->Kept() == CPictureVersion::Form::Changed ||
              HaveOneLayout(before->Picture(), image->Dib())))
        base = before;
    CaptureShown(image, std::move(base));
    return version.Number();
}

void CDocumentJournal::CaptureShown(const Ref<CRasterImage>& image, Ref<CPictureVersion> base)
{
    CByteWriter head;
    WriteHead(head, JournalItem::Picture, *image, image->Version()->Number(), base ? base->Number() : 0,
              image->Dib());
    Entry& entry = Open();
    entry.captures.push_back(
        {CPictureCapture(image, std::move(base), entry.isAnew ? kMostEarlyBytes : SIZE_MAX), head.Take()});
}

void CDocumentJournal::WriteHead(CByteWriter& writer, JournalItem item, const CRasterImage& image,
                                 uint32_t version, uint32_t base, const CPackedDib& pixels)
{
    WriteItem(writer, item);
    writer.U32(image.Number());
    writer.U32(version);
    writer.U32(base);
    writer.I32(pixels.IsEmpty() ? kNoPicture : pixels.Width());
    writer.I32(pixels.IsEmpty() ? kNoPicture : pixels.Height());
}

uint32_t CDocumentJournal::NumberOf(const Ref<CPicObject>& object)
{
    if (object->Number() == 0) {
        object->SetNumber(++m_numbers.objects);
        if (object->image)
            NumberOfShown(object->image, nullptr);
        WriteObject(Open().objects, object);
    }
    return object->Number();
}

void CDocumentJournal::WriteObject(CByteWriter& writer, const Ref<CPicObject>& object)
{
    ObjectRecord record = ObjectRecord::Of(*object);
    WriteItem(writer, JournalItem::Object);
    writer.U32(object->Number());
    record.Write(writer);
    m_objects.insert_or_assign(object->Number(), std::move(record));
}

uint32_t CDocumentJournal::NumberOf(const Ref<CSharedObj>& selection)
{
    if (selection->Number() == 0) {
        selection->SetNumber(++m_numbers.selections);
        m_selections.push_back(selection);
        m_regions.emplace_back();
    }
    return selection->Number();
}

void CDocumentJournal::WriteCommand(CByteWriter& writer, const CEditCommand& command)
{
    CPartsWriter parts(*this, writer);
    command.VisitParts(parts);
    writer.U8(static_cast<uint8_t>(CommandPart::End));
}

template <typename Run> void CDocumentJournal::Guard(Run run) noexcept
{
    try {
        run();
    } catch (const std::bad_alloc&) {
        Distrust();
    }
}

void CDocumentJournal::DropEntries() noexcept
{
    m_entries.clear();
    m_rewrite.reset();
}

void CDocumentJournal::Distrust() noexcept
{
    DropEntries();
    m_current.Forget();
    m_anew.Forget();
    m_isDistrusted = true;
}

void CDocumentJournal::OnRecorded(const CEditCommand& command)
{
    m_isDirty = true;
    Guard([&] {
        CByteWriter& writer = Open().items;
        WriteItem(writer, JournalItem::Command);
        WriteText(writer, command.Name());
        writer.U32(static_cast<uint32_t>(m_document.History().UndoList().size()));
        WriteCommand(writer, command);
    });
}

void CDocumentJournal::OnHistoryWillMove()
{
    Guard([this] {
        // Versions come to be kept in other ways, and those not taken down yet get out of reach.
        AbandonRewrite();
        EndEntry();
    });
}

void CDocumentJournal::OnHistoryMoved(HistoryMove move)
{
    m_isDirty = true;
    constexpr JournalItem kItems[] = {JournalItem::Undone, JournalItem::Redone, JournalItem::Withdrawn};
    Guard([&] { WriteItem(Open().items, kItems[static_cast<size_t>(move)]); });
}

void CDocumentJournal::WriteList()
{
    std::vector<uint32_t> list;
    for (const Ref<CPicObject>& object : m_document.Canvas().objects) {
        list.push_back(NumberOf(object));
        if (object->image)
            NumberOfShown(object->image, nullptr);
        if (ObjectRecord::Of(*object) != m_objects[object->Number()])
            WriteObject(Open().items, object);
    }
    if (list == m_list)
        return;
    WriteItem(Open().items, JournalItem::List);
    Open().items.U32(static_cast<uint32_t>(list.size()));
    for (const uint32_t number : list)
        Open().items.U32(number);
    m_list = std::move(list);
}

void CDocumentJournal::WriteSelections()
{
    for (size_t index = 0; index < m_selections.size(); ++index) {
        const CRegion& region = StateOf(m_selections[index]).region;
        if (region == m_regions[index])
            continue;
        m_regions[index] = region;
        WriteItem(Open().items, JournalItem::Selection);
        Open().items.U32(m_selections[index]->Number());
        WriteRegion(Open().items, region);
    }
}

void CDocumentJournal::WriteDifferences()
{
    WriteList();
    if (const CanvasRecord canvas = CanvasRecord::Of(m_document.Canvas()); canvas != m_canvas) {
        m_canvas = canvas;
        WriteItem(Open().items, JournalItem::Canvas);
        canvas.Write(Open().items);
    }
    const std::string path = m_document.Path().string();
    const std::string title = m_document.Title();
    if (m_document.IsModified() != m_modified || path != m_path || title != m_title) {
        m_modified = m_document.IsModified();
        m_path = path;
        m_title = title;
        CByteWriter& writer = Open().items;
        WriteItem(writer, JournalItem::Document);
        writer.U8(m_modified);
        WriteText(writer, path);
        WriteText(writer, title);
    }
    if (const uint32_t next = m_document.Services().names.NextNumber(); next != m_nextName) {
        m_nextName = next;
        WriteItem(Open().items, JournalItem::Names);
        Open().items.U32(next);
    }
    WriteSelections();
}

bool CDocumentJournal::EndEntry()
{
    if (!m_isDirty || m_isDistrusted)
        return false;
    WriteDifferences();
    m_isDirty = false;
    if (m_entries.empty() || m_entries.back().isComplete)
        return false;
    m_entries.back().isComplete = true;
    return true;
}

bool CDocumentJournal::Flush()
{
    bool hasEnded = false;
    Guard([&] {
        hasEnded = EndEntry();
        const bool isAsked = m_rewrite || std::ranges::any_of(m_entries, &Entry::isAnew);
        if (m_isDistrusted || (!isAsked && m_target->WantsRewrite()))
            Rewrite();
    });
    return hasEnded;
}

void CDocumentJournal::TellHidden(const CHeldState& held)
{
    for (const Ref<CPicObject>& object : held.objects) {
        if (object->Number() != 0 && ObjectRecord::Of(*object) != m_objects[object->Number()])
            WriteObject(Open().items, object);
    }
    if (!m_entries.empty())
        m_entries.back().isComplete = true;
}

void CDocumentJournal::Rewrite()
{
    AbandonRewrite();
    const CHeldState held(m_document);
    if (m_isDistrusted)
        DropEntries();
    else
        TellHidden(held);
    Entry& entry = m_entries.emplace_back();
    entry.isAnew = true;
    entry.gap = m_isDistrusted ? JournalGap::Yes : JournalGap::No;
    m_isDistrusted = false;
    m_objects.clear();
    for (const Ref<CRasterImage>& image : held.images) {
        // Those that are met for the first time are captured with their numbers.
        if (image->Version()->Number() != 0 && image->Number() != 0)
            CaptureShown(image, nullptr);
        else
            NumberOfShown(image, nullptr);
    }
    for (const auto& [image, version] : held.versions) {
        if (version->Number() == 0)
            version->SetNumber(++m_numbers.versions);
        const bool isChanged = version->Kept() == CPictureVersion::Form::Changed;
        CByteWriter head;
        WriteHead(head, JournalItem::Version, *image, version->Number(),
                  isChanged ? version->Base()->Number() : 0, version->Picture());
        entry.versions.push_back({CVersionCapture(version), head.Take()});
    }
    for (const Ref<CPicObject>& object : held.objects) {
        if (object->Number() == 0)
            object->SetNumber(++m_numbers.objects);
        WriteObject(entry.items, object);
    }
    for (const Ref<CSharedObj>& selection : held.selections)
        NumberOf(selection);
    for (size_t index = 0; index < m_selections.size(); ++index) {
        WriteItem(entry.items, JournalItem::Selection);
        entry.items.U32(m_selections[index]->Number());
        m_regions[index] = StateOf(m_selections[index]).region;
        WriteRegion(entry.items, m_regions[index]);
    }
    const CUndoManager& history = m_document.History();
    uint32_t count = 0;
    for (const auto& command : history.UndoList()) {
        WriteItem(entry.items, JournalItem::Command);
        WriteText(entry.items, command->Name());
        entry.items.U32(++count);
        WriteCommand(entry.items, *command);
    }
    for (const auto& command : history.RedoList()) {
        WriteItem(entry.items, JournalItem::Future);
        WriteText(entry.items, command->Name());
        WriteCommand(entry.items, *command);
    }
    // A document that is recovered begins with these.
    m_list.clear();
    m_canvas = {};
    m_modified = !m_document.IsModified();
    m_path.clear();
    m_title.clear();
    m_nextName = 0;
    WriteDifferences();
    entry.isComplete = true;
}

void CDocumentJournal::AbandonRewrite()
{
    const auto isBehindGap = [](const Entry& entry) { return entry.gap == JournalGap::Yes; };
    if ((m_rewrite && isBehindGap(*m_rewrite)) || std::ranges::any_of(m_entries, isBehindGap)) {
        Distrust();
        return;
    }
    if (m_rewrite) {
        m_rewrite.reset();
        m_anew.Forget();
        m_writer.AbandonRewrite(m_target);
    }
    std::erase_if(m_entries, [](const Entry& entry) { return entry.isAnew; });
}

bool CDocumentJournal::HasEntry() const
{
    return !m_isDistrusted && !m_entries.empty() &&
           (m_entries.front().isComplete || !m_entries.front().captures.empty());
}

bool CDocumentJournal::Step()
{
    if (HasEntry() && m_writer.WaitingBytes(JournalCopy::Current) <= kMostWaitingBytes)
        HandEntry();
    else if (!HasEntry() && m_rewrite && m_writer.WaitingBytes(JournalCopy::Anew) <= kMostWaitingAnew)
        HandAnew();
    else
        return false;
    return true;
}

bool CDocumentJournal::HandCapture(Entry& entry, CEntrySink& sink)
{
    Capture& capture = entry.captures.front();
    sink.Add(std::exchange(capture.head, {}));
    if (!capture.pixels.Advance([&](std::span<const uint8_t> bytes) { sink.Add(bytes); })) {
        if (entry.isAnew)
            AbandonRewrite();
        else
            Distrust();
        return false;
    }
    if (!capture.pixels.IsDone())
        return false;
    sink.Add(EndOfRuns());
    entry.captures.pop_front();
    return true;
}

void CDocumentJournal::HandEntry()
{
    Entry& entry = m_entries.front();
    if (entry.isAnew) {
        m_writer.BeginRewrite(m_target, entry.gap);
        m_rewrite = std::move(entry);
        m_entries.pop_front();
    } else if (!entry.captures.empty()) {
        static_cast<void>(HandCapture(entry, m_current));
    } else {
        m_current.Add(entry.objects.Collected());
        m_current.Add(entry.items.Collected());
        m_current.End();
        m_entries.pop_front();
    }
}

void CDocumentJournal::HandAnew()
{
    Entry& entry = *m_rewrite;
    if (!entry.captures.empty()) {
        if (!HandCapture(entry, m_anew))
            return;
    } else if (!entry.versions.empty()) {
        HeldCapture& held = entry.versions.front();
        m_anew.Add(std::exchange(held.head, {}));
        if (!held.pixels.Advance([&](std::span<const uint8_t> bytes) { m_anew.Add(bytes); })) {
            m_target->PostponeRewrite();
            AbandonRewrite();
            return;
        }
        if (!held.pixels.IsDone())
            return;
        m_anew.Add(EndOfRuns());
        entry.versions.pop_front();
    } else {
        m_anew.Add(entry.objects.Collected());
        m_anew.Add(entry.items.Collected());
        m_anew.End();
        m_writer.FinishRewrite(m_target);
        m_rewrite.reset();
        return;
    }
    // Each picture is an entry of its own, so that no more than one is unpacked at a time.
    m_anew.Add(kMore);
    m_anew.End();
}

bool CDocumentJournal::Work(std::chrono::steady_clock::time_point end)
{
    while (HasWork()) {
        bool isFull = false;
        Guard([&] { isFull = !Step(); });
        if (isFull || std::chrono::steady_clock::now() >= end)
            return true;
    }
    return false;
}

bool CDocumentJournal::IsOnDisk() const
{
    return m_target->HasAllEntries() && std::ranges::all_of(m_entries, &Entry::isAnew);
}

void CDocumentJournal::Finish()
{
    Flush();
    while (HasWork()) {
        bool isFull = false;
        Guard([&] { isFull = !Step(); });
        if (isFull)
            m_writer.Drain();
    }
}
