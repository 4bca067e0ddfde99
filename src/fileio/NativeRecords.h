// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/ObjectCanvas.h"
#include "platform/Limits.h"
#include "platform/io/ByteReader.h"

#include <array>
#include <cstddef>
#include <cstdint>

/// The parts of the native file, for who writes one, reads one, or saves what can be saved of one.

inline constexpr size_t kNativeHeaderBytes = 36;
inline constexpr size_t kNativeRecordBytes = 76;
inline constexpr size_t kNativeNameBytes = 48;

/// Where an object's packed pixels stand in the file.
struct NativePlace {
    uint32_t offset = 0;
    uint32_t length = 0;
};

/// One entry of the object table.
struct NativeRecord {
    uint32_t width = 0;
    uint32_t height = 0;
    std::array<char, kNativeNameBytes + 1> name{};
    int32_t x = 0;
    int32_t y = 0;
    uint8_t visible = 0;
    uint8_t locked = 0;
    uint8_t transparency = 0;
    NativePlace data;
};

/// The header. False when it is none, ends early, or states a canvas that is too large; what stands before
/// the fault has been taken over into `canvas` by then.
[[nodiscard]] bool ReadNativeHeader(CByteReader& reader, CObjectCanvas& canvas, uint32_t& objectCount);

/// The next entry of the table; false at the end of the file.
[[nodiscard]] bool ReadNativeRecord(CByteReader& reader, NativeRecord& record);

/// Fewest bytes that the pixels of such an object take in the file. Nothing that a file claims beyond its
/// length is worth asking memory for. UINT64_MAX for a size that cannot be held.
[[nodiscard]] uint64_t SmallestNativePixels(const NativeRecord& record);

/// The object of an entry, with its pixels; none when they are not there as a whole.
[[nodiscard]] Ref<CPicObject> ReadNativeObject(CByteReader reader, const NativeRecord& record);
