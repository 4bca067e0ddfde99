// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/transform/ColourFill.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace {

constexpr int kSteps = 1024;

/// The colours on the way from the first to the second as BGRA words with alpha 0.
std::array<uint32_t, kSteps + 1> Ramp(const ColourFill& fill)
{
    std::array<uint32_t, kSteps + 1> ramp{};
    const auto channel = [&](int shift, int step) {
        const int from = static_cast<int>(fill.first >> shift & 0xFF);
        const int to = static_cast<int>(fill.second >> shift & 0xFF);
        return static_cast<uint32_t>(from + (2 * (to - from) * step + (to < from ? -kSteps : kSteps)) /
                                                (2 * kSteps));
    };
    for (int step = 0; step <= kSteps; ++step) {
        ramp[static_cast<size_t>(step)] = channel(16, step) | channel(8, step) << 8 | channel(0, step) << 16;
    }
    return ramp;
}

/// How far a pixel lies on the gradient's way, 0 to 1.
class CGradientPosition {
public:
    CGradientPosition(int mode, Size size)
        : m_mode(mode), m_lastX(std::max(1, size.width - 1)), m_lastY(std::max(1, size.height - 1)),
          m_centreX((size.width - 1) / 2.0), m_centreY((size.height - 1) / 2.0),
          m_radius(std::max(0.5, std::hypot(m_centreX, m_centreY)))
    {
    }
    [[nodiscard]] double At(int x, int y) const
    {
        const double across = x / m_lastX;
        const double down = y / m_lastY;
        switch (m_mode) {
        case 1:
            return across;
        case 2:
            return down;
        case 3:
            return (across + down) / 2;
        case 4:
            return (1 - across + down) / 2;
        default:
            return std::sqrt((x - m_centreX) * (x - m_centreX) + (y - m_centreY) * (y - m_centreY)) /
                   m_radius;
        }
    }

private:
    int m_mode;
    double m_lastX, m_lastY;
    double m_centreX, m_centreY;
    double m_radius;
};

void SetPixel(uint8_t* at, uint32_t colour, uint8_t alpha)
{
    const uint32_t pixel = colour | uint32_t{alpha} << 24;
    std::memcpy(at, &pixel, sizeof pixel);
}

} // namespace

CPackedDib ColourCoverage(const CPackedDib& coverage, const ColourFill& fill)
{
    CPackedDib dib = CPackedDib::Create(coverage.Width(), coverage.Height(), 32);
    if (dib.IsEmpty())
        return dib;
    const auto ramp = Ramp(fill);
    const CGradientPosition position(fill.mode, coverage.Size());
    for (int y = 0; y < dib.Height(); ++y) {
        const uint8_t* covered = coverage.Row(y);
        uint8_t* row = dib.Row(y);
        for (int x = 0; x < dib.Width(); ++x) {
            const double way = fill.mode == 0 ? 0.0 : std::clamp(position.At(x, y), 0.0, 1.0);
            SetPixel(row + ptrdiff_t{x} * 4, ramp[static_cast<size_t>(std::lround(way * kSteps))],
                     covered[x]);
        }
    }
    return dib;
}
