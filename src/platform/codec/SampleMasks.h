// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

/// Which bits of a pixel value hold which channel; no bits for a channel that is absent.
struct SampleMasks {
    uint32_t red = 0;
    uint32_t green = 0;
    uint32_t blue = 0;
    uint32_t alpha = 0;
};

/// Turns pixel values into blue, green, red, alpha of 8 bits each: a channel's largest value becomes 255, the
/// others in proportion, rounded. Absent colours are 0, absent alpha is 255.
class CMaskedSamples {
public:
    explicit CMaskedSamples(const SampleMasks& masks)
        : m_channels{ChannelOf(masks.blue), ChannelOf(masks.green), ChannelOf(masks.red),
                     ChannelOf(masks.alpha)}
    {
        m_hasAlpha = masks.alpha != 0;
    }

    void Convert(uint32_t value, uint8_t* pixel) const
    {
        for (size_t index = 0; index < m_channels.size(); ++index) {
            const Channel& channel = m_channels[index];
            pixel[index] = channel.values[(value >> channel.shift) & channel.largest];
        }
        if (!m_hasAlpha)
            pixel[3] = 255;
    }

private:
    struct Channel {
        int shift = 0;
        uint32_t largest = 0;
        std::array<uint8_t, 256> values = {};
    };

    static Channel ChannelOf(uint32_t mask)
    {
        Channel channel;
        if (mask == 0)
            return channel;
        // Of more than eight bits the highest eight are enough. Holes in a mask count as its bits.
        const int highest = 31 - std::countl_zero(mask);
        const int lowest = std::max(std::countr_zero(mask), highest - 7);
        channel.shift = lowest;
        channel.largest = (1u << (highest - lowest + 1)) - 1;
        for (uint32_t value = 0; value <= channel.largest; ++value)
            channel.values[value] =
                static_cast<uint8_t>((value * 255 + channel.largest / 2) / channel.largest);
        return channel;
    }

    std::array<Channel, 4> m_channels;
    bool m_hasAlpha = false;
};
