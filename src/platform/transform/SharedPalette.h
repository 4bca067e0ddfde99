// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/dib/PackedDib.h"

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

struct liq_attr;
struct liq_histogram;

/// One palette for several 32-bit pictures, such as the frames of an animation. Pixels with alpha 0 do not
/// count. Colours that all fit in keep their values; otherwise the best are found and pictures are dithered.
class CSharedPalette {
public:
    /// mostColours: 2 to 256.
    explicit CSharedPalette(size_t mostColours) : m_limit(mostColours) {}

    /// Takes in the colours of a picture; false when memory runs out.
    [[nodiscard]] bool Add(const CPackedDib& picture);
    /// Ends the taking in; false when memory runs out.
    [[nodiscard]] bool Make();

    /// The number of colours taken in; one more than the largest palette has for any larger number.
    [[nodiscard]] size_t Taken() const { return m_taken.size(); }
    [[nodiscard]] const std::vector<RgbQuad>& Colours() const { return m_colours; }
    /// The picture with 8 bits per pixel; pixels with alpha 0 get index 0. Other colours than those taken in
    /// get the nearest one, their errors spread as by Floyd and Steinberg, 1976. Empty when memory runs out.
    [[nodiscard]] CPackedDib Apply(const CPackedDib& picture);

private:
    struct Release {
        void operator()(liq_attr* attributes) const;
        void operator()(liq_histogram* histogram) const;
    };

    [[nodiscard]] uint8_t Nearest(uint32_t colour);

    size_t m_limit;
    std::vector<uint32_t> m_taken; ///< in the order of their appearance
    std::vector<RgbQuad> m_colours;
    std::unordered_map<uint32_t, uint8_t> m_indices; ///< of the colours asked for so far
    std::unique_ptr<liq_attr, Release> m_attributes;
    std::unique_ptr<liq_histogram, Release> m_histogram;
};
