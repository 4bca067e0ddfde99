// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Scratch.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace {

/// Where files stay in memory if there is such a place: the programs are measured, not the disk.
std::filesystem::path Parent()
{
    const std::filesystem::path inMemory = "/dev/shm";
    return std::filesystem::is_directory(inMemory) ? inMemory : std::filesystem::temp_directory_path();
}

} // namespace

const std::filesystem::path& ScratchFolder()
{
    struct Owner {
        std::filesystem::path path = Parent() / ("pixolune-bench-" + std::to_string(::getpid()));
        Owner() { std::filesystem::create_directories(path); }
        ~Owner() { std::filesystem::remove_all(path); }
    };
    static const Owner owner;
    return owner.path;
}

void RunCommand(const std::string& command)
{
    if (std::system(command.c_str()) == 0)
        return;
    std::fprintf(stderr, "failed: %s\n", command.c_str());
    std::abort();
}
