// SPDX-License-Identifier: GPL-3.0-or-later
#include "document/SizeEntry.h"

#include <gtest/gtest.h>

namespace {

constexpr auto kKeep = RatioChoice::Preserve;

TEST(SizeEntry, RangesFollowTheSizeOnEntry)
{
    const CSizeEntry entry({3000, 100});
    EXPECT_EQ(entry.PixelWidthRange().maximum, 3000);
    EXPECT_EQ(entry.PixelHeightRange().maximum, 2000);
    EXPECT_EQ(entry.PercentWidthRange().minimum, 1);
    EXPECT_EQ(entry.PercentWidthRange().maximum, 100);
    EXPECT_EQ(entry.PercentHeightRange().maximum, 2000);
    EXPECT_EQ(CSizeEntry({1, 7}).PercentWidthRange().maximum, 200000);
    EXPECT_EQ(CSizeEntry({1, 7}).PercentHeightRange().minimum, 15);
}

TEST(SizeEntry, ChangesCarryOver)
{
    CSizeEntry entry({200, 100});
    entry.SetPixelWidth(300, kKeep);
    EXPECT_EQ(entry.Percent(), (Size{150, 150}));
    EXPECT_EQ(entry.Pixels(), (Size{300, 150}));
    entry.SetPixelWidth(1, kKeep);
    EXPECT_EQ(entry.Percent(), (Size{1, 1})) << "never 0";
    EXPECT_EQ(entry.Pixels(), (Size{1, 1}));
    entry.SetPercentHeight(33, RatioChoice::Free);
    EXPECT_EQ(entry.Pixels(), (Size{1, 33}));
    entry.SetPercentHeight(1500, kKeep);
    EXPECT_EQ(entry.Percent(), (Size{1000, 1500})) << "each in its own range";
    EXPECT_EQ(entry.Pixels(), (Size{2000, 1500}));
}

} // namespace
