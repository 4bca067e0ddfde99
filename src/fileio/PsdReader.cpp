// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/PsdReader.h"

#include "fileio/LoadedPicture.h"
#include "fileio/PsdPixels.h"
#include "fileio/SinglePicture.h"
#include "platform/parallel/RowBands.h"
#include "platform/settings/Settings.h"

#include <algorithm>
#include <atomic>

namespace {

/// Multiplies the picture's alpha by the mask, which lies in the document as the layer does.
void ApplyMask(CPackedDib& dib, const PsdLayer& layer, const PsdPlane& samples)
{
    const PsdMask& mask = *layer.mask;
    for (int y = 0; y < dib.Height(); ++y) {
        uint8_t* pixel = dib.Row(y);
        const int maskY = layer.rect.top + y - mask.rect.top;
        for (int x = 0; x < dib.Width(); ++x, pixel += 4) {
            const int maskX = layer.rect.left + x - mask.rect.left;
            int value = mask.outside;
            if (maskX >= 0 && maskY >= 0 && maskX < mask.rect.Width() && maskY < mask.rect.Height())
                value = samples.Data()[size_t(maskY) * size_t(mask.rect.Width()) + size_t(maskX)];
            if (mask.isInverted)
                value = 255 - value;
            pixel[3] = static_cast<uint8_t>((pixel[3] * value + 127) / 255);
        }
    }
}

PsdPlane ReadChannel(const PsdHeader& header, const PsdChannel& channel, Size size)
{
    std::vector<PsdPlane> planes = ReadPsdPlanes(channel.data, header.depth, size.width, size.height, 1, 1);
    return planes.empty() ? PsdPlane() : std::move(planes.front());
}

CPackedDib ReadLayerPicture(const PsdHeader& header, const PsdLayer& layer)
{
    // The colours of the mode, alpha, the mask; of several channels of one number the last one counts.
    const auto alphaPlane = static_cast<size_t>(PsdColourChannels(header.mode));
    const size_t maskPlane = alphaPlane + 1;
    std::vector<const PsdChannel*> channels(maskPlane + 1);
    for (const PsdChannel& channel : layer.channels) {
        if (channel.number == kPsdAlphaChannel)
            channels[alphaPlane] = &channel;
        else if (channel.number == kPsdMaskChannel && layer.mask && !layer.mask->rect.IsEmpty())
            channels[maskPlane] = &channel;
        else if (channel.number >= 0 && static_cast<size_t>(channel.number) < alphaPlane)
            channels[static_cast<size_t>(channel.number)] = &channel;
    }
    std::vector<PsdPlane> planes(channels.size());
    std::atomic<bool> isWhole = true;
    ForRowBands(static_cast<int>(channels.size()), 1, [&](int begin, int end) {
        for (auto index = static_cast<size_t>(begin); index < static_cast<size_t>(end); ++index) {
            if (channels[index] == nullptr)
                continue;
            const Rect& rect = index == maskPlane ? layer.mask->rect : layer.rect;
            planes[index] = ReadChannel(header, *channels[index], {rect.Width(), rect.Height()});
            if (planes[index].IsEmpty())
                isWhole = false;
        }
    });
    if (!isWhole)
        return {};
    CPackedDib dib = ComposePsdPicture(header, std::span(planes).first(maskPlane), layer.rect.Width(),
                                       layer.rect.Height());
    const bool isMasked = layer.mask && !layer.mask->isDisabled;
    if (!dib.IsEmpty() && isMasked && (!planes[maskPlane].IsEmpty() || layer.mask->rect.IsEmpty()))
        ApplyMask(dib, layer, planes[maskPlane]);
    return dib;
}

/// The merged picture of a file is stored over white: takes the white out of the colours again.
void TakeOutWhite(CPackedDib& dib)
{
    for (int y = 0; y < dib.Height(); ++y) {
        uint8_t* pixel = dib.Row(y);
        for (int x = 0; x < dib.Width(); ++x, pixel += 4) {
            const int alpha = pixel[3];
            for (int channel = 0; alpha != 0 && alpha != 255 && channel < 3; ++channel) {
                const int colour = 255 - ((255 - pixel[channel]) * 255 + alpha / 2) / alpha;
                pixel[channel] = static_cast<uint8_t>(std::max(colour, 0));
            }
        }
    }
}

/// What a group does to the objects that came since its bottom mark.
void ApplyGroup(CObjectCanvas& canvas, size_t firstObject, const PsdLayer& group)
{
    for (size_t index = firstObject; index < canvas.objects.Count(); ++index) {
        CPicObject& object = *canvas.objects.At(index);
        object.visible = object.visible && group.isVisible;
        object.transparency = static_cast<uint8_t>(255 - (255 - object.transparency) * group.opacity / 255);
    }
}

/// Asks, if the settings want it, and says whether the layers become one picture.
bool WantsOnePicture(const PsdFile& file, AppServices& services)
{
    CSettings& settings = services.settings;
    if (settings.IsOn(Setting::ShowPSDOpenFashionTip)) {
        LayeredFileChoice choice{settings.Get(Setting::PSDOpenFashion) == 1, true, !HasSimpleLayers(file)};
        if (services.ui.ChooseLayeredFile(choice)) {
            settings.Set(Setting::PSDOpenFashion, choice.asOnePicture ? 1 : 0);
            settings.Set(Setting::ShowPSDOpenFashionTip, choice.showAgain ? 1 : 0);
        }
    }
    return settings.Get(Setting::PSDOpenFashion) == 1;
}

} // namespace

CPackedDib ReadPsdComposite(const PsdFile& file)
{
    const PsdHeader& header = file.header;
    const int colours = PsdColourChannels(header.mode);
    const int wanted = file.hasMergedAlpha ? std::min(colours + 1, header.channels) : colours;
    const std::vector<PsdPlane> planes =
        ReadPsdPlanes(file.merged, header.depth, header.width, header.height, header.channels, wanted);
    if (planes.empty())
        return {};
    CPackedDib dib = ComposePsdPicture(header, planes, header.width, header.height);
    if (!dib.IsEmpty() && wanted > colours)
        TakeOutWhite(dib);
    return dib;
}

bool ReadPsdLayers(CObjectCanvas& canvas, const PsdFile& file, IProgress* progress)
{
    canvas.width = file.header.width;
    canvas.height = file.header.height;
    std::vector<size_t> groups;
    int64_t pixels = 0;
    int done = 0;
    for (const PsdLayer& layer : file.layers) {
        if (layer.kind == PsdLayerKind::GroupBottom) {
            groups.push_back(canvas.objects.Count());
        } else if (layer.kind == PsdLayerKind::GroupTop && !groups.empty()) {
            ApplyGroup(canvas, groups.back(), layer);
            groups.pop_back();
        } else if (layer.kind == PsdLayerKind::Pixels && !layer.rect.IsEmpty()) {
            pixels += int64_t{layer.rect.Width()} * layer.rect.Height();
            CPackedDib dib = pixels <= kMaxLoadedPixels ? ReadLayerPicture(file.header, layer) : CPackedDib();
            if (dib.IsEmpty())
                return false;
            CPicObject& object = AppendPicture(canvas, std::move(dib), {layer.rect.left, layer.rect.top});
            object.image->name = layer.name;
            object.visible = layer.isVisible;
            object.transparency = static_cast<uint8_t>(255 - layer.opacity);
        }
        ++done;
        if (progress != nullptr)
            progress->SetPosition(done * 100 / static_cast<int>(file.layers.size()));
    }
    return true;
}

bool LoadPsdFile(CObjectCanvas& canvas, const std::filesystem::path& path, AppServices& services)
{
    const std::optional<CHeapBlock> bytes = ReadFileBytes(path);
    const std::optional<PsdFile> file = bytes ? ParsePsdFile(bytes->Bytes()) : std::nullopt;
    if (!file)
        return false;
    if (CountPsdPictures(*file) > 1 && !WantsOnePicture(*file, services))
        return ReadPsdLayers(canvas, *file, &services.ui);
    return AdoptSinglePicture(canvas, ReadPsdComposite(*file));
}
