// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/video/VideoLibrary.h"

#include <dlfcn.h>

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace {

/// The version that the program was compiled for: others lay out their structures differently.
const std::map<std::string_view, int> kVersions = {{"avutil", LIBAVUTIL_VERSION_MAJOR},
                                                   {"avcodec", LIBAVCODEC_VERSION_MAJOR},
                                                   {"avformat", LIBAVFORMAT_VERSION_MAJOR},
                                                   {"swscale", LIBSWSCALE_VERSION_MAJOR}};

/// The function's address, or none. Libraries stay loaded.
void* FindFunction(std::string_view library, const char* function)
{
    const std::string name = "lib" + std::string(library) + ".so." + std::to_string(kVersions.at(library));
    void* const handle = dlopen(name.c_str(), RTLD_LAZY | RTLD_LOCAL);
    return handle == nullptr ? nullptr : dlsym(handle, function);
}

std::optional<VideoLibrary> Load()
{
    VideoLibrary calls;
    bool complete = true;
    const auto find = [&complete](std::string_view library, const char* name, auto& function) {
        function = reinterpret_cast<std::remove_reference_t<decltype(function)>>(FindFunction(library, name));
        complete = complete && function != nullptr;
    };
#define PIXOLUNE_FIND_CALL(library, function) find(#library, #function, calls.function);
    PIXOLUNE_VIDEO_CALLS(PIXOLUNE_FIND_CALL)
#undef PIXOLUNE_FIND_CALL
    return complete ? std::optional(calls) : std::nullopt;
}

} // namespace

const VideoLibrary* LoadVideoLibrary()
{
    static const std::optional<VideoLibrary> library = Load();
    return library ? &*library : nullptr;
}
