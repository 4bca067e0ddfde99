// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/PictureSnapshot.h"

#include "support/TestPictures.h"

#include <cstring>
#include <memory>
#include <random>

namespace {

constexpr int kWidth = 3 * CPictureSnapshot::kTileWidth + 5;
constexpr int kHeight = 2 * CPictureSnapshot::kTileHeight + 3;

Ref<CRasterImage> RandomImage(uint32_t seed)
{
    return MakeShared<CRasterImage>(RandomDib(kWidth, kHeight, seed), "picture");
}

testing::AssertionResult Shows(CPictureSnapshot& snapshot, const CPackedDib& picture, int top = 0)
{
    for (int y = top; y < picture.Height(); ++y) {
        if (std::memcmp(snapshot.Row(y), picture.Row(y), static_cast<size_t>(kWidth) * 4) != 0)
            return testing::AssertionFailure() << "row " << y;
    }
    return testing::AssertionSuccess();
}

TEST(CPictureSnapshot, ShowsThePictureOfItsTimeWhateverHappensToIt)
{
    std::mt19937 random(1);
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<uint32_t>(limit)); };
    for (uint32_t round = 1; round <= 40; ++round) {
        SCOPED_TRACE(round);
        const Ref<CRasterImage> image = RandomImage(round);
        struct Moment {
            CPackedDib picture;
            std::unique_ptr<CPictureSnapshot> snapshot;
            int first = 0;
        };
        std::vector<Moment> moments;
        for (uint32_t step = 0; step < 12; ++step) {
            moments.push_back({image->Dib().Duplicate(), std::make_unique<CPictureSnapshot>(image)});
            const Rect rect{below(kWidth), below(kHeight), kWidth - below(kWidth / 2),
                            kHeight - below(kHeight / 2)};
            image->AnnounceChange(rect);
            for (int y = rect.top; y < rect.bottom && rect.left < rect.right; ++y)
                std::memset(image->AnnouncedDib().Row(y) + ptrdiff_t{rect.left} * 4, static_cast<int>(step),
                            static_cast<size_t>(rect.Width()) * 4);
            Moment& forgetful = moments[static_cast<size_t>(below(static_cast<int>(moments.size())))];
            forgetful.first = std::max(forgetful.first, below(kHeight));
            forgetful.snapshot->ForgetAbove(forgetful.first);
        }
        image->Attach(RandomDib(7, 300, round)); // of another size
        image->AnnounceChange({0, 0, 7, 300});
        for (const Moment& moment : moments) {
            ASSERT_TRUE(moment.snapshot->IsIntact());
            ASSERT_TRUE(Shows(*moment.snapshot, moment.picture, moment.first));
        }
    }
}

TEST(CPictureSnapshot, CopiesOnlyTilesThatChange)
{
    const Ref<CRasterImage> image = RandomImage(1);
    CPictureSnapshot snapshot(image);
    image->AnnounceChange({CPictureSnapshot::kTileWidth, 0, CPictureSnapshot::kTileWidth + 1, 1});
    image->AnnounceChange({kWidth - 1, 0, kWidth, 1});
    std::vector<std::pair<int, size_t>> stretches;
    const auto note = [&](int x, std::span<const uint32_t> pixels) {
        stretches.emplace_back(x, pixels.size());
    };
    snapshot.ForEachCopied(CPictureSnapshot::kTileHeight - 1, note);
    snapshot.ForEachCopied(CPictureSnapshot::kTileHeight, note);
    EXPECT_EQ(stretches,
              (std::vector<std::pair<int, size_t>>{{CPictureSnapshot::kTileWidth, 64}, {kWidth - 5, 5}}));
}

TEST(CPictureSnapshot, OutlivesVersionsThatComeAndGo)
{
    std::mt19937 random(1);
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<uint32_t>(limit)); };
    for (uint32_t round = 1; round <= 40; ++round) {
        SCOPED_TRACE(round);
        const Ref<CRasterImage> image = RandomImage(round);
        std::vector<std::pair<CPackedDib, std::unique_ptr<CPictureSnapshot>>> moments;
        std::vector<Ref<CPictureVersion>> versions;
        for (uint32_t step = 0; step < 30; ++step) {
            moments.emplace_back(image->Dib().Duplicate(), std::make_unique<CPictureSnapshot>(image));
            const int choice = below(versions.empty() ? 2 : 5);
            if (choice == 0) {
                CPackedDib old = image->Exchange(RandomDib(kWidth, kHeight, 100 * round + step));
                versions.push_back(image->Keep(std::move(old)));
            } else if (choice == 1) {
                const int y = below(kHeight);
                image->AnnounceChange({0, y, kWidth, y + 1});
                image->AnnouncedDib().Row(y)[below(kWidth)] ^= 1;
                const auto words = [](const CPackedDib& dib) {
                    return reinterpret_cast<const uint32_t*>(dib.Bits().data());
                };
                CPixelChangesBuilder changes;
                ASSERT_TRUE(changes.Compare(0, words(image->Dib()), words(moments.back().first),
                                            size_t{kWidth} * kHeight));
                versions.push_back(image->Keep(std::move(*changes.Finish())));
            } else {
                Ref<CPictureVersion>& other =
                    versions[static_cast<size_t>(below(static_cast<int>(versions.size())))];
                other = image->Show(other);
            }
        }
        for (const auto& [picture, snapshot] : moments)
            ASSERT_TRUE(Shows(*snapshot, picture));
    }
}

TEST(CPictureSnapshot, CopiesNothingOfAPictureThatChangesHands)
{
    const Ref<CRasterImage> image = RandomImage(1);
    const CPackedDib before = image->Dib().Duplicate();
    CPictureSnapshot snapshot(image, 0);
    const Ref<CPictureVersion> kept = image->Keep(image->Exchange(RandomDib(kWidth, kHeight, 2)));
    image->AnnounceChange({0, 0, kWidth, kHeight}); // of another picture
    const Ref<CPictureVersion> other = image->Show(kept);
    EXPECT_TRUE(snapshot.IsIntact() && Shows(snapshot, before));
    static_cast<void>(image->Show(other));
    image->Attach({});
    EXPECT_TRUE(snapshot.IsIntact() && !snapshot.HasTiles() && Shows(snapshot, before));
}

TEST(CPictureSnapshot, SaysWhenItIsWorthNothing)
{
    const Ref<CRasterImage> image = RandomImage(1);
    const CPackedDib before = image->Dib().Duplicate();
    constexpr size_t kTile = size_t{CPictureSnapshot::kTileWidth} * CPictureSnapshot::kTileHeight * 4;
    CPictureSnapshot patient(image);
    CPictureSnapshot hasty(image, 2 * kTile);
    image->AnnounceChange({0, 0, 2 * CPictureSnapshot::kTileWidth, 1});
    EXPECT_TRUE(hasty.IsIntact());
    image->AnnounceChange({0, 0, kWidth, kHeight});
    EXPECT_FALSE(hasty.IsIntact());
    EXPECT_TRUE(patient.IsIntact() && Shows(patient, before));
    CPictureSnapshot poor(image);
    {
        const CAllocationFailure failure(0);
        image->AnnounceChange({0, 0, kWidth, 1});
    }
    EXPECT_FALSE(poor.IsIntact());
    EXPECT_TRUE(patient.IsIntact()) << "had what it needs";
}

} // namespace
