// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/SettingsStore.h"
#include "cli/CommandLine.h"
#include "cli/ScriptRunner.h"
#include "platform/strings/Strings.h"

#include <csignal>
#include <iostream>
#include <new>

int main(int count, char** words)
{
    // A file that grows too large is a failure to write, not the end of the program.
    std::signal(SIGXFSZ, SIG_IGN);
    std::ios::sync_with_stdio(false);
    CSettingsStore userSettings;
    try {
        return RunCommandLine({words + 1, words + count}, {std::cin, std::cout, std::cerr, &userSettings});
    } catch (const std::bad_alloc&) {
        std::cerr << Text(Str::OutOfMemory) << std::endl;
        return kRefusedOrFailed;
    }
}
