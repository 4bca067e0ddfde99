// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/PixelChanges.h"

#include "support/TestPictures.h"

#include <cstring>
#include <random>

namespace {

TEST(CPixelChanges, LeadFromEitherPictureToTheOtherPackedOrNot)
{
    struct Row {
        const char* name;
        int width, height, dots;
    };
    constexpr Row kCases[] = {{"single pixel", 1, 1, 1},
                              {"equal pictures", 9, 7, 0},
                              {"a dot here and there", 333, 41, 3},
                              {"more than a piece", 400, 300, 40000},
                              {"everything", 67, 31, 100000}};
    CZstdPacker packer;
    const auto unpacker = MakeShared<CZstdReader>();
    for (const Row& row : kCases) {
        SCOPED_TRACE(row.name);
        const CPackedDib a = UniformDib(row.width, row.height, 0xFF336699);
        CPackedDib b = a.Duplicate();
        std::mt19937 random(5);
        for (int dot = 0; dot < row.dots; ++dot)
            b.Row(static_cast<int>(random() % static_cast<uint32_t>(row.height)))[random() % b.Stride()] ^=
                85;
        CPixelChanges changes = ChangesBetween(a, b);
        EXPECT_EQ(changes.HeldBytes() == 0, row.dots == 0);
        EXPECT_LE(changes.HeldBytes(), static_cast<size_t>(row.dots) * (2 + 9) * 4);
        for (const bool isPacked : {false, true}) {
            CPackedDib picture = a.Duplicate();
            changes.Apply(picture);
            EXPECT_TRUE(SameBytes(picture, b)) << isPacked;
            changes.Apply(picture);
            EXPECT_TRUE(SameBytes(picture, a)) << isPacked;
            while (changes.PackPiece(packer, unpacker)) {
            }
        }
        EXPECT_TRUE(changes.IsPacked() || row.dots < 1000);
    }
}

TEST(CPixelChanges, JoinedLeadOverBothSteps)
{
    for (uint32_t seed = 1; seed <= 20; ++seed) {
        const CPackedDib a = RandomDib(50, 20, seed);
        CPackedDib b = a.Duplicate();
        b.Row(static_cast<int>(seed % 20))[seed * 3] ^= 1;
        CPackedDib c = b.Duplicate();
        c.Row(3)[seed * 5] ^= 1;
        // With an odd seed the first change is taken back.
        c.Row(static_cast<int>(seed % 20))[seed * 3] ^= static_cast<uint8_t>(seed % 2);
        CPackedDib picture = a.Duplicate();
        const CPixelChanges joined =
            std::move(*CPixelChanges::Joined(ChangesBetween(a, b), ChangesBetween(b, c)));
        joined.Apply(picture);
        EXPECT_TRUE(SameBytes(picture, c)) << seed;
        EXPECT_LE(joined.HeldBytes(), size_t{24});
    }
}

TEST(CPixelChanges, AreRefusedWhenMemoryRunsOutOrTheyGrowTooLarge)
{
    const CPackedDib a = RandomDib(40, 20, 1);
    const CPackedDib b = RandomDib(40, 20, 2);
    const auto words = [](const CPackedDib& dib) {
        return reinterpret_cast<const uint32_t*>(dib.Bits().data());
    };
    for (int64_t after = 0; after < 2; ++after) {
        const CAllocationFailure failure(after);
        CPixelChangesBuilder builder;
        EXPECT_FALSE(builder.Compare(0, words(a), words(b), 800) && builder.Finish()) << after;
    }
    CPixelChangesBuilder builder(100);
    EXPECT_TRUE(builder.Compare(0, words(a), words(b), 20));
    EXPECT_FALSE(builder.Compare(20, words(a) + 20, words(b) + 20, 20));
}

} // namespace
