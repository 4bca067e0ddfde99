// SPDX-License-Identifier: GPL-3.0-or-later
#include "fuzz/FuzzTargets.h"

#include "cli/ScriptRunner.h"
#include "fileio/ClipboardStream.h"
#include "fileio/DocumentFiles.h"
#include "fileio/check/FileCheck.h"
#include "journal/Recovery.h"
#include "platform/io/AtomicFile.h"
#include "platform/io/ByteReader.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <sstream>

namespace {

namespace fs = std::filesystem;

/// A folder in memory, where there is one, that goes away with the process.
class CScratchFolder {
public:
    CScratchFolder()
    {
        std::error_code error;
        const fs::path memory = "/dev/shm";
        const fs::path base = fs::is_directory(memory, error) ? memory : fs::temp_directory_path();
        m_path = base / ("pixolune-fuzz-" + std::to_string(::getpid()));
        fs::create_directories(m_path, error);
    }
    ~CScratchFolder()
    {
        std::error_code error;
        fs::remove_all(m_path, error);
    }
    CScratchFolder(const CScratchFolder&) = delete;
    CScratchFolder& operator=(const CScratchFolder&) = delete;
    [[nodiscard]] const fs::path& Path() const { return m_path; }

private:
    fs::path m_path;
};

const CScratchFolder& ScratchFolder()
{
    static const CScratchFolder folder;
    return folder;
}

/// Checks and reads a file whose ending is the target's name.
void ReadFile(std::string_view name, std::span<const uint8_t> input)
{
    const fs::path path = ScratchFolder().Path() / ("input." + std::string(name));
    if (!WriteFileAtomically(path, input))
        return;
    std::ostringstream output;
    CSession session(output);
    static_cast<void>(CheckFile(path, session.App().Services()));
}

void ReadClipboard(std::string_view, std::span<const uint8_t> input)
{
    static_cast<void>(ParseClipboardStream(input));
}

/// Statements that reach files; a script of a stranger would write them anywhere.
constexpr std::array<std::string_view, 7> kFileStatements = {"open",     "add",     "save",   "export",
                                                             "document", "convert", "journal"};

/// Runs a script on small documents, without what reaches files.
void RunStatements(std::string_view, std::span<const uint8_t> input)
{
    constexpr size_t kMaxScriptBytes = 2000;
    std::string script(input.begin(),
                       input.begin() + static_cast<ptrdiff_t>(std::min(input.size(), kMaxScriptBytes)));
    std::istringstream lines(script);
    std::string kept = "new 40 30\n";
    for (std::string line; std::getline(lines, line);) {
        const bool reachesFiles = std::ranges::any_of(
            kFileStatements, [&](std::string_view word) { return line.find(word) != std::string::npos; });
        // Sizes are bounded by the memory, not by the time that a test has.
        const bool isLarge = std::ranges::any_of(line, [digits = 0](char c) mutable {
            digits = c >= '0' && c <= '9' ? digits + 1 : 0;
            return digits > 3;
        });
        if (!reachesFiles && !isLarge)
            kept += line + '\n';
    }
    std::istringstream statements(kept);
    std::ostringstream output;
    std::ostringstream errors;
    CSession session(output);
    static_cast<void>(RunScript(session, statements, {"script", true}, errors));
}

/// The journal with these entries, each of which has its size (u32) in front.
std::vector<uint8_t> SealEntries(std::span<const uint8_t> entries)
{
    std::vector<uint8_t> journal(JournalName().begin(), JournalName().end());
    CJournalPacker packer(0);
    CByteReader reader(entries);
    uint32_t size = 0;
    std::span<const uint8_t> entry;
    while (reader.ReadU32(size) && reader.ReadBytes(std::min<uint64_t>(size, reader.Remaining()), entry)) {
        while (entry.size() > kJournalPiece) {
            const auto record = packer.Pack(entry.first(kJournalPiece), EntryEnd::No);
            journal.insert(journal.end(), record.begin(), record.end());
            entry = entry.subspan(kJournalPiece);
        }
        const auto record = packer.Pack(entry, EntryEnd::Yes);
        journal.insert(journal.end(), record.begin(), record.end());
    }
    return journal;
}

/// Makes a document of a journal and walks through its history. What does not begin as journals do is taken
/// for entries that have not been sealed yet, since nobody guesses checksums.
void ReplayJournal(std::string_view, std::span<const uint8_t> input)
{
    const std::span<const uint8_t> name = JournalName();
    const bool isSealed = input.size() >= name.size() && std::ranges::equal(input.first(name.size()), name);
    std::ostringstream output;
    CSession session(output);
    const std::vector<uint8_t> sealed = isSealed ? std::vector<uint8_t>() : SealEntries(input);
    const auto recovered = RecoverDocument(isSealed ? input : sealed, session.App().Services());
    if (!recovered)
        return;
    while (recovered->document->Undo()) {
    }
    while (recovered->document->Redo()) {
    }
}

constexpr FuzzTarget kTargets[] = {
    {"gif", ReadFile},         {"ico", ReadFile},
    {"cur", ReadFile},         {"ani", ReadFile},
    {"avi", ReadFile},         {"psd", ReadFile},
    {"pxd", ReadFile},         {"bmp", ReadFile},
    {"jpg", ReadFile},         {"pcx", ReadFile},
    {"png", ReadFile},         {"tga", ReadFile},
    {"tif", ReadFile},         {"clipboard", ReadClipboard},
    {"script", RunStatements}, {"journal", ReplayJournal},
};

} // namespace

std::span<const FuzzTarget> FuzzTargets()
{
    return kTargets;
}

const FuzzTarget* FindFuzzTarget(std::string_view name)
{
    const auto* target = std::ranges::find(kTargets, name, &FuzzTarget::name);
    return target == std::end(kTargets) ? nullptr : target;
}
