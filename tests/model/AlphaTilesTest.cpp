// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/RasterImage.h"
#include "support/TestPictures.h"

#include <random>

namespace {

constexpr Size kPicture{75, 50};

AlphaRange RangeIn(CPackedDib& dib, const Rect& rect)
{
    return FindAlphaRange(ViewOf(dib).Part(rect));
}

/// Uniform areas that begin and end with tiles and elsewhere.
CPackedDib PictureWithAreas()
{
    CPackedDib dib = RandomDib(kPicture.width, kPicture.height, 1);
    for (int y = 0; y < kPicture.height; ++y) {
        for (int x = 0; x < kPicture.width; ++x) {
            if (x >= 16 && x < 64)
                dib.Row(y)[ptrdiff_t{x} * 4 + 3] = y < 35 ? 255 : 0;
        }
    }
    return dib;
}

TEST(AlphaTiles, BoundTheAlphasOfARectangleWhateverIsPaintedInside)
{
    std::mt19937 random(1);
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    CRasterImage image(PictureWithAreas(), "");
    for (int step = 0; step < 3000; ++step) {
        const Point corner{below(kPicture.width), below(kPicture.height)};
        const Rect rect =
            Rect::At(corner, {1 + below(kPicture.width - corner.x), 1 + below(kPicture.height - corner.y)});
        const AlphaRange real = RangeIn(image.AnnouncedDib(), rect);
        for (const UnknownTiles unknown : {UnknownTiles::Spare, UnknownTiles::Find}) {
            const AlphaRange told = image.Alphas().Within(rect, ViewOf(image.Dib()), unknown);
            ASSERT_LE(told.lowest, real.lowest);
            ASSERT_GE(told.highest, real.highest);
        }
        image.AnnounceChange(Rect::At(corner, {1, 1}));
        image.AnnouncedDib().Row(corner.y)[ptrdiff_t{corner.x} * 4 + 3] =
            static_cast<uint8_t>(below(2) * 255);
    }
}

TEST(AlphaTiles, AreExactForWholeTilesAndKnownOnceFound)
{
    CRasterImage image(PictureWithAreas(), "");
    const auto pixels = ViewOf(std::as_const(image).Dib());
    const Rect opaque{16, 0, 64, 32};
    EXPECT_EQ(image.Alphas().Within(opaque, pixels, UnknownTiles::Spare), AlphaRange());
    while (image.FindAlphas(std::chrono::steady_clock::now() + std::chrono::milliseconds(1))) {
    }
    EXPECT_EQ(image.Alphas().Within(opaque, pixels, UnknownTiles::Spare), (AlphaRange{255, 255}));
    EXPECT_EQ(image.Alphas().Within({20, 49, 50, 50}, pixels, UnknownTiles::Spare), (AlphaRange{0, 0}))
        << "the last row of tiles is lower than the others";
    EXPECT_EQ((AlphaRange{255, 255}.Less(40)), (AlphaRange{215, 215}));
    EXPECT_EQ((AlphaRange{3, 30}.Less(40)), (AlphaRange{0, 0}));

    image.Attach(CPackedDib::CreateTransparent(40, 40));
    EXPECT_EQ(image.Alphas().Within({16, 0, 40, 32}, ViewOf(image.Dib()), UnknownTiles::Find),
              (AlphaRange{0, 0}));
}

} // namespace
