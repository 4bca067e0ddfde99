// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/LibraryVersions.h"

#include "platform/video/VideoLibrary.h"

#include <hwy/highway.h>
#include <jconfig.h>
#include <libdeflate.h>
#include <libimagequant.h>
#include <oneapi/tbb/version.h>
#include <pixman.h>
#include <png.h>
#include <tiffio.h>

namespace {

#define PIXOLUNE_QUOTE_VALUE(value) #value
#define PIXOLUNE_QUOTE(macro) PIXOLUNE_QUOTE_VALUE(macro)

/// "LIBTIFF, Version 4.5.0" and a line on the copyright: the last word of the first line.
std::string TiffVersion()
{
    std::string_view text = TIFFGetVersion();
    text = text.substr(0, text.find('\n'));
    return std::string(text.substr(text.rfind(' ') + 1));
}

std::string VideoVersion()
{
    const VideoLibrary* video = LoadVideoLibrary();
    return video == nullptr ? std::string() : video->av_version_info();
}

} // namespace

std::string DottedVersion(int version)
{
    return std::to_string(version / 10000) + '.' + std::to_string(version / 100 % 100) + '.' +
           std::to_string(version % 100);
}

std::vector<LibraryVersion> LibraryVersions()
{
    return {
        {"FFmpeg", VideoVersion(), "GPL-2.0-or-later"},
        {"Highway", PIXOLUNE_QUOTE(HWY_MAJOR) "." PIXOLUNE_QUOTE(HWY_MINOR) "." PIXOLUNE_QUOTE(HWY_PATCH),
         "Apache-2.0"},
        {"libdeflate", LIBDEFLATE_VERSION_STRING, "MIT"},
        {"libimagequant", DottedVersion(liq_version()), "GPL-3.0-or-later"},
        {"libjpeg-turbo", PIXOLUNE_QUOTE(LIBJPEG_TURBO_VERSION), "BSD-3-Clause AND IJG"},
        {"libpng", png_get_libpng_ver(nullptr), "libpng-2.0"},
        {"libtiff", TiffVersion(), "libtiff"},
        {"oneTBB", TBB_runtime_version(), "Apache-2.0"},
        {"pixman", pixman_version_string(), "MIT"},
    };
}
