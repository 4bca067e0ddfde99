// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/TestPictures.h"

#include <functional>

/// Sizes at which kernels take different paths: single pixels, rows and columns, widths around the length
/// of a vector, and pictures that are split over the processors and stored past the caches.
inline constexpr Size kKernelSizes[] = {{1, 1}, {1, 9},  {9, 1},   {2, 2},
                                        {3, 5}, {17, 8}, {33, 31}, {701, 803}};

using Kernel = std::function<CPackedDib(const CPackedDib&)>;

/// Fails unless the kernel makes `expected` of the picture with every instruction set that this processor has
/// of those the kernels are compiled for.
void ExpectEverywhere(const Kernel& kernel, const CPackedDib& picture, const CPackedDib& expected);

/// Fails unless both kernels give the same bytes on random pictures of all the sizes.
void ExpectSameResults(const Kernel& fast, const Kernel& reference);

/// Fails unless the kernel gives an empty picture whichever of its allocations fails, and for no picture.
void ExpectEmptyWhenMemoryRunsOut(const Kernel& kernel);
