// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Corpus.h"

#include "support/TestPictures.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

std::filesystem::path CorpusPath(const std::string& relativePath)
{
    return std::filesystem::path(PIXOLUNE_CORPUS) / relativePath;
}

std::vector<CorpusFile> CorpusFiles(const std::vector<std::string>& formats)
{
    std::ifstream manifest(CorpusPath("manifest.tsv"));
    std::vector<CorpusFile> files;
    std::string line;
    while (std::getline(manifest, line)) {
        std::istringstream cells(line);
        std::string width;
        std::string height;
        std::string truthBy;
        std::string origin;
        std::string licence;
        CorpusFile file;
        for (std::string* cell : {&file.path, &file.format, &width, &height, &file.count, &file.expect,
                                  &file.truth, &file.compare, &truthBy, &origin, &licence, &file.notes})
            std::getline(cells, *cell, '\t');
        file.width = std::atoi(width.c_str());
        file.height = std::atoi(height.c_str());
        if (std::find(formats.begin(), formats.end(), file.format) != formats.end())
            files.push_back(file);
    }
    return files;
}

testing::AssertionResult Matches(const CPackedDib& dib, const CPackedDib& truth, const std::string& compare)
{
    if (dib.Size() != truth.Size() || dib.BitCount() != 32)
        return testing::AssertionFailure() << "other size";
    const bool isLossy = compare.find("lossy") != std::string::npos;
    const size_t bound = compare.find("le");
    const int limit = isLossy ? 16 : bound == std::string::npos ? 0 : compare[bound + 2] - '0';
    const int channels = compare.starts_with("RGBA") ? 4 : 3;
    int64_t above = 0;
    int64_t sum = 0;
    for (int y = 0; y < dib.Height(); ++y) {
        for (int x = 0; x < dib.Width(); ++x) {
            const uint8_t* got = dib.Row(y) + ptrdiff_t{x} * 4;
            const uint8_t* expected = truth.Row(y) + ptrdiff_t{x} * 4;
            const bool bothClear = channels == 4 && got[3] == 0 && expected[3] == 0;
            for (int channel = 0; channel < channels && !bothClear; ++channel) {
                const int difference = std::abs(int{got[channel]} - int{expected[channel]});
                sum += difference;
                above += difference > limit ? 1 : 0;
                if (difference > limit && !isLossy)
                    return testing::AssertionFailure()
                           << "x " << x << " y " << y << " channel " << channel << ": " << int{got[channel]}
                           << " for " << int{expected[channel]};
            }
        }
    }
    const int64_t samples = int64_t{dib.Width()} * dib.Height() * channels;
    if (sum > 2 * samples || above * 100 > samples)
        return testing::AssertionFailure()
               << "mean difference " << static_cast<double>(sum) / static_cast<double>(samples)
               << ", far off " << above << " of " << samples;
    return testing::AssertionSuccess();
}
