// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/FilePreview.h"

#include "fileio/AnimationFrames.h"
#include "fileio/QuietServices.h"
#include "fileio/StoredDepth.h"
#include "model/Compositing.h"
#include "platform/codec/AlphaBytes.h"
#include "platform/transform/Scale.h"

#include <algorithm>
#include <utility>

namespace {

CPackedDib ReducedToBox(const CPackedDib& picture, Size box)
{
    if (picture.Width() <= box.width && picture.Height() <= box.height)
        return picture.Duplicate();
    const double scale =
        std::min(double{1} * box.width / picture.Width(), double{1} * box.height / picture.Height());
    const auto side = [&](int length) { return std::max(1, static_cast<int>(length * scale)); };
    return Scale(picture, side(picture.Width()), side(picture.Height()));
}

const CPicObject* LargestObject(const CObjectCanvas& canvas)
{
    const CPicObject* largest = nullptr;
    int64_t most = 0;
    for (const Ref<CPicObject>& object : canvas.objects) {
        const Rect rect = object->Rectangle();
        const int64_t pixels = int64_t{rect.Width()} * rect.Height();
        if (pixels > most)
            largest = object.Get();
        most = std::max(most, pixels);
    }
    return largest;
}

/// The way of all formats without a quicker one of their own.
bool PreviewWhole(CPreviewCollector& collector, const std::filesystem::path& path, const FormatRow& format)
{
    CQuietServices quiet{CSettings()};
    CObjectCanvas canvas;
    if (!format.read(canvas, path, quiet.Services()) || canvas.objects.IsEmpty())
        return false;
    FilePreview& preview = collector.Preview();
    preview.size = canvas.Size();
    preview.frameDelay = canvas.frameDelay;
    if (format.contents == FileContents::Frames) {
        const CAnimationFrames frames(canvas);
        size_t index = 0;
        while (index < frames.Count() && collector.Take(frames.Frame(index)))
            ++index;
    } else if (format.contents == FileContents::Images) {
        if (const CPicObject* largest = LargestObject(canvas))
            collector.Take(largest->image->Dib());
    } else {
        collector.Take(Flatten(canvas));
    }
    preview.parts = canvas.objects.Count();
    return true;
}

} // namespace

bool CPreviewCollector::Take(const CPackedDib& picture)
{
    if (picture.IsEmpty() || m_stop.stop_requested())
        return false;
    CPackedDib reduced = ReducedToBox(picture, m_box);
    if (reduced.IsEmpty())
        return false;
    m_preview.isOpaque = m_preview.isOpaque && IsOpaque(picture);
    m_preview.pictures.push_back(std::move(reduced));
    m_preview.parts = m_preview.pictures.size();
    m_pixels += int64_t{picture.Width()} * picture.Height();
    return m_pixels < kMostPreviewPixels && m_preview.pictures.size() < kMostPreviewFrames;
}

FilePreview ReadFilePreview(const std::filesystem::path& path, Size box, std::stop_token stop)
{
    FilePreview preview;
    preview.format = FindFormat(path);
    std::error_code error;
    preview.fileBytes = std::filesystem::file_size(path, error);
    if (preview.format == nullptr) {
        preview.failure = PreviewFailure::UnknownFormat;
        return preview;
    }
    if (error || stop.stop_requested())
        return preview;
    const bool readsAll = !preview.format->previewsBeginning;
    if (readsAll && preview.fileBytes > static_cast<uint64_t>(kMostPreviewBytes)) {
        preview.failure = PreviewFailure::TooLong;
        return preview;
    }
    preview.depth = StoredDepth(*preview.format, path);
    CPreviewCollector collector(preview, box, std::move(stop));
    const bool isRead = preview.format->preview != nullptr ? preview.format->preview(collector, path)
                                                           : PreviewWhole(collector, path, *preview.format);
    if (isRead && !preview.pictures.empty())
        preview.failure = PreviewFailure::None;
    return preview;
}
