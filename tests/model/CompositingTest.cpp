// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/Compositing.h"

#include "model/DibOperations.h"
#include "support/TestPictures.h"
#include "support/VectorTargets.h"

#include <climits>

namespace reference {

using Blend = void (*)(uint8_t* destination, const uint8_t* source, int e);

void Weighted(uint8_t* destination, const uint8_t* source, int e)
{
    const int weight = e * 32768 / 255;
    for (int c = 0; c < 4 && e > 0; ++c) {
        const int mixed = 2 * ((destination[c] * (32768 - weight)) >> 16) + 2 * ((source[c] * weight) >> 16);
        destination[c] = e == 255 ? source[c] : static_cast<uint8_t>(std::min(255, mixed));
    }
}

void Over(uint8_t* destination, const uint8_t* source, int e)
{
    const int s = std::max(0, e);
    const int alpha = 255 - (255 - destination[3]) * (255 - s) / 255;
    for (int c = 0; c < 3; ++c) {
        int value = (255 - s) * destination[3] * destination[c] / 255 + s * source[c];
        value = alpha == 0 ? value : value / alpha;
        destination[c] = static_cast<uint8_t>(std::clamp(value, 0, 255));
    }
    destination[3] = static_cast<uint8_t>(alpha);
}

/// Visits every destination pixel and asks whether the picture's zoomed rectangle holds it.
void Draw(CPackedDib& destination, Point origin, const CPackedDib& source, Point at, int transparency,
          int zoom, Blend blend)
{
    const auto edge = [zoom](int64_t value) { return zoom < 0 ? value / -zoom : value * zoom; };
    const auto sample = [zoom](int64_t distance) { return zoom < 0 ? distance * -zoom : distance / zoom; };
    for (int y = 0; y < destination.Height(); ++y) {
        for (int x = 0; x < destination.Width(); ++x) {
            const int64_t px = int64_t{origin.x} + x;
            const int64_t py = int64_t{origin.y} + y;
            if (px < edge(at.x) || px >= edge(int64_t{at.x} + source.Width()) || py < edge(at.y) ||
                py >= edge(int64_t{at.y} + source.Height()))
                continue;
            const auto sx = sample(px - edge(at.x));
            const auto sy = static_cast<int>(sample(py - edge(at.y)));
            ASSERT_TRUE(sx < source.Width() && sy < source.Height());
            const uint8_t* pixel = source.Row(sy) + sx * 4;
            blend(destination.Row(y) + ptrdiff_t{x} * 4, pixel, pixel[3] - transparency);
        }
    }
}

} // namespace reference

namespace {

/// Random colours; of the alphas many are 0 and 255, in runs.
CPackedDib PictureWithRuns(int width, int height, uint32_t seed)
{
    CPackedDib dib = RandomDib(width, height, seed);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            uint8_t& alpha = dib.Row(y)[ptrdiff_t{x} * 4 + 3];
            const int kind = (x / 21 + y / 3) % 4;
            alpha = kind == 0 ? 0 : kind == 1 ? 255 : alpha;
        }
    }
    return dib;
}

struct Case {
    const char* name;
    Size source;
    Point at;
    int transparency;
    int zoom;
    Point origin = {0, 0};
};

constexpr Case kCases[] = {
    {"plain", {131, 37}, {3, 5}, 0, 1},
    {"covers the view", {300, 80}, {-40, -11}, 0, 1},
    {"one pixel", {1, 1}, {99, 3}, 0, 1},
    {"transparency", {131, 37}, {-1, 2}, 77, 1},
    {"fully transparent", {131, 37}, {0, 0}, 255, 1},
    {"all but transparent", {131, 37}, {0, 0}, 254, 1},
    {"outside", {20, 20}, {140, 0}, 0, 1},
    {"scrolled", {131, 37}, {-500, 700}, 1, 1, {-430, 690}},
    {"twice", {60, 20}, {1, 1}, 0, 2, {-1, -1}},
    {"three times, cut", {60, 20}, {-3, -2}, 9, 3, {1, 1}},
    {"eight times, scrolled", {60, 20}, {2, 3}, 0, 8, {21, 19}},
    {"half", {231, 91}, {-3, -5}, 0, -2, {-4, -4}},
    {"third, around zero", {301, 91}, {-100, -50}, 3, -3, {-30, -20}},
    {"eighth", {1023, 300}, {7, 9}, 0, -8},
    {"far left", {50, 50}, {INT_MIN, INT_MIN}, 0, 8, {INT_MIN, INT_MIN}},
    {"far right", {50, 50}, {INT_MAX, INT_MAX - 2}, 0, 1, {INT_MAX - 5, INT_MAX - 5}},
    {"far right, reduced", {50, 50}, {INT_MAX, INT_MAX}, 0, -2, {INT_MAX / 2 - 5, INT_MAX / 2 - 5}},
};

TEST(Compositing, WeightedAndOverEqualTheReferenceBitForBit)
{
    for (const Case& row : kCases) {
        SCOPED_TRACE(row.name);
        const CPackedDib source = PictureWithRuns(row.source.width, row.source.height, 1);
        const CPackedDib before = source.Duplicate();
        const auto transparency = static_cast<uint8_t>(row.transparency);
        CPackedDib expected = PictureWithRuns(140, 50, 2);
        CPackedDib drawn = expected.Duplicate();
        CompositeWeighted(ViewOf(drawn), row.origin, source, row.at, transparency, row.zoom);
        reference::Draw(expected, row.origin, source, row.at, transparency, row.zoom, reference::Weighted);
        EXPECT_TRUE(SameBytes(drawn, expected));
        CompositeOver(ViewOf(drawn), row.origin, source, row.at, transparency);
        reference::Draw(expected, row.origin, source, row.at, transparency, 1, reference::Over);
        EXPECT_TRUE(SameBytes(drawn, expected));
        EXPECT_TRUE(SameBytes(source, before));
    }
}

TEST(Compositing, IntegerPathWritesBlendsIntoTheSource)
{
    // e = 255, e = 254, e = 0 and below.
    CPackedDib source = DibOf(4, 1, {0xFF102030, 0xFE6496C8, 0x00123456, 0x80ABCDEF});
    CPackedDib opaque = DibOf(4, 1, {0xFF000000, 0xFFFF0000, 0xFF010203, 0xFF040506});
    CompositeInteger(ViewOf(opaque), {0, 0}, source, {0, 0}, 0, 1);
    EXPECT_TRUE(SameBytes(opaque, DibOf(4, 1, {0xFF102030, 0xFFFF0000, 0xFF010203, 0xFF040506})));
    // 0x64 = 100 towards 255 with 254/256, 150 towards 0, 200 towards 0; 0xAB = 171 towards 4 with 128/256.
    EXPECT_TRUE(SameBytes(source, DibOf(4, 1, {0xFF102030, 0xFEFD0101, 0x00123456, 0x8057697A})));

    CompositeInteger(ViewOf(opaque), {0, 0}, source, {0, 0}, 1, 2);
    EXPECT_EQ(PixelOf(opaque, 0, 0), 0xFF102030u) << "e = 254 must not reach the destination";
}

CObjectCanvas StackOf(std::initializer_list<Ref<CPicObject>> objects)
{
    CObjectCanvas canvas;
    for (const Ref<CPicObject>& object : objects)
        canvas.objects.Append(object);
    canvas.width = 150;
    canvas.height = 90;
    return canvas;
}

/// Objects of all kinds: varied, hidden, without a picture, opaque, transparent, apart.
CObjectCanvas VariedStack()
{
    const auto opaque = [](int width, int height, uint32_t seed) {
        CPackedDib dib = RandomDib(width, height, seed);
        SetAlphaInRect(dib, {0, 0, width, height}, 255);
        return dib;
    };
    CObjectCanvas canvas =
        StackOf({ObjectAt(PictureWithRuns(150, 90, 3), 0, 0), ObjectAt(opaque(140, 80, 4), 3, 4),
                 ObjectAt(opaque(300, 300, 5), -9, -9), MakeShared<CPicObject>(),
                 ObjectAt(PictureWithRuns(99, 99, 6), 30, 10), ObjectAt(opaque(90, 30, 7), 17, 33),
                 ObjectAt(opaque(100, 40, 8), 2, 40), ObjectAt(PictureWithRuns(40, 40, 9), 120, 70)});
    canvas.objects.At(2)->visible = false;
    canvas.objects.At(3)->visible = true;
    canvas.objects.At(5)->transparency = 40;
    canvas.objects.Insert(2, ObjectAt(PictureWithRuns(1100, 700, 15), -50, -20));
    return canvas;
}

TEST(Compositing, DisplayDrawsVisibleObjectsInOrderAndTheFloatingImageAboveItsObject)
{
    const CObjectCanvas canvas = VariedStack();
    CPackedDib floating = PictureWithRuns(80, 60, 10);
    for (const int zoom : {1, 2, 7, -2, -5}) {
        for (const size_t above : {size_t{1}, size_t{3}, size_t{8}, canvas.objects.Count()}) {
            SCOPED_TRACE(testing::Message() << "zoom " << zoom << " above " << above);
            const FloatingImage image{&floating,
                                      {40, 20},
                                      11,
                                      above < canvas.objects.Count() ? canvas.objects.At(above).Get()
                                                                     : nullptr};
            const Point origin{-3, 2};
            CPackedDib drawn = RandomDib(200, 120, 11);
            CPackedDib expected = drawn.Duplicate();
            CompositeForDisplay(ViewOf(drawn), origin, canvas, zoom, image);
            for (size_t i = 0; i <= canvas.objects.Count(); ++i) {
                if (i < canvas.objects.Count() && canvas.objects.At(i)->visible &&
                    canvas.objects.At(i)->image) {
                    const CPicObject& object = *canvas.objects.At(i);
                    reference::Draw(expected, origin, object.image->Dib(), {object.x, object.y},
                                    object.transparency, zoom, reference::Weighted);
                }
                if (i == above)
                    reference::Draw(expected, origin, floating, {40, 20}, 11, zoom, reference::Weighted);
            }
            EXPECT_TRUE(SameBytes(drawn, expected));
        }
    }
}

/// So many layers that nothing of the background comes through: with pixels of all kinds but few clear ones,
/// or with veils of one colour, where what lies below still decides the last bits.
CObjectCanvas DeepStack(bool isOfVeils)
{
    CObjectCanvas canvas = StackOf({});
    for (uint32_t i = 0; i < (isOfVeils ? 160 : 60); ++i) {
        CPackedDib picture = RandomDib(300, 260, isOfVeils ? 20 : 20 + i);
        for (size_t at = 3; at < picture.Bits().size(); at += 4) {
            uint8_t& alpha = picture.Bits()[at];
            alpha = static_cast<uint8_t>(isOfVeils ? 25 : 40 + alpha / 2 + (at / 4096 + i) % 3 * 44);
        }
        canvas.objects.Append(ObjectAt(std::move(picture), -static_cast<int>(i % 7), -3));
        canvas.objects.At(i)->transparency = i % 11 == 0 ? 9 : 0;
    }
    return canvas;
}

TEST(Compositing, DeepStacksEqualTheReferenceBitForBit)
{
    for (const bool isOfVeils : {false, true}) {
        const CObjectCanvas canvas = DeepStack(isOfVeils);
        for (const int zoom : {1, 3, -2}) {
            SCOPED_TRACE(testing::Message() << "zoom " << zoom << (isOfVeils ? " veils" : ""));
            const CPackedDib before = RandomDib(100, 40, 11);
            CPackedDib expected = before.Duplicate();
            for (const Ref<CPicObject>& object : canvas.objects)
                reference::Draw(expected, {0, 0}, object->image->Dib(), {object->x, object->y},
                                object->transparency, zoom, reference::Weighted);
            ForEachVectorTarget([&] {
                CPackedDib drawn = before.Duplicate();
                CompositeForDisplay(ViewOf(drawn), {0, 0}, canvas, zoom);
                EXPECT_TRUE(SameBytes(drawn, expected));
            });
        }
    }
}

TEST(Compositing, FlattenEqualsTheReferenceBitForBit)
{
    const CObjectCanvas canvas = VariedStack();
    const Rect rect{5, -4, 140, 100};
    CPackedDib expected = CPackedDib::CreateTransparent(rect.Width(), rect.Height());
    bool first = true;
    for (const Ref<CPicObject>& object : canvas.objects) {
        if (!object->visible || !object->image)
            continue;
        const auto copy = [](uint8_t* to, const uint8_t* from, int e) {
            std::copy_n(from, 3, to);
            to[3] = static_cast<uint8_t>(std::max(0, e));
        };
        reference::Draw(expected, rect.Corner(), object->image->Dib(), {object->x, object->y},
                        object->transparency, 1, first ? +copy : reference::Over);
        first = false;
    }
    EXPECT_TRUE(SameBytes(FlattenObjects(canvas.objects, rect), expected));
}

TEST(Compositing, FlattenOfOneObjectReproducesItAndOfNoneIsTransparent)
{
    CPackedDib picture = RandomDib(150, 90, 12);
    CObjectCanvas canvas = StackOf({ObjectAt(picture.Duplicate(), 0, 0)});
    EXPECT_TRUE(SameBytes(Flatten(canvas), picture));
    canvas.objects.At(0)->visible = false;
    EXPECT_TRUE(SameBytes(Flatten(canvas), CPackedDib::CreateTransparent(150, 90)));
    const CAllocationFailure outOfMemory(0);
    EXPECT_TRUE(Flatten(canvas).IsEmpty());
}

TEST(Compositing, ScaledDrawTakesTheNearestSourcePixel)
{
    struct Row {
        const char* name;
        Point at;
        uint16_t scale;
    };
    constexpr Row kRows[] = {{"thumbnail", {0, 0}, 9011},   {"as it is", {7, 3}, 32768},
                             {"enlarged", {-20, 4}, 65535}, {"cut", {-100, 300}, 12000},
                             {"tiny", {0, 0}, 1},           {"nothing", {0, 0}, 0},
                             {"far", {INT_MAX, INT_MIN}, 3}};
    const CPackedDib source = PictureWithRuns(211, 173, 13);
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.name);
        CPackedDib expected = RandomDib(64, 48, 14);
        CPackedDib drawn = expected.Duplicate();
        DrawScaledWeighted(ViewOf(drawn), source, row.at, row.scale);
        const auto edge = [&row](int64_t at) { return (at * row.scale) >> 15; };
        for (int64_t y = 0; y < 48; ++y) {
            for (int64_t x = 0; x < 64; ++x) {
                if (x < edge(row.at.x) || x >= edge(int64_t{row.at.x} + 211) || y < edge(row.at.y) ||
                    y >= edge(int64_t{row.at.y} + 173))
                    continue;
                const auto sx = std::clamp<int64_t>((x << 15) / row.scale - row.at.x, 0, 210);
                const auto sy = std::clamp<int64_t>((y << 15) / row.scale - row.at.y, 0, 172);
                const uint8_t* pixel = source.Row(static_cast<int>(sy)) + sx * 4;
                reference::Weighted(expected.Row(static_cast<int>(y)) + x * 4, pixel, pixel[3]);
            }
        }
        EXPECT_TRUE(SameBytes(drawn, expected));
    }
}

} // namespace
