// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/transform/AxisTaps.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace {

constexpr int kCubicTaps = 4;

/// The cubic's weight at a distance below 2.
double Cubic(double distance)
{
    const double x = std::abs(distance);
    if (x < 1)
        return (1.5 * x - 2.5) * x * x + 1;
    return ((-0.5 * x + 2.5) * x - 4) * x + 2;
}

} // namespace

Tap Tap::Trimmed() const
{
    const auto isUsed = [](float weight) { return weight != 0; };
    const auto begin = std::ranges::find_if(weights, isUsed) - weights.begin();
    const auto end = std::ranges::find_if(weights.rbegin(), weights.rend(), isUsed).base() - weights.begin();
    return {first + static_cast<int>(begin),
            weights.subspan(static_cast<size_t>(begin), static_cast<size_t>(std::max(begin, end) - begin))};
}

bool CAxisTaps::Make(int source, int target)
{
    // A sample's share can begin and end inside a source sample.
    const int shares = source % target == 0 ? source / target : source / target + 2;
    m_count = static_cast<size_t>(std::min(source, source < target ? kCubicTaps : shares));
    const auto samples = static_cast<size_t>(target);
    m_block = CHeapBlock::Allocate(samples * sizeof(int) + samples * m_count * sizeof(float));
    if (m_block.IsEmpty())
        return false;
    m_firsts = reinterpret_cast<int*>(m_block.Data());
    m_weights = reinterpret_cast<float*>(m_block.Data() + samples * sizeof(int));
    if (source < target)
        MakeCubics(source, target);
    else
        MakeShares(source, target);
    return true;
}

void CAxisTaps::MakeShares(int source, int target)
{
    const int lastFirst = source - static_cast<int>(m_count);
    for (int index = 0; index < target; ++index) {
        // In units of which a source sample has `target` and a sample of the result `source`.
        const int64_t begin = int64_t{index} * source;
        const int64_t end = begin + source;
        const auto first = static_cast<int>(begin / target);
        const auto last = static_cast<int>((end - 1) / target);
        m_firsts[index] = std::min(first, lastFirst);
        float* weights = WeightsOf(index);
        for (int64_t at = first; at <= last; ++at) {
            const int64_t share = std::min(end, (at + 1) * target) - std::max(begin, at * target);
            weights[at - m_firsts[index]] = static_cast<float>(static_cast<double>(share) / source);
        }
    }
}

void CAxisTaps::MakeCubics(int source, int target)
{
    const int lastFirst = source - static_cast<int>(m_count);
    for (int index = 0; index < target; ++index) {
        const double middle = (index + 0.5) * source / target - 0.5;
        const int before = static_cast<int>(std::floor(middle));
        m_firsts[index] = std::clamp(before - 1, 0, lastFirst);
        double weights[kCubicTaps] = {};
        for (int at = before - 1; at <= before + 2; ++at)
            weights[std::clamp(at, 0, source - 1) - m_firsts[index]] += Cubic(middle - at);
        std::transform(weights, weights + m_count, WeightsOf(index),
                       [](double weight) { return static_cast<float>(weight); });
    }
}
