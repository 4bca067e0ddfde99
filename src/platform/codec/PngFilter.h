// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

/// Filter types of a PNG row, as stored in front of it.
enum class PngFilter : uint8_t { None, Sub, Up, Average, Paeth };
inline constexpr size_t kPngFilters = 5;

/// Turns `width` pixels blue, green, red, alpha into red, green, blue (3 channels) or red, green, blue,
/// alpha (4 channels).
void PackPngRow(const uint8_t* pixels, int width, int channels, uint8_t* packed);

/// Filters one row of `bytes` bytes in each of the ways but None. `row` and `above` must be preceded by
/// `bytesPerPixel` readable bytes of 0; above the top row lies a row of 0. Each of `filtered[1]` to
/// `filtered[4]` has room for `bytes` bytes. costs[f] is the sum of the absolute values of the bytes,
/// taken as signed, that filter f leaves.
void FilterPngRow(const uint8_t* row, const uint8_t* above, size_t bytes, size_t bytesPerPixel,
                  uint8_t* const (&filtered)[kPngFilters], uint64_t (&costs)[kPngFilters]);

/// Undoes the filter of one row: `stored` holds `width` pixels of 3 or 4 channels behind their filter type,
/// with 4 more readable bytes behind them; `above` is the row above as it came out of here, or zeroes. Writes
/// 32-bit pixels blue, green, red, alpha; without a stored alpha it is 255.
void UnfilterPngRow(PngFilter filter, const uint8_t* stored, const uint8_t* above, int width, int channels,
                    uint8_t* pixels);
