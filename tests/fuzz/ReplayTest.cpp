// SPDX-License-Identifier: GPL-3.0-or-later
#include "fuzz/FuzzTargets.h"
#include "support/TestFiles.h"
#include "support/TestPictures.h"

#include <algorithm>
#include <random>

namespace {

namespace fs = std::filesystem;
using Bytes = std::vector<uint8_t>;

std::vector<fs::path> FilesIn(const fs::path& folder)
{
    std::vector<fs::path> files;
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, error))
        files.push_back(entry.path());
    std::ranges::sort(files);
    return files;
}

/// Inputs that once found a fault, or reach a corner that others do not.
TEST(Fuzz, StoredInputsComeBack)
{
    for (const FuzzTarget& target : FuzzTargets()) {
        for (const fs::path& file : FilesIn(fs::path(PIXOLUNE_FUZZ_INPUTS) / target.name)) {
            SCOPED_TRACE(file);
            target.run(target.name, FileContents(file));
        }
    }
}

/// Real files, cut and with bytes changed, the same ones on every run.
TEST(Fuzz, DamagedRealFilesComeBack)
{
    constexpr int kDamages = 12;
    constexpr size_t kMaxBytes = 200'000;
    std::mt19937 random(20260);
    for (const FuzzTarget& target : FuzzTargets()) {
        for (const fs::path& file : FilesIn(CorpusPath(std::string(target.name)))) {
            const Bytes whole = FileContents(file);
            if (whole.empty() || whole.size() > kMaxBytes)
                continue;
            SCOPED_TRACE(file);
            for (int damage = 0; damage < kDamages; ++damage) {
                Bytes bytes = whole;
                if (damage % 3 == 0)
                    bytes.resize(random() % bytes.size());
                // Most of what a reader believes stands in the first bytes.
                for (size_t change = 0; change <= random() % 4 && !bytes.empty(); ++change)
                    bytes[random() % (damage % 2 == 0 ? bytes.size() : std::min<size_t>(bytes.size(), 100))] =
                        static_cast<uint8_t>(random());
                target.run(target.name, bytes);
            }
        }
    }
}

} // namespace
