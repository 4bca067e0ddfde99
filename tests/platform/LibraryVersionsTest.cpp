// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/LibraryVersions.h"

#include <gtest/gtest.h>

TEST(LibraryVersions, AreNumbersAndNoNamesOfThem)
{
    for (const LibraryVersion& library : LibraryVersions()) {
        const bool isNumber = library.version.find_first_of("0123456789") != std::string::npos;
        EXPECT_TRUE(isNumber || library.version.empty()) << library.name << ": " << library.version;
    }
}
