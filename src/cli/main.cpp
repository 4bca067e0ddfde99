// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/SettingsStore.h"
#include "cli/CommandLine.h"

#include <iostream>

int main(int count, char** words)
{
    std::ios::sync_with_stdio(false);
    CSettingsStore userSettings;
    return RunCommandLine({words + 1, words + count}, {std::cin, std::cout, std::cerr, &userSettings});
}
