// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/transform/ColourFill.h"

#include "platform/parallel/RowBands.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>
#include <vector>

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

/// The colours of a gradient, row by row.
class CGradientRows {
public:
    CGradientRows(const ColourFill& fill, Size size)
        : m_mode(fill.mode), m_ramp(Ramp(fill)), m_lastY(std::max(1, size.height - 1)),
          m_centreX((size.width - 1) / 2.0), m_centreY((size.height - 1) / 2.0),
          m_radius(std::max(0.5, std::hypot(m_centreX, m_centreY))), m_across(static_cast<size_t>(size.width))
    {
        const double lastX = std::max(1, size.width - 1);
        for (size_t x = 0; x < m_across.size(); ++x)
            m_across[x] = static_cast<double>(x) / lastX;
        if (m_mode == 4)
            std::ranges::transform(m_across, m_across.begin(), [](double across) { return 1 - across; });
    }

    /// Writes the colours of row y as BGRA words with alpha 0.
    void Write(int y, std::span<uint32_t> row) const
    {
        const double down = y / m_lastY;
        switch (m_mode) {
        case 0:
            std::ranges::fill(row, m_ramp.front());
            break;
        case 1:
            std::ranges::transform(m_across, row.begin(), [&](double across) { return ColourAt(across); });
            break;
        case 2:
            std::ranges::fill(row, ColourAt(down));
            break;
        case 3:
        case 4:
            std::ranges::transform(m_across, row.begin(),
                                   [&](double across) { return ColourAt((across + down) / 2); });
            break;
        default:
            WriteAroundCentre(y - m_centreY, row);
        }
    }

    /// Whether all rows have the same colours.
    [[nodiscard]] bool AreAllRowsAlike() const { return m_mode < 2; }

private:
    /// way: 0 to 1 from the first colour to the second.
    [[nodiscard]] uint32_t ColourAt(double way) const
    {
        return m_ramp[static_cast<size_t>(std::clamp(way, 0.0, 1.0) * kSteps + 0.5)];
    }

    /// Both halves of a row mirror each other.
    void WriteAroundCentre(double dy, std::span<uint32_t> row) const
    {
        for (size_t x = 0; 2 * x < row.size(); ++x) {
            const double dx = static_cast<double>(x) - m_centreX;
            row[x] = row[row.size() - 1 - x] = ColourAt(std::sqrt(dx * dx + dy * dy) / m_radius);
        }
    }

    int m_mode;
    std::array<uint32_t, kSteps + 1> m_ramp;
    double m_lastY;
    double m_centreX, m_centreY;
    double m_radius;
    std::vector<double> m_across; ///< of each column; from the right in mode 4
};

} // namespace

CPackedDib ColourCoverage(const CPackedDib& coverage, const ColourFill& fill)
{
    CPackedDib dib = CPackedDib::CreateForOverwrite(coverage.Width(), coverage.Height());
    if (dib.IsEmpty())
        return dib;
    const CGradientRows gradient(fill, coverage.Size());
    constexpr int kPixelsPerMicrosecond = 300;
    ForRowBands(dib.Height(), BandRows(dib.Width(), kPixelsPerMicrosecond), [&](int begin, int end) {
        std::vector<uint32_t> colours(static_cast<size_t>(dib.Width()));
        for (int y = begin; y < end; ++y) {
            if (y == begin || !gradient.AreAllRowsAlike())
                gradient.Write(y, colours);
            const uint8_t* covered = coverage.Row(y);
            auto* row = reinterpret_cast<uint32_t*>(dib.Row(y));
            for (size_t x = 0; x < colours.size(); ++x)
                row[x] = colours[x] | uint32_t{covered[x]} << 24;
        }
    });
    return dib;
}
