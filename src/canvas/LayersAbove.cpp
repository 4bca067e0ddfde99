// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/LayersAbove.h"

#include "model/BlendBetween.h"
#include "platform/parallel/RowBands.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <iterator>

namespace {

/// Rows drawn on black and then on white while the layers' pixels are in the cache.
constexpr int kRows = 16;
constexpr int kPixelsPerMicrosecond = 500;
/// Of all layers, drawn twice.
constexpr int kDrawnPerMicrosecond = 1000;

} // namespace

void CLayersAbove::Make(const Rect& rect, std::span<const DisplayLayer> layers, const Rect& window, int zoom)
{
    if (!(m_onBlack.valid == m_onWhite.valid))
        Clear(); // one of them had no memory for its region
    const CRegion missing = m_onWhite.Missing(rect);
    const auto make = [&](const Rect& rows) {
        for (WindowBuffer* buffer : {&m_onBlack, &m_onWhite}) {
            const BitmapView target = buffer->Part(rows);
            for (int y = 0; y < target.height; ++y)
                std::memset(target.Row(y), buffer == &m_onBlack ? 0 : 255,
                            static_cast<size_t>(target.width) * 4);
            CompositeLayers(target, {window.left + rows.left, window.top + rows.top}, layers, zoom);
        }
    };
    for (const Rect& part : missing.Rectangles()) {
        const auto drawn = static_cast<int>(std::min<int64_t>(INT_MAX, part.Width() * std::ssize(layers)));
        ForRowBands((part.Height() + kRows - 1) / kRows, BandRows(drawn, kDrawnPerMicrosecond) / kRows,
                    [&](int begin, int end) {
                        for (int i = begin; i < end; ++i) {
                            const int top = part.top + i * kRows;
                            make({part.left, top, part.right, std::min(top + kRows, part.bottom)});
                        }
                    });
    }
    m_onBlack.Add(rect);
    m_onWhite.Add(rect);
}

void CLayersAbove::BlendOnto(const BitmapView& target, const Rect& rect)
{
    const BitmapView onBlack = m_onBlack.Part(rect);
    const BitmapView onWhite = m_onWhite.Part(rect);
    ForRowBands(target.height, BandRows(target.width, kPixelsPerMicrosecond), [&](int begin, int end) {
        for (int y = begin; y < end; ++y)
            BlendBetween(target.Row(y), onBlack.Row(y), onWhite.Row(y), static_cast<size_t>(target.width));
    });
}

void CLayersAbove::Shift(int dx, int dy)
{
    m_onBlack.Shift(dx, dy);
    m_onWhite.Shift(dx, dy);
}

void CLayersAbove::Clear()
{
    m_onBlack.Clear();
    m_onWhite.Clear();
}
