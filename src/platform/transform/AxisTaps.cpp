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

bool CAxisTaps::Make(int source, int target)
{
    const auto spans = static_cast<size_t>(target);
    // A share can begin and end inside a source sample, so that two share it.
    const size_t weights = source < target ? spans * kCubicTaps : static_cast<size_t>(source) + spans;
    m_block =
        CHeapBlock::Allocate(spans * sizeof(Span) + weights * sizeof(float), 0, BlockContent::Undefined);
    if (m_block.IsEmpty())
        return false;
    m_spans = reinterpret_cast<Span*>(m_block.Data());
    m_weights = reinterpret_cast<float*>(m_block.Data() + spans * sizeof(Span));
    if (source < target)
        MakeCubics(source, target);
    else
        MakeShares(source, target);
    return true;
}

void CAxisTaps::MakeShares(int source, int target)
{
    int64_t offset = 0;
    for (int64_t index = 0; index < target; ++index) {
        // In units of which a source sample has `target` and a sample of the result `source`.
        const int64_t begin = index * source;
        const int64_t end = begin + source;
        const auto first = static_cast<int>(begin / target);
        const auto last = static_cast<int>((end - 1) / target);
        m_spans[index] = {offset, first, last - first + 1};
        for (int64_t at = first; at <= last; ++at) {
            const int64_t share = std::min(end, (at + 1) * target) - std::max(begin, at * target);
            m_weights[offset++] = static_cast<float>(static_cast<double>(share) / source);
        }
    }
}

void CAxisTaps::MakeCubics(int source, int target)
{
    for (int index = 0; index < target; ++index) {
        const double middle = (index + 0.5) * source / target - 0.5;
        const int before = static_cast<int>(std::floor(middle));
        const int first = std::clamp(before - 1, 0, source - 1);
        const int last = std::clamp(before + 2, 0, source - 1);
        const int64_t offset = int64_t{index} * kCubicTaps;
        m_spans[index] = {offset, first, last - first + 1};
        double weights[kCubicTaps] = {};
        for (int at = before - 1; at <= before + 2; ++at)
            weights[std::clamp(at, first, last) - first] += Cubic(middle - at);
        std::ranges::transform(weights, m_weights + offset,
                               [](double weight) { return static_cast<float>(weight); });
    }
}
