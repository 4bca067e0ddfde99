// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "journal/EntryFormat.h"
#include "model/ObjectCanvas.h"
#include "platform/region/Region.h"

#include <optional>
#include <string>

/// What a journal writes of an object, in the order of the members: u32, i32, i32, u8, u8, u8, i32, i32, u8,
/// text.
struct ObjectRecord {
    uint32_t picture = 0; ///< 0: none
    int32_t x = 0;
    int32_t y = 0;
    bool locked = false;
    bool visible = false;
    uint8_t transparency = 0;
    Size fallbackSize;
    bool selected = false;
    std::string name;
    friend bool operator==(const ObjectRecord&, const ObjectRecord&) = default;

    [[nodiscard]] static ObjectRecord Of(const CPicObject& object);
    void ApplyTo(CPicObject& object) const; ///< all but the picture
    void Write(CByteWriter& writer) const;
    [[nodiscard]] bool Read(CByteReader& reader);
};

/// The canvas without its objects: i32 width, height; u32 parameter, background index; u16 delay; u8
/// transparent index, control, descriptor byte.
struct CanvasRecord {
    Size size;
    uint32_t parameter = 0;
    uint32_t backgroundIndex = 0;
    uint16_t frameDelay = 0;
    uint8_t transparentIndex = 0;
    uint8_t graphicControlByte = 0;
    uint8_t imageDescriptorByte = 0;
    friend bool operator==(const CanvasRecord&, const CanvasRecord&) = default;

    [[nodiscard]] static CanvasRecord Of(const CObjectCanvas& canvas);
    void ApplyTo(CObjectCanvas& canvas) const;
    void Write(CByteWriter& writer) const;
    [[nodiscard]] bool Read(CByteReader& reader);
};

/// u32 count; i32 left, top, right, bottom each.
void WriteRegion(CByteWriter& writer, const CRegion& region);
[[nodiscard]] std::optional<CRegion> ReadRegion(CByteReader& reader);
