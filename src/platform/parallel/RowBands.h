// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

/// Calls `work(begin, end)` for bands of rows that together cover 0 to `rows`, each row once, and returns
/// when all are done. Bands run on several processors at once, so `work` may only write what belongs to its
/// own rows. A band has at least `smallestBand` rows (the only one may have fewer): choose it so that a band
/// is worth a fifth of a millisecond or more. Without rows nothing is called.
void ForRowBands(int rows, int smallestBand, const std::function<void(int begin, int end)>& work);

/// Smallest band of rows of `width` pixels when a processor handles `pixelsPerMicrosecond`.
[[nodiscard]] int BandRows(int width, int pixelsPerMicrosecond);
