// SPDX-License-Identifier: GPL-3.0-or-later
#include "journal/Recovery.h"

#include "journal/RecoveredCommand.h"
#include "platform/io/FileBytes.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <set>

namespace {

constexpr size_t kWordBytes = sizeof(uint32_t);

/// A run of words of a picture's rows.
struct Run {
    uint32_t first = 0;
    std::span<const uint8_t> bytes;
};

/// Reads the next run; false when it does not fit into a picture of so many words. An empty one ends the
/// runs.
bool ReadRun(CByteReader& reader, size_t words, Run& run)
{
    uint32_t count = 0;
    if (!reader.ReadU32(run.first) || !reader.ReadU32(count))
        return false;
    if (run.first == kEndOfRuns)
        return count == 0 && reader.ReadBytes(0, run.bytes);
    return count != 0 && count <= words && run.first <= words - count &&
           reader.ReadBytes(uint64_t{count} * kWordBytes, run.bytes);
}

/// Applies the entries of a journal to a document one after another.
class CReplay {
public:
    CReplay(RecoveredDocument& result, CPixoluneDoc& document) : m_result(result), m_document(document) {}

    /// Whether entries that belong to the last one have not come.
    [[nodiscard]] bool HasMore() const { return m_hasMore; }
    /// False when the entry makes no sense. The document may then have been changed by a part of it.
    bool Apply(std::span<const uint8_t> entry)
    {
        CByteReader reader(entry);
        if (!m_hasMore)
            m_replaced.clear();
        m_hasMore = false;
        while (reader.Remaining() > 0) {
            uint8_t item = 0;
            if (!reader.ReadU8(item) || !ApplyItem(static_cast<JournalItem>(item), reader))
                return false;
        }
        return true;
    }

private:
    bool ApplyItem(JournalItem item, CByteReader& reader)
    {
        switch (item) {
        case JournalItem::Picture:
            return ApplyPicture(reader);
        case JournalItem::Version:
            return ApplyVersion(reader);
        case JournalItem::Object:
            return ApplyObject(reader);
        case JournalItem::Command:
            return ApplyCommand(reader);
        case JournalItem::Future:
            return ApplyFuture(reader);
        case JournalItem::Undone:
            return m_document.Undo();
        case JournalItem::Redone:
            return m_document.Redo();
        case JournalItem::Withdrawn:
            m_document.WithdrawNewest();
            return true;
        case JournalItem::List:
            return ReadList(reader, m_document.Canvas().objects);
        case JournalItem::Canvas:
            return ApplyCanvas(reader);
        case JournalItem::Document:
            return ApplyDocument(reader);
        case JournalItem::Selection:
            return ApplySelection(reader);
        case JournalItem::Names:
            return ApplyNames(reader);
        case JournalItem::More:
            m_hasMore = true;
            return true;
        }
        return false;
    }

    /// What stands in front of a picture's runs.
    struct PictureHead {
        uint32_t picture = 0;
        uint32_t version = 0;
        uint32_t base = 0;
        Size size;
    };
    bool ReadHead(CByteReader& reader, PictureHead& head)
    {
        if (!reader.ReadU32(head.picture) || !reader.ReadU32(head.version) || !reader.ReadU32(head.base) ||
            !reader.ReadI32(head.size.width) || !reader.ReadI32(head.size.height) || head.picture == 0 ||
            head.version == 0)
            return false;
        m_result.numbers.versions = std::max(m_result.numbers.versions, head.version);
        return true;
    }

    bool ApplyPicture(CByteReader& reader)
    {
        PictureHead head;
        if (!ReadHead(reader, head))
            return false;
        const auto& [number, version, base, size] = head;
        Ref<CRasterImage> image = Find(m_pictures, number);
        if (base != 0)
            return image && image->Version()->Number() == base && ApplyChanges(reader, image, version);
        CPackedDib dib;
        if (!ReadWhole(reader, size, dib))
            return false;
        if (!image) {
            image = MakeShared<CRasterImage>(std::move(dib), std::string());
            image->SetNumber(number);
            m_pictures[number] = image;
            m_result.numbers.pictures = std::max(m_result.numbers.pictures, number);
        } else {
            Remember(image, image->Keep(image->Exchange(std::move(dib))));
        }
        image->Version()->SetNumber(version);
        return true;
    }

    bool ApplyVersion(CByteReader& reader)
    {
        PictureHead head;
        const Ref<CRasterImage> image = ReadHead(reader, head) ? Find(m_pictures, head.picture) : nullptr;
        if (!image)
            return false;
        Ref<CPictureVersion> version;
        if (head.base == 0) {
            CPackedDib dib;
            if (!ReadWhole(reader, head.size, dib))
                return false;
            version = CPictureVersion::Whole(std::move(dib));
        } else {
            const Ref<CPictureVersion> base = FindVersion(image, head.base);
            std::optional<CPixelChanges> changes =
                base ? ReadDifferences(reader, PixelsBelow(*image, *base)) : std::nullopt;
            if (!changes)
                return false;
            version = CPictureVersion::Changed(std::move(*changes), base);
        }
        version->SetNumber(head.version);
        m_replaced.insert_or_assign(head.version, CSavedPicture(image, version));
        return true;
    }

    /// The version with the number that the picture shows or that has been told in this step.
    Ref<CPictureVersion> FindVersion(const Ref<CRasterImage>& image, uint32_t number) const
    {
        if (image->Version()->Number() == number)
            return image->Version();
        const auto saved = m_replaced.find(number);
        return saved != m_replaced.end() && saved->second.Image() == image ? saved->second.Version()
                                                                           : nullptr;
    }

    /// The pixels that all changes up to the version count from.
    static const CPackedDib& PixelsBelow(const CRasterImage& image, const CPictureVersion& version)
    {
        const CPictureVersion* root = &version;
        while (root->Kept() == CPictureVersion::Form::Changed)
            root = root->Base().Get();
        return root->Kept() == CPictureVersion::Form::Whole ? root->Picture() : image.Dib();
    }

    /// Runs of what is to be added to the words of `pixels`.
    static std::optional<CPixelChanges> ReadDifferences(CByteReader& reader, const CPackedDib& pixels)
    {
        const size_t count = pixels.IsEmpty() ? 0 : pixels.Bits().size() / kWordBytes;
        CPixelChangesBuilder builder;
        Run run;
        while (ReadRun(reader, count, run) && run.first != kEndOfRuns) {
            std::vector<uint32_t> words(run.bytes.size() / kWordBytes);
            std::memcpy(words.data(), run.bytes.data(), run.bytes.size());
            const std::vector<uint32_t> nothing(words.size());
            if (!builder.Add(run.first, words.data(), nothing.data(), words.size()))
                return std::nullopt;
        }
        return run.first == kEndOfRuns ? builder.Finish() : std::nullopt;
    }

    /// All pixels of a picture; of no picture when the width is below 0.
    static bool ReadWhole(CByteReader& reader, Size size, CPackedDib& dib)
    {
        const uint64_t words =
            size.width < 0 || size.height < 0
                ? 0
                : uint64_t{static_cast<uint32_t>(size.width)} * static_cast<uint32_t>(size.height);
        // The pixels must be there before there is memory for them.
        if (words > reader.Remaining() / kWordBytes)
            return false;
        if (size.width >= 0) {
            dib = CPackedDib::CreateTransparent(size.width, size.height);
            if (dib.IsEmpty())
                return false;
        }
        Run run;
        uint64_t given = 0;
        while (ReadRun(reader, words, run) && run.first != kEndOfRuns) {
            std::ranges::copy(run.bytes, dib.Bits().begin() + static_cast<ptrdiff_t>(run.first * kWordBytes));
            given += run.bytes.size() / kWordBytes;
        }
        return run.first == kEndOfRuns && given == words;
    }

    bool ApplyChanges(CByteReader& reader, const Ref<CRasterImage>& image, uint32_t version)
    {
        if (image->Dib().IsEmpty())
            return false;
        auto* const words = reinterpret_cast<uint32_t*>(image->MutableDib().Bits().data());
        const size_t count = image->Dib().Bits().size() / kWordBytes;
        CPixelChangesBuilder builder;
        Run run;
        while (ReadRun(reader, count, run) && run.first != kEndOfRuns) {
            std::vector<uint32_t> next(run.bytes.size() / kWordBytes);
            std::memcpy(next.data(), run.bytes.data(), run.bytes.size());
            if (!builder.Compare(run.first, words + run.first, next.data(), next.size()))
                return false;
            std::ranges::copy(next, words + run.first);
        }
        std::optional<CPixelChanges> changes = builder.Finish();
        if (run.first != kEndOfRuns || !changes)
            return false;
        Remember(image, image->Keep(std::move(*changes)));
        image->Version()->SetNumber(version);
        return true;
    }

    /// A version that a command of this entry may hold.
    void Remember(const Ref<CRasterImage>& image, const Ref<CPictureVersion>& version)
    {
        m_replaced.insert_or_assign(version->Number(), CSavedPicture(image, version));
    }

    bool ApplyObject(CByteReader& reader)
    {
        uint32_t number = 0;
        ObjectRecord record;
        if (!reader.ReadU32(number) || number == 0 || !record.Read(reader))
            return false;
        Ref<CPicObject>& object = m_objects[number];
        if (!object) {
            object = MakeShared<CPicObject>();
            object->SetNumber(number);
            m_result.numbers.objects = std::max(m_result.numbers.objects, number);
        }
        object->image = Find(m_pictures, record.picture);
        record.ApplyTo(*object);
        return record.picture == 0 || object->image;
    }

    bool ReadList(CByteReader& reader, CObjectList& list)
    {
        uint32_t count = 0;
        if (!reader.ReadU32(count) || count > reader.Remaining() / kWordBytes)
            return false;
        CObjectList objects;
        std::set<uint32_t> known;
        for (uint32_t i = 0; i < count; ++i) {
            uint32_t number = 0;
            if (!reader.ReadU32(number) || !Find(m_objects, number) || !known.insert(number).second)
                return false;
            objects.Append(Find(m_objects, number));
        }
        list = std::move(objects);
        return true;
    }

    bool ApplyCanvas(CByteReader& reader)
    {
        CanvasRecord record;
        if (!record.Read(reader))
            return false;
        record.ApplyTo(m_document.Canvas());
        return true;
    }

    bool ApplyDocument(CByteReader& reader)
    {
        uint8_t modified = 0;
        std::string path;
        std::string title;
        if (!reader.ReadU8(modified) || modified > 1 || !ReadText(reader, path) || !ReadText(reader, title))
            return false;
        m_document.SetPath(path);
        m_document.SetNewTitle(title);
        m_document.SetModified(modified != 0);
        return true;
    }

    bool ApplySelection(CByteReader& reader)
    {
        const Ref<CSelectionState> selection = ReadSelection(reader);
        std::optional<CRegion> region = selection ? ReadRegion(reader) : std::nullopt;
        if (!region)
            return false;
        selection->region = std::move(*region);
        return true;
    }

    /// The selection with the number that is read; they are numbered without a gap.
    Ref<CSelectionState> ReadSelection(CByteReader& reader)
    {
        uint32_t number = 0;
        std::vector<Ref<CSharedObj>>& selections = m_result.selections;
        if (!reader.ReadU32(number) || number == 0 || number > selections.size() + 1)
            return nullptr;
        if (number > selections.size()) {
            selections.emplace_back(MakeShared<CSelectionState>().Get());
            selections.back()->SetNumber(number);
            m_result.numbers.selections = number;
        }
        return Ref<CSelectionState>(static_cast<CSelectionState*>(selections[number - 1].Get()));
    }

    bool ApplyNames(CByteReader& reader)
    {
        uint32_t next = 0;
        if (!reader.ReadU32(next))
            return false;
        m_document.Services().names.GoOnFrom(next);
        return true;
    }

    bool ApplyCommand(CByteReader& reader)
    {
        std::string name;
        uint32_t length = 0;
        if (!ReadText(reader, name) || !reader.ReadU32(length) || length == 0 || length > INT32_MAX)
            return false;
        std::unique_ptr<CRecoveredCommand> command = ReadCommand(reader, std::move(name));
        if (!command)
            return false;
        // The list had so many commands afterwards; the oldest went where that is no more than before.
        m_document.Record(std::move(command), static_cast<int>(length) - 1);
        return true;
    }

    bool ApplyFuture(CByteReader& reader)
    {
        std::string name;
        std::unique_ptr<CRecoveredCommand> command =
            ReadText(reader, name) ? ReadCommand(reader, std::move(name)) : nullptr;
        if (!command)
            return false;
        m_document.AddUndone(std::move(command));
        return true;
    }

    /// None when a part makes no sense.
    std::unique_ptr<CRecoveredCommand> ReadCommand(CByteReader& reader, std::string name)
    {
        std::vector<CRecoveredCommand::Part> parts;
        for (bool isEnd = false; !isEnd;) {
            if (!ReadPart(reader, parts, isEnd))
                return nullptr;
        }
        return std::make_unique<CRecoveredCommand>(std::move(name), std::move(parts));
    }

    bool ReadPart(CByteReader& reader, std::vector<CRecoveredCommand::Part>& parts, bool& isEnd)
    {
        using Command = CRecoveredCommand;
        uint8_t kind = 0;
        if (!reader.ReadU8(kind))
            return false;
        switch (static_cast<CommandPart>(kind)) {
        case CommandPart::End:
            isEnd = true;
            return true;
        case CommandPart::Attribute: {
            uint8_t which = 0;
            Command::AttributePart part{ReadObject(reader), {}, 0};
            if (!part.object || !reader.ReadU8(which) || !reader.ReadI32(part.saved) ||
                which > static_cast<uint8_t>(ObjectAttribute::Transparency))
                return false;
            part.which = static_cast<ObjectAttribute>(which);
            parts.emplace_back(std::move(part));
            return true;
        }
        case CommandPart::Name: {
            Command::NamePart part{ReadObject(reader), {}};
            if (!part.object || !ReadText(reader, part.saved))
                return false;
            parts.emplace_back(std::move(part));
            return true;
        }
        case CommandPart::Picture:
            return ReadPicturePart(reader, parts);
        case CommandPart::List: {
            CObjectCanvas stored;
            CObjectList selection;
            uint8_t others = 0;
            if (!ReadList(reader, stored.objects) || !ReadList(reader, selection) || !reader.ReadU8(others) ||
                others > static_cast<uint8_t>(OtherFlags::Clear))
                return false;
            parts.emplace_back(
                Command::ListPart{CListExchange(std::move(stored.objects), std::move(selection)),
                                  static_cast<OtherFlags>(others)});
            return true;
        }
        case CommandPart::CanvasSize: {
            Size saved;
            if (!reader.ReadI32(saved.width) || !reader.ReadI32(saved.height))
                return false;
            parts.emplace_back(saved);
            return true;
        }
        case CommandPart::Selects: {
            Command::SelectsPart part{ReadObject(reader)};
            if (!part.object)
                return false;
            parts.emplace_back(std::move(part));
            return true;
        }
        case CommandPart::Selection: {
            Command::SelectionPart part{ReadSelection(reader), {}};
            std::optional<CRegion> region = part.selection ? ReadRegion(reader) : std::nullopt;
            if (!region)
                return false;
            part.saved = std::move(*region);
            parts.emplace_back(std::move(part));
            return true;
        }
        case CommandPart::SelectionMove: {
            Command::SelectionMovePart part{ReadSelection(reader), {}};
            if (!part.selection || !reader.ReadI32(part.distance.x) || !reader.ReadI32(part.distance.y))
                return false;
            parts.emplace_back(std::move(part));
            return true;
        }
        }
        return false;
    }

    bool ReadPicturePart(CByteReader& reader, std::vector<CRecoveredCommand::Part>& parts)
    {
        uint32_t picture = 0;
        uint32_t version = 0;
        if (!reader.ReadU32(picture) || !reader.ReadU32(version))
            return false;
        const auto saved = m_replaced.find(version);
        if (saved == m_replaced.end() || saved->second.Image() != Find(m_pictures, picture))
            return false;
        parts.emplace_back(saved->second);
        return true;
    }

    Ref<CPicObject> ReadObject(CByteReader& reader)
    {
        uint32_t number = 0;
        return reader.ReadU32(number) ? Find(m_objects, number) : nullptr;
    }

    template <typename T> static Ref<T> Find(const std::map<uint32_t, Ref<T>>& numbered, uint32_t number)
    {
        const auto found = numbered.find(number);
        return found == numbered.end() ? nullptr : found->second;
    }

    RecoveredDocument& m_result;
    CPixoluneDoc& m_document;
    std::map<uint32_t, Ref<CPicObject>> m_objects;
    std::map<uint32_t, Ref<CRasterImage>> m_pictures;
    std::map<uint32_t, CSavedPicture> m_replaced; ///< in this step
    bool m_hasMore = false;
};

} // namespace

Ref<CSelectionState> RecoveredDocument::Selection() const
{
    return selections.empty() ? nullptr
                              : Ref<CSelectionState>(static_cast<CSelectionState*>(selections.front().Get()));
}

std::optional<RecoveredDocument> RecoverDocument(std::span<const uint8_t> journal, AppServices& services)
{
    RecoveredDocument result;
    result.document = std::make_unique<CPixoluneDoc>(services);
    bool isCutOff = false;
    {
        CReplay replay(result, *result.document);
        result.extent =
            ReadJournal(journal, [&](std::span<const uint8_t> entry) { return replay.Apply(entry); });
        isCutOff = replay.HasMore();
    }
    if (result.extent.records == 0 || isCutOff)
        return std::nullopt;
    return result;
}

std::optional<RecoveredDocument> RecoverDocument(const std::filesystem::path& path, AppServices& services)
{
    const std::optional<CHeapBlock> file = ReadFileBytes(path, kMostJournalBytes);
    return file ? RecoverDocument(file->Bytes(), services) : std::nullopt;
}
