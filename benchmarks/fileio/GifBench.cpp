// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/GifReader.h"
#include "fileio/GifWriter.h"
#include "support/Cases.h"
#include "support/GifPeer.h"
#include "support/Inputs.h"

#include <cstdlib>
#include <memory>
#include <utility>

namespace {

using Bytes = std::vector<uint8_t>;

constexpr int kMegapixelsCoded = 4;

/// A palette picture whose indices are the green bytes of a colour picture.
CPackedDib PaletteOf(const CPackedDib& dib)
{
    CPackedDib palette = CPackedDib::Create(dib.Width(), dib.Height(), 8);
    for (int y = 0; y < dib.Height(); ++y) {
        for (int x = 0; x < dib.Width(); ++x)
            palette.Row(y)[x] = dib.Row(y)[ptrdiff_t{x} * 4 + 1];
    }
    return palette;
}

Bytes Encode(const std::vector<CPackedDib>& frames)
{
    CGifWriter writer;
    writer.WriteHeader(frames.front().Size(), frames.front().ColourTable(), 256, 8, 0);
    for (const CPackedDib& frame : frames)
        writer.WriteFrame(frame, {}, {}, nullptr);
    writer.WriteTrailer();
    return writer.Bytes();
}

Bytes Encode(CPackedDib picture)
{
    std::vector<CPackedDib> frames;
    frames.push_back(std::move(picture));
    return Encode(frames);
}

/// All frames, as the program opens them.
void Decode(const Bytes& file)
{
    CGifReader reader;
    std::vector<GifFrame> frames;
    GifFrame frame;
    if (!reader.Open(file))
        std::abort();
    while (reader.ConsumedBytes() < reader.DataBytes()) {
        if (reader.NextFrame(frame))
            frames.push_back(std::move(frame));
    }
}

/// One byte a pixel, the top row first, as the peer wants them.
Bytes IndicesOf(const CPackedDib& picture)
{
    Bytes indices;
    for (int y = 0; y < picture.Height(); ++y)
        indices.insert(indices.end(), picture.Row(y), picture.Row(y) + picture.Width());
    return indices;
}

void AddCases(const std::string& kind, const CPackedDib& (*picture)(int))
{
    const auto add = [&](const char* operation, const char* who,
                         std::function<std::function<void()>()> prepare) {
        AddCase({std::string("gif/") + operation + "-" + kind, SizeName(kMegapixelsCoded), who, Threads::One,
                 PixelsOf(kMegapixelsCoded)},
                std::move(prepare));
    };
    add("encode", "ours", [=] {
        const auto palette = std::make_shared<CPackedDib>(PaletteOf(picture(kMegapixelsCoded)));
        return [=] {
            CGifWriter writer;
            writer.WriteHeader(palette->Size(), palette->ColourTable(), 256, 8, 0);
            writer.WriteFrame(*palette, {}, {}, nullptr);
            writer.WriteTrailer();
        };
    });
    add("encode", "giflib", [=] {
        const CPackedDib palette = PaletteOf(picture(kMegapixelsCoded));
        const auto indices = std::make_shared<Bytes>(IndicesOf(palette));
        return [=, width = palette.Width(), height = palette.Height()] {
            static_cast<void>(EncodeWithGiflib(*indices, width, height));
        };
    });
    add("decode", "ours", [=] {
        const auto file = std::make_shared<Bytes>(Encode(PaletteOf(picture(kMegapixelsCoded))));
        return [=] { Decode(*file); };
    });
    add("decode", "giflib", [=] {
        const auto file = std::make_shared<Bytes>(Encode(PaletteOf(picture(kMegapixelsCoded))));
        return [=] { DecodeWithGiflib(*file); };
    });
}

/// Frames of 640 x 480 that look at a photo from places apart.
Bytes Animation()
{
    constexpr int kFrames = 100;
    const CPackedDib& photo = PhotoPicture(kMegapixelsCoded);
    std::vector<CPackedDib> frames;
    for (int index = 0; index < kFrames; ++index)
        frames.push_back(PaletteOf(CutOut(photo, 10 * index, 12 * index, 640, 480)));
    return Encode(frames);
}

void AddAnimation(const char* who, void (*decode)(const Bytes&))
{
    AddCase({"gif/decode-animation", "100x640x480", who, Threads::One, 100 * 640 * 480}, [=] {
        const auto file = std::make_shared<Bytes>(Animation());
        return [=] { decode(*file); };
    });
}

const bool kRegistered = [] {
    AddAnimation("ours", Decode);
    AddAnimation("giflib", DecodeWithGiflib);
    AddCases("photo", PhotoPicture);
    AddCases("flat-art", FlatArtPicture);
    return true;
}();

} // namespace
