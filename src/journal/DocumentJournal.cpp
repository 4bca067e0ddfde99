// SPDX-License-Identifier: GPL-3.0-or-later
#include "journal/DocumentJournal.h"

#include "canvas/SelectionState.h"

#include <algorithm>
#include <utility>

namespace {

/// More would only fill the memory while the disk is busy.
constexpr size_t kMostWaitingBytes = size_t{64} << 20;

constexpr int kNoPicture = -1;

CSelectionState& StateOf(const Ref<CSharedObj>& selection)
{
    return static_cast<CSelectionState&>(*selection);
}

void WriteItem(CByteWriter& writer, JournalItem item)
{
    writer.U8(static_cast<uint8_t>(item));
}

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
      m_selections(std::move(selections)), m_regions(m_selections.size())
{
    m_document.AddObserver(this);
    m_piece.reserve(kJournalPiece);
}

CDocumentJournal::~CDocumentJournal()
{
    m_document.RemoveObserver(this);
    for (Entry& entry : m_entries) {
        for (Capture& capture : entry.captures)
            capture.pixels.Image()->SetWatcher(nullptr);
    }
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
    const bool hasPixels = !image->Dib().IsEmpty();
    CByteWriter head;
    WriteItem(head, JournalItem::Picture);
    head.U32(image->Number());
    head.U32(version.Number());
    head.U32(base ? base->Number() : 0);
    head.I32(hasPixels ? image->Width() : kNoPicture);
    head.I32(hasPixels ? image->Height() : kNoPicture);
    Open().captures.push_back({CPictureCapture(image, std::move(base)), head.Take()});
    image->SetWatcher(this);
    return version.Number();
}

uint32_t CDocumentJournal::NumberOf(const Ref<CPicObject>& object)
{
    if (object->Number() != 0)
        return object->Number();
    object->SetNumber(++m_numbers.objects);
    if (object->image)
        NumberOfShown(object->image, nullptr);
    const ObjectRecord record = ObjectRecord::Of(*object);
    CByteWriter& writer = Open().objects;
    WriteItem(writer, JournalItem::Object);
    writer.U32(object->Number());
    record.Write(writer);
    m_objects.insert_or_assign(object->Number(), record);
    return object->Number();
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

void CDocumentJournal::OnRecorded(const CEditCommand& command)
{
    m_isDirty = true;
    CByteWriter& writer = Open().items;
    WriteItem(writer, JournalItem::Command);
    WriteText(writer, command.Name());
    writer.U32(static_cast<uint32_t>(m_document.History().UndoList().size()));
    CPartsWriter parts(*this, writer);
    command.VisitParts(parts);
    writer.U8(static_cast<uint8_t>(CommandPart::End));
}

void CDocumentJournal::OnHistoryMoved(HistoryMove move)
{
    m_isDirty = true;
    constexpr JournalItem kItems[] = {JournalItem::Undone, JournalItem::Redone, JournalItem::Withdrawn};
    WriteItem(Open().items, kItems[static_cast<size_t>(move)]);
}

void CDocumentJournal::WriteList()
{
    std::vector<uint32_t> list;
    for (const Ref<CPicObject>& object : m_document.Canvas().objects) {
        list.push_back(NumberOf(object));
        if (object->image)
            NumberOfShown(object->image, nullptr);
        const ObjectRecord record = ObjectRecord::Of(*object);
        ObjectRecord& written = m_objects[object->Number()];
        if (record == written)
            continue;
        WriteItem(Open().items, JournalItem::Object);
        Open().items.U32(object->Number());
        record.Write(Open().items);
        written = record;
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
    WriteSelections();
}

bool CDocumentJournal::Flush()
{
    if (!m_isDirty)
        return false;
    WriteDifferences();
    m_isDirty = false;
    if (m_entries.empty() || m_entries.back().isComplete)
        return false;
    m_entries.back().isComplete = true;
    return true;
}

void CDocumentJournal::OnPixelsWillChange(CRasterImage& image, int top, int bottom)
{
    for (Entry& entry : m_entries) {
        for (Capture& capture : entry.captures) {
            if (capture.pixels.Image() == &image)
                capture.pixels.TakeRows(top, bottom);
        }
    }
}

void CDocumentJournal::StopWatching(CRasterImage& image)
{
    const bool isCaptured = std::ranges::any_of(m_entries, [&](const Entry& entry) {
        return std::ranges::any_of(entry.captures,
                                   [&](const Capture& capture) { return capture.pixels.Image() == &image; });
    });
    if (!isCaptured)
        image.SetWatcher(nullptr);
}

void CDocumentJournal::Hand(std::span<const uint8_t> bytes)
{
    while (!bytes.empty()) {
        const size_t count = std::min(bytes.size(), kJournalPiece - m_piece.size());
        m_piece.insert(m_piece.end(), bytes.begin(), bytes.begin() + static_cast<ptrdiff_t>(count));
        bytes = bytes.subspan(count);
        if (m_piece.size() == kJournalPiece)
            HandPiece(EntryEnd::No);
    }
}

void CDocumentJournal::HandPiece(EntryEnd end)
{
    m_writer.Write(m_target, std::exchange(m_piece, {}), end);
    if (end == EntryEnd::No)
        m_piece.reserve(kJournalPiece);
}

void CDocumentJournal::HandStep()
{
    Entry& entry = m_entries.front();
    if (entry.captures.empty()) {
        Hand(entry.objects.Collected());
        Hand(entry.items.Collected());
        HandPiece(EntryEnd::Yes);
        m_entries.pop_front();
        return;
    }
    Capture& capture = entry.captures.front();
    Hand(std::exchange(capture.head, {}));
    capture.pixels.Advance([this](std::span<const uint8_t> bytes) { Hand(bytes); });
    if (!capture.pixels.IsDone())
        return;
    CByteWriter end;
    end.U32(kEndOfRuns);
    end.U32(0);
    Hand(end.Collected());
    const Ref<CRasterImage> image = capture.pixels.Image();
    entry.captures.pop_front();
    StopWatching(*image);
}

bool CDocumentJournal::Work(std::chrono::steady_clock::time_point end)
{
    while (!m_entries.empty() && (m_entries.front().isComplete || !m_entries.front().captures.empty())) {
        if (m_writer.WaitingBytes() > kMostWaitingBytes)
            return true;
        HandStep();
        if (std::chrono::steady_clock::now() >= end)
            return true;
    }
    return false;
}

void CDocumentJournal::Finish()
{
    Flush();
    while (!m_entries.empty())
        HandStep();
}
