// SPDX-License-Identifier: GPL-3.0-or-later
#include "startup/StartedProgram.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <thread>

namespace {

using namespace std::chrono_literals;

constexpr auto kPatience = 3s;

/// The number behind a name in a process's status.
long StatusOf(pid_t process, const std::string& name)
{
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(name))
            return std::strtol(line.c_str() + name.size(), nullptr, 10);
    }
    return 0;
}

long PeakKibibytes(pid_t process)
{
    long sum = StatusOf(process, "VmHWM:");
    const std::string id = std::to_string(process);
    std::ifstream children("/proc/" + id + "/task/" + id + "/children");
    for (pid_t child = 0; children >> child;)
        sum += PeakKibibytes(child);
    return sum;
}

} // namespace

CStartedProgram::CStartedProgram(const std::vector<std::string>& words) : m_process(fork())
{
    if (m_process != 0)
        return;
    setpgid(0, 0);
    const int nowhere = open("/dev/null", O_RDWR);
    dup2(nowhere, STDOUT_FILENO);
    dup2(nowhere, STDERR_FILENO);
    std::vector<char*> arguments;
    for (const std::string& word : words)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    execvp(arguments.front(), arguments.data());
    _exit(EXIT_FAILURE);
}

CStartedProgram::~CStartedProgram()
{
    if (m_process <= 0)
        return;
    kill(-m_process, SIGTERM);
    const auto giveUp = std::chrono::steady_clock::now() + kPatience;
    while (IsRunning() && std::chrono::steady_clock::now() < giveUp)
        std::this_thread::sleep_for(10ms);
    if (m_process > 0) {
        kill(-m_process, SIGKILL);
        waitpid(m_process, nullptr, 0);
    }
}

bool CStartedProgram::IsRunning()
{
    if (m_process > 0 && waitpid(m_process, nullptr, WNOHANG) == m_process)
        m_process = -1;
    return m_process > 0;
}

double CStartedProgram::PeakMebibytes() const
{
    return m_process > 0 ? static_cast<double>(PeakKibibytes(m_process)) / 1024 : 0;
}
