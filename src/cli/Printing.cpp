// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/Printing.h"

#include "cli/Quoting.h"

#include <span>
#include <sstream>

std::string CanvasLine(const CObjectCanvas& canvas)
{
    std::ostringstream line;
    line << "canvas " << canvas.width << ' ' << canvas.height << " parameter " << canvas.parameter
         << " background " << canvas.backgroundIndex << " delay " << canvas.frameDelay << " transparent "
         << int{canvas.transparentIndex} << " control " << int{canvas.graphicControlByte} << " descriptor "
         << int{canvas.imageDescriptorByte} << " objects " << canvas.objects.Count();
    return line.str();
}

std::string ObjectLine(size_t index, const CPicObject& object)
{
    const Size size = object.Size();
    std::ostringstream line;
    line << index << ' ' << object.x << ' ' << object.y << ' ' << size.width << ' ' << size.height
         << " visible=" << object.visible << " locked=" << object.locked
         << " selected=" << object.IsSelected() << " transparency=" << int{object.transparency} << ' '
         << Quoted(object.image ? object.image->name : std::string());
    return line.str();
}

std::string PixelLine(uint32_t pixel)
{
    std::ostringstream line;
    line << (pixel >> 16 & 0xFF) << ' ' << (pixel >> 8 & 0xFF) << ' ' << (pixel & 0xFF) << ' '
         << (pixel >> 24);
    return line.str();
}

uint64_t ChecksumOf(const CPixoluneDoc& document)
{
    uint64_t checksum = 14695981039346656037u;
    const auto add = [&](std::span<const uint8_t> bytes) {
        for (const uint8_t byte : bytes)
            checksum = (checksum ^ byte) * 1099511628211u;
    };
    const auto addText = [&](const std::string& text) {
        add({reinterpret_cast<const uint8_t*>(text.data()), text.size()});
    };
    addText(CanvasLine(document.Canvas()) + (document.IsModified() ? " modified" : ""));
    for (size_t index = 0; index < document.Canvas().objects.Count(); ++index) {
        const CPicObject& object = *document.Canvas().objects.At(index);
        addText(ObjectLine(index, object));
        if (object.image)
            add(object.image->Dib().Block());
    }
    return checksum;
}
