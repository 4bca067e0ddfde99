// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/CommandLine.h"

#include <iostream>

int main(int count, char** words)
{
    std::ios::sync_with_stdio(false);
    return RunCommandLine({words + 1, words + count}, {std::cin, std::cout, std::cerr});
}
