// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Inputs.h"

#include "model/DibOperations.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <random>
#include <vector>

namespace {

Size SizeOf(int megapixels)
{
    switch (megapixels) {
    case 1:
        return {1024, 1024};
    case 4:
        return {2048, 2048};
    default:
        return {4000, 3000};
    }
}

/// Smooth random field: values on a lattice of `cell` pixels, joined by straight lines.
class CNoise {
public:
    CNoise(Size size, int cell, uint32_t seed) : m_cell(cell), m_columns(size.width / cell + 2)
    {
        std::mt19937 random(seed);
        m_values.resize(static_cast<size_t>(m_columns) * static_cast<size_t>(size.height / cell + 2));
        for (float& value : m_values)
            value = static_cast<float>(random() % 20001) / 10000.0F - 1.0F;
    }
    /// -1..1
    [[nodiscard]] float At(int x, int y) const
    {
        const float fx = static_cast<float>(x % m_cell) / static_cast<float>(m_cell);
        const float fy = static_cast<float>(y % m_cell) / static_cast<float>(m_cell);
        const auto first = static_cast<size_t>(y / m_cell * m_columns + x / m_cell);
        const auto below = first + static_cast<size_t>(m_columns);
        return std::lerp(std::lerp(m_values[first], m_values[first + 1], fx),
                         std::lerp(m_values[below], m_values[below + 1], fx), fy);
    }

private:
    int m_cell;
    int m_columns;
    std::vector<float> m_values;
};

uint8_t ToByte(float value)
{
    return static_cast<uint8_t>(std::clamp(std::lround(value), 0L, 255L));
}

CPackedDib MakePhoto(Size size, uint32_t seed)
{
    CPackedDib dib = CPackedDib::Create(size.width, size.height, 32);
    const CNoise broad(size, 400, seed);
    const CNoise fine(size, 30, seed + 1);
    const CNoise tint(size, 150, seed + 2);
    std::minstd_rand grain(seed + 3);
    for (int y = 0; y < size.height; ++y) {
        uint8_t* pixel = dib.Row(y);
        for (int x = 0; x < size.width; ++x, pixel += 4) {
            const float light = 128.0F + 90.0F * broad.At(x, y) + 25.0F * fine.At(x, y);
            for (int c = 0; c < 3; ++c) {
                const auto noise = static_cast<float>(grain() % 13) - 6.0F;
                pixel[c] = ToByte(light + static_cast<float>(c - 1) * 30.0F * tint.At(x, y) + noise);
            }
            pixel[3] = 255;
        }
    }
    return dib;
}

/// Alphas from a smooth field whose lowest and highest 13 % are cut off at 0 and 255.
void VaryAlpha(CPackedDib& dib, uint32_t seed)
{
    constexpr double kShare = 0.13;
    const CNoise broad(dib.Size(), 170, seed);
    const CNoise fine(dib.Size(), 35, seed + 1);
    const auto cover = [&](int x, int y) { return broad.At(x, y) + 0.25F * fine.At(x, y); };
    std::vector<float> samples;
    for (int y = 0; y < dib.Height(); y += 5) {
        for (int x = 0; x < dib.Width(); x += 5)
            samples.push_back(cover(x, y));
    }
    std::sort(samples.begin(), samples.end());
    const auto count = static_cast<double>(samples.size());
    const float low = samples[static_cast<size_t>(count * kShare)];
    const float high = samples[static_cast<size_t>(count * (1 - kShare))];
    for (int y = 0; y < dib.Height(); ++y) {
        for (int x = 0; x < dib.Width(); ++x)
            dib.Row(y)[ptrdiff_t{x} * 4 + 3] = ToByte((cover(x, y) - low) / (high - low) * 255.0F);
    }
}

CPackedDib MakeFlatArt(Size size)
{
    CPackedDib dib = CPackedDib::Create(size.width, size.height, 32);
    std::mt19937 random(24);
    std::array<uint32_t, 24> colours{};
    for (uint32_t& colour : colours)
        colour = (random() & 0xFFFFFFu) | (random() % 4 == 0 ? 0x80000000u : 0xFF000000u);
    const auto within = [&random](int limit) {
        return static_cast<int>(random() % static_cast<unsigned>(limit));
    };
    for (int shape = 0; shape < 120; ++shape) {
        const int cx = within(size.width);
        const int cy = within(size.height);
        const int rx = size.width / 100 + within(size.width / 14);
        const int ry = size.height / 100 + within(size.height / 14);
        const uint32_t colour = colours[static_cast<size_t>(within(24))];
        const bool ellipse = shape % 2 == 0;
        for (int y = std::max(0, cy - ry); y < std::min(size.height, cy + ry); ++y) {
            const double v = static_cast<double>(y - cy) / ry;
            const int reach = ellipse ? static_cast<int>(rx * std::sqrt(1 - v * v)) : rx;
            auto* row = reinterpret_cast<uint32_t*>(dib.Row(y));
            std::fill(row + std::max(0, cx - reach), row + std::min(size.width, cx + reach), colour);
        }
    }
    return dib;
}

/// Makes a picture the first time it is asked for.
template <typename Make> const CPackedDib& Kept(std::map<int, CPackedDib>& kept, int megapixels, Make make)
{
    CPackedDib& dib = kept[megapixels];
    if (dib.IsEmpty())
        dib = make(SizeOf(megapixels));
    return dib;
}

} // namespace

const CPackedDib& PhotoPicture(int megapixels)
{
    static std::map<int, CPackedDib> kept;
    return Kept(kept, megapixels, [](Size size) {
        CPackedDib dib = MakePhoto(size, 100);
        VaryAlpha(dib, 200);
        return dib;
    });
}

const CPackedDib& BackdropPicture(int megapixels)
{
    static std::map<int, CPackedDib> kept;
    return Kept(kept, megapixels, [](Size size) { return MakePhoto(size, 300); });
}

const CPackedDib& FlatArtPicture(int megapixels)
{
    static std::map<int, CPackedDib> kept;
    return Kept(kept, megapixels, MakeFlatArt);
}

double PixelsOf(int megapixels)
{
    const Size size = SizeOf(megapixels);
    return static_cast<double>(size.width) * size.height;
}

CPackedDib CutOut(const CPackedDib& dib, int x, int y, int width, int height)
{
    return CropByMargins(dib, x, y, dib.Width() - x - width, dib.Height() - y - height);
}

CPackedDib Premultiplied(const CPackedDib& dib)
{
    CPackedDib result = dib.Duplicate();
    for (size_t at = 0; at < result.Bits().size(); at += 4) {
        uint8_t* pixel = result.Bits().data() + at;
        for (int c = 0; c < 3; ++c)
            pixel[c] = static_cast<uint8_t>((pixel[c] * pixel[3] + 127) / 255);
    }
    return result;
}
