// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/codec/Orientation.h"

#include "support/TestPictures.h"

#include <string_view>

using namespace std::string_view_literals;

namespace {

Orientation OrientationIn(std::string_view segment)
{
    return ExifOrientation({reinterpret_cast<const uint8_t*>(segment.data()), segment.size()});
}

} // namespace

TEST(Orientation, IsFoundInEitherByteOrderAndNeverPastTheEnd)
{
    constexpr auto kLittle = "Exif\0\0II*\0\x08\0\0\0\x02\0"
                             "\x0f\x01\x02\0\x04\0\0\0abc\0"
                             "\x12\x01\x03\0\x01\0\0\0\x06\0\0\0"sv;
    constexpr auto kBig = "Exif\0\0MM\0*\0\0\0\x0a\xff\xff\0\x01\x01\x12\0\x03\0\0\0\x01\0\x08\0\0"sv;
    EXPECT_EQ(OrientationIn(kLittle), Orientation::RightTop);
    EXPECT_EQ(OrientationIn(kBig), Orientation::LeftBottom);
    for (size_t size = 0; size < kLittle.size(); ++size)
        EXPECT_EQ(OrientationIn(kLittle.substr(0, size)), Orientation::TopLeft);
    EXPECT_EQ(OrientationIn("Exif\0\0MM\0*\xff\xff\xff\xff"sv), Orientation::TopLeft);
    EXPECT_EQ(OrientationIn("Exif\0\0MM\0*\0\0\0\x08\0\x01\x01\x12\0\x03\0\0\0\x01\0\x09\0\0"sv),
              Orientation::TopLeft);
}

TEST(Orientation, EveryValueTurnsThePictureUpright)
{
    // The upright picture is 1 2 3 / 4 5 6; the rows are how each orientation stores it.
    struct Row {
        Orientation orientation;
        int width, height;
        std::initializer_list<uint32_t> stored;
    };
    const Row kCases[] = {{Orientation::TopLeft, 3, 2, {1, 2, 3, 4, 5, 6}},
                          {Orientation::TopRight, 3, 2, {3, 2, 1, 6, 5, 4}},
                          {Orientation::BottomRight, 3, 2, {6, 5, 4, 3, 2, 1}},
                          {Orientation::BottomLeft, 3, 2, {4, 5, 6, 1, 2, 3}},
                          {Orientation::LeftTop, 2, 3, {1, 4, 2, 5, 3, 6}},
                          {Orientation::RightTop, 2, 3, {3, 6, 2, 5, 1, 4}},
                          {Orientation::RightBottom, 2, 3, {6, 3, 5, 2, 4, 1}},
                          {Orientation::LeftBottom, 2, 3, {4, 1, 5, 2, 6, 3}}};
    for (const Row& row : kCases) {
        SCOPED_TRACE(static_cast<int>(row.orientation));
        EXPECT_TRUE(SameBytes(TurnUpright(DibOf(row.width, row.height, row.stored), row.orientation),
                              DibOf(3, 2, {1, 2, 3, 4, 5, 6})));
    }
}
