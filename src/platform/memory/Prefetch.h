// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <hwy/cache_control.h>

#include <cstddef>
#include <cstdint>

/// How far ahead of reading memory is asked for. Rows of neighbours in memory follow each other, so that
/// reaching past the end of a row is right as well; the processor's own prefetching stops at every page.
inline constexpr size_t kPrefetchBytes = 2048;

HWY_INLINE void Prefetch(const uint8_t* from, size_t bytes)
{
    constexpr size_t kCacheLine = 64;
    for (size_t at = 0; at < bytes; at += kCacheLine)
        hwy::Prefetch(from + at);
}

/// Asks for what comes kPrefetchBytes after `bytes` bytes that are being read.
HWY_INLINE void PrefetchBehind(const uint8_t* from, size_t bytes)
{
    Prefetch(from + kPrefetchBytes, bytes);
}
