// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

/// A program that was started, silent, and is ended with this object.
class CStartedProgram {
public:
    /// words: the program, looked for as the shell does, and its arguments.
    explicit CStartedProgram(const std::vector<std::string>& words);
    ~CStartedProgram();
    CStartedProgram(const CStartedProgram&) = delete;
    CStartedProgram& operator=(const CStartedProgram&) = delete;

    [[nodiscard]] bool IsRunning();
    /// The most memory that it and the processes it started have had in RAM, each for itself.
    [[nodiscard]] double PeakMebibytes() const;

private:
    pid_t m_process;
};
