// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/AviImport.h"
#include "support/Cases.h"
#include "support/Scratch.h"

#include <cstdlib>

namespace {

constexpr const char* kSeconds = "10";
constexpr double kPixels = 10 * 25 * 640.0 * 480.0;

/// A clip of 25 frames a second, 640 x 480: a slow zoom with fine detail everywhere.
std::filesystem::path Clip(const std::string& codec)
{
    const std::filesystem::path path = ScratchFolder() / (codec + ".avi");
    if (!std::filesystem::exists(path)) {
        RunCommand("ffmpeg -v error -f lavfi -i mandelbrot=size=640x480:rate=25 -t " + std::string(kSeconds) +
                   " -pix_fmt " + (codec == "mjpeg" ? "yuvj420p" : "yuv420p") + " -c:v " + codec +
                   " -q:v 3 '" + path.string() + "'");
    }
    return path;
}

void AddCodec(const std::string& codec)
{
    const auto add = [&](const char* who, Threads threads,
                         const std::function<void(const std::filesystem::path&)>& load) {
        AddCase({"video/load-" + codec, "10s-640x480", who, threads, kPixels}, [=] {
            const std::filesystem::path clip = Clip(codec);
            return [=] { load(clip); };
        });
    };
    const auto ours = [](const std::filesystem::path& clip) {
        CObjectCanvas canvas;
        if (!LoadAviFile(canvas, clip, nullptr) || canvas.objects.Count() != 250)
            std::abort();
    };
    for (const Threads threads : kBothThreads)
        add("ours", threads, ours);
    // The command line drops the frames: what storing them would cost it is not held against it.
    const auto command = [](const std::string& format) {
        return [format](const std::filesystem::path& clip) {
            RunCommand("ffmpeg -v error -threads 1 -filter_threads 1 -i '" + clip.string() + "'" + format +
                       " -f rawvideo -y /dev/null");
        };
    };
    add("ffmpeg-native", Threads::One, command(""));
    add("ffmpeg-bgra", Threads::One, command(" -pix_fmt bgra"));
}

const bool kRegistered = [] {
    AddCodec("mjpeg");
    AddCodec("mpeg4");
    return true;
}();

} // namespace
