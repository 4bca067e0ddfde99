// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/memory/HeapBlock.h"

#include <span>

/// Source samples that make one sample of a scaled line, with weights that sum up to 1.
struct Tap {
    int first = 0;
    std::span<const float> weights;

    /// Without the weights of 0 at both ends.
    [[nodiscard]] Tap Trimmed() const;
};

/// The taps of every sample of a line scaled from one length to another. Shorter: the share that each source
/// sample has of the sample's length. Longer: cubic convolution with a = -1/2 through the four nearest, edges
/// repeated (Keys, "Cubic convolution interpolation for digital image processing", 1981). The same length:
/// the sample itself.
class CAxisTaps {
public:
    /// Both lengths at least 1. False when memory runs out.
    [[nodiscard]] bool Make(int source, int target);

    /// How many weights every sample has, some of them 0.
    [[nodiscard]] size_t Count() const { return m_count; }
    /// Of all samples, Count() after Count().
    [[nodiscard]] const float* Weights() const { return m_weights; }
    /// The first source sample of each.
    [[nodiscard]] const int* Firsts() const { return m_firsts; }
    [[nodiscard]] Tap At(int index) const { return {m_firsts[index], {WeightsOf(index), m_count}}; }

private:
    [[nodiscard]] float* WeightsOf(int index) const
    {
        return m_weights + static_cast<size_t>(index) * m_count;
    }
    void MakeShares(int source, int target);
    void MakeCubics(int source, int target);

    CHeapBlock m_block;
    size_t m_count = 0;
    int* m_firsts = nullptr;
    float* m_weights = nullptr;
};
