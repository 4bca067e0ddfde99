// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/memory/HeapBlock.h"

#include <span>

/// Source samples that make one sample of a scaled line, with weights that sum up to 1.
struct Tap {
    int first = 0;
    std::span<const float> weights;
};

/// The taps of every sample of a line scaled from one length to another. Shorter: the share that each source
/// sample has of the sample's length. Longer: cubic convolution with a = -1/2 through the four nearest, edges
/// repeated (Keys, "Cubic convolution interpolation for digital image processing", 1981). The same length:
/// the sample itself.
class CAxisTaps {
public:
    /// Both lengths at least 1. False when memory runs out.
    [[nodiscard]] bool Make(int source, int target);

    [[nodiscard]] Tap At(int index) const
    {
        return {m_spans[index].first,
                {m_weights + m_spans[index].offset, static_cast<size_t>(m_spans[index].count)}};
    }

private:
    struct Span {
        int64_t offset = 0; ///< of its first weight
        int first = 0;
        int count = 0;
    };

    void MakeShares(int source, int target);
    void MakeCubics(int source, int target);

    CHeapBlock m_block;
    Span* m_spans = nullptr;
    float* m_weights = nullptr;
};
