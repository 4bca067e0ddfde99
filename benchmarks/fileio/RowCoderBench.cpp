// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/PackedPixels.h"
#include "fileio/RowCoder.h"
#include "support/Cases.h"
#include "support/Inputs.h"
#include "support/TiffPackBits.h"

#include <memory>

namespace {

using Bytes = std::vector<uint8_t>;

constexpr int kMegapixelsCoded = 4;

/// All rows of all channels, one behind the other; the slack of each row is the next one.
void Encode(const ChannelPlanes& planes, Bytes& packed)
{
    const auto width = static_cast<size_t>(planes.width);
    size_t filled = 0;
    for (const Bytes& channel : planes.channels) {
        for (size_t row = 0; row < static_cast<size_t>(planes.height); ++row)
            filled += CompressRow(channel.data() + row * width, width, packed.data() + filled);
    }
}

Bytes PackedPixelsOf(const CPackedDib& dib)
{
    Bytes packed;
    static_cast<void>(PackPixels(dib, [&](std::span<const uint8_t> bytes) {
        packed.insert(packed.end(), bytes.begin(), bytes.end());
        return true;
    }));
    return packed;
}

void AddCases(const std::string& kind, const CPackedDib& (*picture)(int))
{
    const std::string size = SizeName(kMegapixelsCoded);
    const double pixels = PixelsOf(kMegapixelsCoded);
    const auto add = [&](const char* operation, const char* who,
                         std::function<std::function<void()>()> prepare) {
        AddCase({std::string("packbits/") + operation + "-" + kind, size, who, Threads::One, pixels},
                std::move(prepare));
    };
    add("encode", "ours", [=] {
        const auto planes = std::make_shared<ChannelPlanes>(PlanesOf(picture(kMegapixelsCoded)));
        for (Bytes& channel : planes->channels)
            channel.resize(channel.size() + kRowSlack);
        const auto packed = std::make_shared<Bytes>(8 * planes->channels[0].size() + kRowSlack);
        return [=] { Encode(*planes, *packed); };
    });
    add("encode", "libtiff", [=] {
        const auto planes = std::make_shared<ChannelPlanes>(PlanesOf(picture(kMegapixelsCoded)));
        return [=] { static_cast<void>(EncodeTiffPackBits(*planes)); };
    });
    add("decode", "ours", [=] {
        const CPackedDib& dib = picture(kMegapixelsCoded);
        const auto packed = std::make_shared<Bytes>(PackedPixelsOf(dib));
        const auto width = static_cast<size_t>(dib.Width());
        const size_t rows = 4 * static_cast<size_t>(dib.Height());
        const auto samples = std::make_shared<Bytes>(rows * width + kRowSlack);
        return [=] {
            std::span<const uint8_t> rest = *packed;
            for (size_t row = 0; row < rows; ++row)
                static_cast<void>(DecompressRow(rest, width, samples->data() + row * width));
        };
    });
    add("decode", "libtiff", [=] {
        const auto planes = std::make_shared<ChannelPlanes>(PlanesOf(picture(kMegapixelsCoded)));
        const auto file = std::make_shared<Bytes>(EncodeTiffPackBits(*planes));
        return [=] { DecodeTiffPackBits(*file, *planes); };
    });
    add("pack-picture", "ours", [=] {
        const CPackedDib& dib = picture(kMegapixelsCoded);
        return [&dib] { static_cast<void>(PackPixels(dib, [](std::span<const uint8_t>) { return true; })); };
    });
    add("unpack-picture", "ours", [=] {
        const CPackedDib& dib = picture(kMegapixelsCoded);
        const auto packed = std::make_shared<Bytes>(PackedPixelsOf(dib));
        const auto width = static_cast<uint32_t>(dib.Width());
        const auto height = static_cast<uint32_t>(dib.Height());
        return [=] {
            std::span<const uint8_t> rest = *packed;
            static_cast<void>(UnpackPixels(rest, width, height, 32));
        };
    });
}

const bool kRegistered = [] {
    AddCases("photo", PhotoPicture);
    AddCases("flat-art", FlatArtPicture);
    return true;
}();

} // namespace
