// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/AnimationExport.h"

#include "fileio/GifPlayback.h"
#include "platform/codec/Image.h"
#include "platform/codec/PngChunk.h"
#include "support/TestDocument.h"
#include "support/TestFiles.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <random>

namespace {

using Bytes = std::vector<uint8_t>;

/// A document whose frames are painted by `paint`, pixel by pixel, as 0xAARRGGBB.
struct Animation : TestDocument {
    Animation(int width, int height, int frames, const std::function<uint32_t(int, int, int)>& paint)
    {
        doc.Canvas().width = width;
        doc.Canvas().height = height;
        for (int frame = 0; frame < frames; ++frame) {
            CPackedDib dib = CPackedDib::CreateTransparent(width, height);
            for (int y = 0; y < height; ++y) {
                for (int x = 0; x < width; ++x) {
                    const uint32_t pixel = paint(frame, x, y);
                    std::memcpy(dib.Row(y) + ptrdiff_t{x} * 4, &pixel, 4);
                }
            }
            Add(std::move(dib), 0, 0);
        }
    }
};

/// What the screen of a GIF shows, frame by frame, and where its images lie.
struct Played {
    std::vector<CPackedDib> screens;
    std::vector<Rect> images;
    std::vector<int> delays;
};

Played Play(const Bytes& file)
{
    Played played;
    CGifReader reader;
    EXPECT_TRUE(reader.Open(file));
    CGifPlayback playback(reader.ScreenSize());
    GifFrame frame;
    while (reader.ConsumedBytes() < reader.DataBytes()) {
        if (!reader.NextFrame(frame))
            continue;
        const bool isCleared = (frame.graphicControlByte >> 2 & 7) == 2;
        EXPECT_TRUE(!isCleared || (frame.graphicControlByte & 1) != 0)
            << "some clear to the background colour";
        EXPECT_TRUE(playback.Advance(frame));
        played.screens.push_back(playback.Screen().Duplicate());
        played.images.push_back(Rect::At(frame.position, frame.dib.Size()));
        played.delays.push_back(frame.delay);
    }
    return played;
}

bool Contains(const Bytes& file, std::string_view text)
{
    return std::ranges::search(file, text, {}, [](uint8_t byte) { return static_cast<char>(byte); }).size() >
           0;
}

constexpr uint32_t kClear = 0;

/// A square that wanders over a transparent ground.
uint32_t Wandering(int frame, int x, int y)
{
    const bool isInside = x >= frame * 5 && x < frame * 5 + 8 && y >= frame * 2 && y < frame * 2 + 8;
    return isInside ? 0xFF000000U | static_cast<uint32_t>((x * 16) << 16 | (y * 16)) : kClear;
}

/// The same over a ground of stripes.
uint32_t OverStripes(int frame, int x, int y)
{
    const uint32_t square = Wandering(frame, x, y);
    return square != kClear ? square : y % 4 == 0 ? 0xFF00FF00 : 0xFF202020;
}

/// All of it comes and goes.
uint32_t Blinking(int frame, int /*x*/, int y)
{
    return frame % 2 == 0 ? 0xFF0000FF - static_cast<uint32_t>(y) : kClear;
}

uint32_t Noise(int frame, int x, int y)
{
    std::mt19937 random(static_cast<uint32_t>(frame * 10007 + y * 101 + x));
    return random() % 3 == 0 ? kClear : 0xFF000000 | static_cast<uint32_t>(random() % 6) * 0x203010;
}

uint32_t AllColours(int frame, int x, int y)
{
    return 0xFF000000 | static_cast<uint32_t>((y * 16 + x + frame) % 256) * 0x010203;
}

TEST(GifAnimation, IsReadBackFrameByFrame)
{
    struct Row {
        const char* name;
        int width, height, frames;
        uint32_t (*paint)(int, int, int);
        bool storesLess; ///< frames behind the first are smaller than the canvas
    };
    constexpr Row kRows[] = {{"on transparent ground", 40, 30, 6, Wandering, false},
                             {"on stripes", 40, 30, 6, OverStripes, true},
                             {"blinking", 7, 5, 4, Blinking, false},
                             {"noise with holes", 23, 11, 5, Noise, false},
                             {"every index is a colour", 16, 16, 3, AllColours, false},
                             {"nothing changes", 9, 9, 3, [](int, int, int) { return 0xFF445566U; }, true},
                             {"nothing there", 4, 4, 2, [](int, int, int) { return kClear; }, false},
                             {"one frame", 12, 3, 1, OverStripes, false}};
    CTemporaryFolder folder;
    const std::filesystem::path path = folder.File("a.gif");
    for (const Row& row : kRows) {
        Animation animation(row.width, row.height, row.frames, row.paint);
        const CAnimationFrames frames(animation.doc.Canvas());
        for (const AnimationPalette palette : {AnimationPalette::OneForAll, AnimationPalette::OnePerFrame}) {
            SCOPED_TRACE(std::string(row.name) + (palette == AnimationPalette::OneForAll ? " one" : " each"));
            ASSERT_TRUE(ExportAnimation(animation.doc, path, {0, 7, palette}));
            const Played played = Play(FileContents(path));
            ASSERT_EQ(played.screens.size(), frames.Count());
            for (size_t index = 0; index < frames.Count(); ++index) {
                ASSERT_TRUE(SameBytes(played.screens[index], frames.Frame(index))) << "frame " << index;
                EXPECT_EQ(played.delays[index], 7);
            }
            if (row.storesLess) {
                EXPECT_LT(played.images[1].Width(), row.width);
            }
        }
    }
}

TEST(GifAnimation, SaysHowOftenItPlays)
{
    Animation animation(4, 4, 2, Blinking);
    CTemporaryFolder folder;
    const std::filesystem::path path = folder.File("a.gif");
    const auto exported = [&](int plays) {
        AnimationOptions options;
        options.plays = plays;
        EXPECT_TRUE(ExportAnimation(animation.doc, path, options));
        return FileContents(path);
    };
    const std::string mark = "NETSCAPE2.0\x03\x01";
    EXPECT_TRUE(Contains(exported(0), mark + std::string("\0\0\0", 3)));
    EXPECT_TRUE(Contains(exported(300), mark + std::string("\x2B\x01\0", 3))) << "once, and 299 times more";
    EXPECT_FALSE(Contains(exported(1), mark));
}

TEST(GifAnimation, DithersWhatHasMoreColours)
{
    const auto smooth = [](int frame, int x, int y) {
        return 0xFF000000 | static_cast<uint32_t>(x * 4 << 16 | y * 4 << 8 | (frame * 40 + x + y));
    };
    Animation animation(64, 64, 3, smooth);
    CTemporaryFolder folder;
    const std::filesystem::path path = folder.File("a.gif");
    const CAnimationFrames frames(animation.doc.Canvas());
    for (const AnimationPalette palette : {AnimationPalette::OneForAll, AnimationPalette::OnePerFrame}) {
        ASSERT_TRUE(ExportAnimation(animation.doc, path, {0, 5, palette}));
        const Played played = Play(FileContents(path));
        ASSERT_EQ(played.screens.size(), 3u);
        for (size_t index = 0; index < 3; ++index) {
            const CPackedDib frame = frames.Frame(index);
            int64_t error = 0;
            int64_t sum = 0;
            for (size_t at = 0; at < frame.Bits().size(); ++at) {
                const int difference = frame.Bits()[at] - played.screens[index].Bits()[at];
                error += std::abs(difference);
                sum += difference;
            }
            const auto bytes = static_cast<int64_t>(frame.Bits().size());
            EXPECT_LT(error / bytes, 12) << "near the colours";
            EXPECT_LT(std::abs(sum) * 2, bytes) << "and on the average the same";
        }
    }
}

/// Frames of an animated PNG: each file's chunks, split at the frame controls, as pictures of their own.
struct ApngFrame {
    Rect rect;
    int delay = 0;
    CPackedDib picture;
};

uint32_t BigU32(const Bytes& file, size_t at)
{
    return uint32_t{file[at]} << 24 | uint32_t{file[at + 1]} << 16 | uint32_t{file[at + 2]} << 8 |
           file[at + 3];
}

std::vector<ApngFrame> ReadApng(const Bytes& file)
{
    std::vector<ApngFrame> frames;
    std::vector<Bytes> data;
    uint32_t sequence = 0;
    for (size_t at = 8; at < file.size();) {
        const uint32_t length = BigU32(file, at);
        const std::string name(file.begin() + static_cast<ptrdiff_t>(at) + 4,
                               file.begin() + static_cast<ptrdiff_t>(at) + 8);
        size_t content = at + 8;
        const size_t end = content + length;
        if (name == "fcTL" || name == "fdAT") {
            EXPECT_EQ(BigU32(file, content), sequence++);
        }
        if (name == "fcTL") {
            const auto value = [&](size_t index) {
                return static_cast<int>(BigU32(file, content + index * 4));
            };
            frames.push_back({Rect::At({value(3), value(4)}, {value(1), value(2)}),
                              file[content + 20] << 8 | file[content + 21],
                              {}});
            data.emplace_back();
            EXPECT_EQ(file[content + 22] << 8 | file[content + 23], 100);
        } else if (name == "IDAT" || name == "fdAT") {
            content += name == "fdAT" ? 4 : 0;
            data.back().insert(data.back().end(), file.begin() + static_cast<ptrdiff_t>(content),
                               file.begin() + static_cast<ptrdiff_t>(end));
        }
        at = end + 4;
    }
    for (size_t index = 0; index < frames.size(); ++index) {
        Bytes png(file.begin(), file.begin() + 33);
        Bytes header(png.begin() + 16, png.begin() + 29);
        StoreBigU32(static_cast<uint32_t>(frames[index].rect.Width()), header.data());
        StoreBigU32(static_cast<uint32_t>(frames[index].rect.Height()), header.data() + 4);
        png.resize(8);
        const auto sink = [&](std::span<const uint8_t> part) {
            png.insert(png.end(), part.begin(), part.end());
            return true;
        };
        PutPngChunk(sink, "IHDR", header);
        PutPngChunk(sink, "IDAT", data[index]);
        PutPngChunk(sink, "IEND", {});
        frames[index].picture = CImage::DecodePng(png, nullptr);
    }
    return frames;
}

TEST(ApngAnimation, KeepsEveryByteOfEveryFrame)
{
    constexpr uint32_t kHalf = 0x7F0000FF;
    const auto glass = [](int frame, int x, int y) {
        return x == frame ? kHalf - static_cast<uint32_t>(y) : kClear;
    };
    for (const auto& paint :
         std::initializer_list<std::function<uint32_t(int, int, int)>>{glass, Noise, OverStripes}) {
        Animation animation(40, 30, 5, paint);
        animation.doc.Canvas().objects.At(1)->visible = false;
        CTemporaryFolder folder;
        const std::filesystem::path path = folder.File("a.png");
        ASSERT_TRUE(ExportAnimation(animation.doc, path, {3, 12, AnimationPalette::OneForAll}));
        const Bytes file = FileContents(path);
        EXPECT_TRUE(Contains(file, std::string("acTL\0\0\0\4\0\0\0\3", 12)));
        const std::vector<ApngFrame> read = ReadApng(file);
        const CAnimationFrames frames(animation.doc.Canvas());
        ASSERT_EQ(read.size(), 4u) << "hidden objects are no frames";
        CPackedDib screen = CPackedDib::CreateTransparent(40, 30);
        for (size_t index = 0; index < read.size(); ++index) {
            const ApngFrame& frame = read[index];
            EXPECT_EQ(frame.delay, 12);
            ASSERT_EQ(frame.picture.Size(), (Size{frame.rect.Width(), frame.rect.Height()}));
            for (int y = 0; y < frame.rect.Height(); ++y)
                std::memcpy(screen.Row(frame.rect.top + y) + ptrdiff_t{frame.rect.left} * 4,
                            frame.picture.Row(y), static_cast<size_t>(frame.rect.Width()) * 4);
            ASSERT_TRUE(SameBytes(screen, frames.Frame(index))) << "frame " << index;
        }
        EXPECT_TRUE(SameBytes(CImage::LoadPNGFile(path, nullptr), frames.Frame(0))) << "for other programs";
    }
}

TEST(AnimationExport, RefusesWhatItCannotWrite)
{
    Animation animation(4, 4, 1, Blinking);
    CTemporaryFolder folder;
    const std::filesystem::path path = folder.File("a.gif");
    ASSERT_TRUE(ExportAnimation(animation.doc, path, {}));
    const Bytes before = FileContents(path);
    animation.doc.Canvas().objects.At(0)->visible = false;
    EXPECT_FALSE(ExportAnimation(animation.doc, path, {}));
    EXPECT_FALSE(ExportAnimation(animation.doc, folder.File("a.bmp"), {}));
    EXPECT_EQ(animation.ui.messages.size(), 2u);
    EXPECT_EQ(FileContents(path), before);
    EXPECT_FALSE(animation.doc.IsModified());
}

} // namespace
