// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/GifReader.h"
#include "fileio/GifWriter.h"
#include "support/Cases.h"
#include "support/GifPeer.h"
#include "support/Inputs.h"

#include <memory>

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

Bytes Encode(const CPackedDib& picture)
{
    CGifWriter writer;
    writer.WriteHeader(picture.Size(), picture.ColourTable(), 256, 8, 0);
    writer.WriteFrame(picture, {}, {}, nullptr);
    writer.WriteTrailer();
    return writer.Bytes();
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
        return [=] { static_cast<void>(Encode(*palette)); };
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
        return [=] {
            CGifReader reader;
            GifFrame frame;
            if (reader.Open(*file))
                static_cast<void>(reader.NextFrame(frame));
        };
    });
    add("decode", "giflib", [=] {
        const auto file = std::make_shared<Bytes>(Encode(PaletteOf(picture(kMegapixelsCoded))));
        return [=] { DecodeWithGiflib(*file); };
    });
}

const bool kRegistered = [] {
    AddCases("photo", PhotoPicture);
    AddCases("flat-art", FlatArtPicture);
    return true;
}();

} // namespace
