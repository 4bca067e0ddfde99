// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/LoadedPicture.h"
#include "fileio/PsdReader.h"
#include "fileio/PsdWriter.h"
#include "support/Cases.h"
#include "support/Inputs.h"
#include "support/Scratch.h"

#include <cstdlib>

namespace {

constexpr int kLayers = 20;
constexpr int kLayerMegapixels = 4;

/// A file of as many layers, photos and flat art in turn.
const std::filesystem::path& LayeredFile()
{
    static const std::filesystem::path path = [] {
        CObjectCanvas canvas;
        canvas.width = PhotoPicture(kLayerMegapixels).Width();
        canvas.height = PhotoPicture(kLayerMegapixels).Height();
        for (int layer = 0; layer < kLayers; ++layer) {
            const auto& picture = layer % 2 == 0 ? PhotoPicture : FlatArtPicture;
            AppendPicture(canvas, picture(kLayerMegapixels).Duplicate());
        }
        std::filesystem::path file = ScratchFolder() / "layers.psd";
        if (!SavePsdFile(canvas, file, nullptr))
            std::abort();
        return file;
    }();
    return path;
}

CObjectCanvas Loaded()
{
    CObjectCanvas canvas;
    const std::optional<CHeapBlock> bytes = ReadFileBytes(LayeredFile());
    const std::optional<PsdFile> file = bytes ? ParsePsdFile(bytes->Bytes()) : std::nullopt;
    if (!file || !ReadPsdLayers(canvas, *file, nullptr))
        std::abort();
    return canvas;
}

void Add(const char* operation, const char* who, Threads threads, const std::function<void()>& run)
{
    AddCase({operation, "20x4MP", who, threads, kLayers * PixelsOf(kLayerMegapixels)}, [=] {
        static_cast<void>(LayeredFile());
        return run;
    });
}

const bool kRegistered = [] {
    const auto copy = [] { return ScratchFolder() / "copy.psd"; };
    for (const Threads threads : kBothThreads) {
        Add("psd/load", "ours", threads, [] { static_cast<void>(Loaded()); });
        Add("psd/load-save", "ours", threads, [=] {
            if (!SavePsdFile(Loaded(), copy(), nullptr))
                std::abort();
        });
    }
    // As many threads as it likes.
    Add("psd/load", "imagemagick", Threads::All,
        [] { RunCommand("convert '" + LayeredFile().string() + "' null:"); });
    Add("psd/load-save", "imagemagick", Threads::All, [=] {
        RunCommand("convert '" + LayeredFile().string() + "' -compress RLE '" + copy().string() + "'");
    });
    return true;
}();

} // namespace
