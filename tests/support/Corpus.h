// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// A row of the manifest of the collection of real files.
struct CorpusFile {
    std::string path;
    std::string format;
    int width = 0;
    int height = 0;
    std::string count;
    std::string expect;
    std::string truth;
    std::string compare;
    std::string notes;
};

/// The rows with one of the formats; none where the collection is absent.
std::vector<CorpusFile> CorpusFiles(const std::vector<std::string>& formats);

/// Compares 32-bit pictures the way the manifest's column says: channels, exact or le<n> or lossy.
testing::AssertionResult Matches(const CPackedDib& dib, const CPackedDib& truth, const std::string& compare);
