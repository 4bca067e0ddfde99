// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <libdeflate.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <span>

/// The eight bytes that begin a PNG file.
inline constexpr std::array<uint8_t, 8> kPngSignature = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};

inline void StoreBigU32(uint32_t value, uint8_t* out)
{
    for (int byte = 0; byte < 4; ++byte)
        out[byte] = static_cast<uint8_t>(value >> (24 - 8 * byte));
}

/// One chunk, its content in up to three parts, to `sink`, a function from bytes to success: its length, its
/// name, its content, and a checksum of name and content.
template <class Sink>
bool PutPngChunk(Sink&& sink, const char (&name)[5], std::span<const uint8_t> head,
                 std::span<const uint8_t> body = {}, std::span<const uint8_t> tail = {})
{
    using Bytes = std::span<const uint8_t>;
    std::array<uint8_t, 8> start = {};
    StoreBigU32(static_cast<uint32_t>(head.size() + body.size() + tail.size()), start.data());
    std::memcpy(start.data() + 4, name, 4);
    uint32_t check = libdeflate_crc32(0, start.data() + 4, 4);
    for (const Bytes part : {head, body, tail})
        check = part.empty() ? check : libdeflate_crc32(check, part.data(), part.size());
    std::array<uint8_t, 4> end = {};
    StoreBigU32(check, end.data());
    return sink(Bytes(start)) && sink(head) && sink(body) && sink(tail) && sink(Bytes(end));
}
