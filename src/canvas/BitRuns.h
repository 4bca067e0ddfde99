// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>

/// Rows of one bit a pixel: pixel x is bit x % 64 of word x / 64, and bits beyond the last pixel are 0.

inline constexpr int kBitsPerWord = 64;
inline constexpr uint64_t kAllBits = ~uint64_t{0};

[[nodiscard]] constexpr int WordsFor(int pixels)
{
    return (pixels + kBitsPerWord - 1) / kBitsPerWord;
}

/// Calls use(word, mask) for every word that holds some of the bits [left, right), which must not be empty.
template <typename Use> void VisitWords(int left, int right, Use use)
{
    const auto last = static_cast<size_t>((right - 1) / kBitsPerWord);
    uint64_t mask = kAllBits << (left % kBitsPerWord);
    for (auto word = static_cast<size_t>(left / kBitsPerWord); word < last; ++word) {
        use(word, mask);
        mask = kAllBits;
    }
    use(last, mask & kAllBits >> (kBitsPerWord - 1 - (right - 1) % kBitsPerWord));
}

/// Clears the bits [left, right), which must not be empty.
inline void ClearBits(std::span<uint64_t> words, int left, int right)
{
    VisitWords(left, right, [words](size_t word, uint64_t mask) { words[word] &= ~mask; });
}

/// Sets the bits [left, right), which must not be empty.
inline void SetBits(std::span<uint64_t> words, int left, int right)
{
    VisitWords(left, right, [words](size_t word, uint64_t mask) { words[word] |= mask; });
}

/// Number of runs of set bits.
[[nodiscard]] inline size_t CountRuns(std::span<const uint64_t> words)
{
    size_t runs = 0;
    uint64_t before = 0; // the last bit of the word before
    for (const uint64_t word : words) {
        if (word == 0 - before) // none begins in a word that is all clear, or all set and goes on
            continue;
        runs += static_cast<size_t>(std::popcount(word & ~(word << 1 | before)));
        before = word >> (kBitsPerWord - 1);
    }
    return runs;
}

/// Calls visit(left, right) for every run of set bits, left to right.
template <typename Visit> void VisitRuns(std::span<const uint64_t> words, Visit visit)
{
    constexpr int kNone = -1;
    int open = kNone; // where a run began that goes on beyond its word
    int base = -kBitsPerWord;
    for (uint64_t word : words) {
        base += kBitsPerWord;
        if (word == (open == kNone ? 0 : kAllBits))
            continue;
        if (open != kNone) {
            const int end = std::countr_one(word);
            visit(open, base + end);
            open = kNone;
            word &= kAllBits << end;
        }
        while (open == kNone && word != 0) {
            const int start = std::countr_zero(word);
            const int end = start + std::countr_one(word >> start);
            if (end == kBitsPerWord) {
                open = base + start;
            } else {
                visit(base + start, base + end);
                word &= kAllBits << end;
            }
        }
    }
    if (open != kNone)
        visit(open, base + kBitsPerWord);
}
