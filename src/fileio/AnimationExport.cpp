// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/AnimationExport.h"

#include "document/Refusal.h"
#include "fileio/ApngAnimation.h"
#include "fileio/GifAnimation.h"
#include "fileio/PathExtension.h"
#include "fileio/StatusText.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr AnimationFormatRow kRows[] = {
    {"GIF animation", "GIF", true, SaveGifAnimation},
    {"PNG animation", "PNG APNG", false, SaveApngAnimation},
};

} // namespace

AnimationOptions DefaultAnimationOptions(const CObjectCanvas& canvas)
{
    AnimationOptions options;
    if (canvas.frameDelay != 0)
        options.delay = canvas.frameDelay;
    return options;
}

std::span<const AnimationFormatRow> AnimationFormatTable()
{
    return kRows;
}

const AnimationFormatRow* FindAnimationFormat(const std::filesystem::path& path)
{
    const std::string extension = UpperCasedExtension(path);
    const auto* row = std::ranges::find_if(kRows, [&](const AnimationFormatRow& candidate) {
        return NamesExtension(candidate.extensions, extension);
    });
    return row == std::end(kRows) ? nullptr : row;
}

bool ExportAnimation(const CPixoluneDoc& document, const std::filesystem::path& path,
                     const AnimationOptions& options)
{
    AppServices& services = document.Services();
    const CFileStatus status(services.ui, Str::SavingFile, path);
    const AnimationFormatRow* format = FindAnimationFormat(path);
    const CAnimationFrames frames(document.Canvas());
    const bool isWritten =
        format != nullptr && frames.Count() > 0 && format->write(frames, path, options, &services.ui);
    return isWritten || RefuseFile(document, Str::SaveFileFailed, path);
}
