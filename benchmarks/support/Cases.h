// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>

/// How many processors a case may use.
enum class Threads { One, All };
inline constexpr Threads kBothThreads[] = {Threads::One, Threads::All};

/// One row of the report is an operation at a size; each row has one case of ours and some of others'.
struct BenchmarkCase {
    std::string operation; ///< group and operation: "composite/over-opaque"
    std::string size;      ///< "12MP"
    std::string who;       ///< "ours", a peer's name, or "limit-..." for what memory alone allows
    Threads threads = Threads::One;
    double pixels = 0; ///< handled by one call, for the rate; 0 for none
};

/// Registers a case under operation/size/who/threads. `prepare` runs outside the timed loop and returns what
/// is timed; it runs again for every repetition. The result is always true, so that a file can register its
/// cases while the program starts: `const bool kRegistered = [] { ... }();`
bool AddCase(BenchmarkCase benchmarkCase, std::function<std::function<void()>()> prepare);

/// "1MP", "4MP" or "12MP".
std::string SizeName(int megapixels);
inline constexpr int kMegapixels[] = {1, 4, 12};
