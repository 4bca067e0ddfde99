// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/AnimationPreviews.h"

#include "fileio/AviImport.h"
#include "fileio/GifPlayback.h"
#include "fileio/PsdReader.h"
#include "platform/io/FileBytes.h"
#include "platform/video/VideoFile.h"

#include <algorithm>

bool PreviewGifFile(CPreviewCollector& collector, const std::filesystem::path& path)
{
    const std::optional<CHeapBlock> file = ReadFileBytes(path, kMostPreviewBytes);
    CGifReader reader;
    if (!file || !reader.Open(file->Bytes()))
        return false;
    FilePreview& preview = collector.Preview();
    preview.size = reader.ScreenSize();
    CGifPlayback playback(preview.size);
    GifFrame frame;
    bool isWanted = true;
    while (isWanted && reader.ConsumedBytes() < reader.DataBytes()) {
        if (!reader.NextFrame(frame))
            continue;
        if (preview.pictures.empty())
            preview.frameDelay = frame.delay;
        isWanted = playback.Advance(frame) && collector.Take(playback.Screen());
    }
    preview.hasMore = !isWanted && reader.NextFrame(frame);
    return true;
}

bool PreviewAviFile(CPreviewCollector& collector, const std::filesystem::path& path)
{
    FilePreview& preview = collector.Preview();
    const std::optional<AviHeader> header = ReadAviHeader(path);
    CVideoFile video;
    if (!header || !video.Open(path) || !video.Start())
        return false;
    preview.size = header->size;
    for (bool isWanted = true; isWanted;)
        isWanted = collector.Take(video.NextFrame());
    preview.frameDelay = FrameDelayOf(video.Rate());
    preview.parts = std::max<size_t>(preview.parts, header->frameCount);
    return true;
}

bool PreviewPsdFile(CPreviewCollector& collector, const std::filesystem::path& path)
{
    const std::optional<CHeapBlock> bytes = ReadFileBytes(path, kMostPreviewBytes);
    const std::optional<PsdFile> file = bytes ? ParsePsdFile(bytes->Bytes()) : std::nullopt;
    if (!file)
        return false;
    FilePreview& preview = collector.Preview();
    preview.size = {file->header.width, file->header.height};
    collector.Take(ReadPsdComposite(*file));
    preview.parts = std::max<size_t>(CountPsdPictures(*file), 1);
    return true;
}
