// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

/// Something that takes bytes from strangers. It may refuse them in any way it likes, but must come back,
/// soon, with its memory in order.
struct FuzzTarget {
    std::string_view name; ///< of a file format: its usual ending
    void (*run)(std::string_view name, std::span<const uint8_t> input);
};

[[nodiscard]] std::span<const FuzzTarget> FuzzTargets();
/// None when there is no such target.
[[nodiscard]] const FuzzTarget* FindFuzzTarget(std::string_view name);
