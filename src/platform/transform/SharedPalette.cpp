// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/transform/SharedPalette.h"

#include <libimagequant.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <utility>

namespace {

constexpr size_t kMostColours = 256;
constexpr uint32_t kColourMask = 0x00FFFFFF;
/// The usual compromise of quality and time, from 1 (best) to 10 (fastest).
constexpr int kQuantizationSpeed = 4;
/// Nearest colours that are remembered: dithering meets most colours of a picture.
constexpr size_t kMostRemembered = size_t{1} << 20;

uint32_t ColourOf(const uint8_t* pixel)
{
    uint32_t colour = 0;
    std::memcpy(&colour, pixel, sizeof colour);
    return colour & kColourMask;
}

RgbQuad QuadOf(uint32_t colour)
{
    return {static_cast<uint8_t>(colour), static_cast<uint8_t>(colour >> 8),
            static_cast<uint8_t>(colour >> 16), 0};
}

int Channel(uint32_t colour, int channel)
{
    return static_cast<int>(colour >> (8 * channel) & 0xFF);
}

/// Blue, green, red of one pixel.
using Errors = std::array<int, 3>;

} // namespace

void CSharedPalette::Release::operator()(liq_attr* attributes) const
{
    liq_attr_destroy(attributes);
}

void CSharedPalette::Release::operator()(liq_histogram* histogram) const
{
    liq_histogram_destroy(histogram);
}

bool CSharedPalette::Add(const CPackedDib& picture)
{
    if (!m_attributes) {
        m_attributes.reset(liq_attr_create());
        if (!m_attributes || liq_set_max_colors(m_attributes.get(), static_cast<int>(m_limit)) != LIQ_OK ||
            liq_set_speed(m_attributes.get(), kQuantizationSpeed) != LIQ_OK)
            return false;
        m_histogram.reset(liq_histogram_create(m_attributes.get()));
    }
    std::unordered_map<uint32_t, unsigned> counts;
    for (int y = 0; y < picture.Height(); ++y) {
        const uint8_t* pixel = picture.Row(y);
        for (int x = 0; x < picture.Width(); ++x, pixel += 4) {
            if (pixel[3] != 0)
                ++counts[ColourOf(pixel)];
        }
    }
    std::vector<liq_histogram_entry> entries;
    entries.reserve(counts.size());
    for (const auto& [colour, count] : counts) {
        const RgbQuad quad = QuadOf(colour);
        entries.push_back({{quad.red, quad.green, quad.blue, 255}, count});
        if (m_taken.size() <= kMostColours && std::ranges::find(m_taken, colour) == m_taken.end())
            m_taken.push_back(colour);
    }
    return m_histogram &&
           (entries.empty() || liq_histogram_add_colors(m_histogram.get(), m_attributes.get(), entries.data(),
                                                        static_cast<int>(entries.size()), 0) == LIQ_OK);
}

bool CSharedPalette::Make()
{
    if (m_taken.size() <= m_limit) {
        for (const uint32_t colour : m_taken)
            m_colours.push_back(QuadOf(colour));
        if (m_colours.empty())
            m_colours.push_back({});
        return true;
    }
    liq_result* result = nullptr;
    if (liq_histogram_quantize(m_histogram.get(), m_attributes.get(), &result) != LIQ_OK)
        return false;
    const liq_palette* palette = liq_get_palette(result);
    for (unsigned index = 0; index < palette->count; ++index) {
        const liq_color& entry = palette->entries[index];
        m_colours.push_back({entry.b, entry.g, entry.r, 0});
    }
    liq_result_destroy(result);
    return !m_colours.empty();
}

uint8_t CSharedPalette::Nearest(uint32_t colour)
{
    const auto known = m_indices.find(colour);
    if (known != m_indices.end())
        return known->second;
    int least = std::numeric_limits<int>::max();
    uint8_t nearest = 0;
    for (size_t index = 0; index < m_colours.size(); ++index) {
        const RgbQuad& quad = m_colours[index];
        const int blue = quad.blue - Channel(colour, 0);
        const int green = quad.green - Channel(colour, 1);
        const int red = quad.red - Channel(colour, 2);
        const int distance = blue * blue + green * green + red * red;
        if (distance < least) {
            least = distance;
            nearest = static_cast<uint8_t>(index);
        }
    }
    if (m_indices.size() < kMostRemembered)
        m_indices.emplace(colour, nearest);
    return nearest;
}

CPackedDib CSharedPalette::Apply(const CPackedDib& picture)
{
    const int entries = std::max<int>(1, static_cast<int>(m_colours.size()));
    CPackedDib indexed = CPackedDib::Create(picture.Width(), picture.Height(), 8, entries);
    if (indexed.IsEmpty())
        return indexed;
    std::ranges::copy(m_colours, indexed.ColourTable().begin());
    // Sixteenths of errors, with a column on either side.
    const auto width = static_cast<size_t>(picture.Width());
    std::vector<Errors> current(width + 2);
    std::vector<Errors> below(width + 2);
    for (int y = 0; y < picture.Height(); ++y) {
        const uint8_t* pixel = picture.Row(y);
        uint8_t* index = indexed.Row(y);
        std::ranges::fill(below, Errors{});
        for (size_t x = 0; x < width; ++x, pixel += 4, ++index) {
            if (pixel[3] == 0)
                continue;
            uint32_t wanted = 0;
            for (size_t channel = 0; channel < 3; ++channel) {
                const int value = std::clamp(pixel[channel] + current[x + 1][channel] / 16, 0, 255);
                wanted |= static_cast<uint32_t>(value) << (8 * channel);
            }
            *index = Nearest(wanted);
            const RgbQuad& taken = m_colours[*index];
            const Errors errors = {Channel(wanted, 0) - taken.blue, Channel(wanted, 1) - taken.green,
                                   Channel(wanted, 2) - taken.red};
            for (size_t channel = 0; channel < 3; ++channel) {
                current[x + 2][channel] += errors[channel] * 7;
                below[x][channel] += errors[channel] * 3;
                below[x + 1][channel] += errors[channel] * 5;
                below[x + 2][channel] += errors[channel];
            }
        }
        std::swap(current, below);
    }
    return indexed;
}
