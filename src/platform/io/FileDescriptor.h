// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <unistd.h>

#include <utility>

/// Owns an open file of the operating system; closes it.
class CFileDescriptor {
public:
    explicit CFileDescriptor(int descriptor) : m_descriptor(descriptor) {}
    ~CFileDescriptor()
    {
        if (IsOpen())
            ::close(m_descriptor);
    }
    CFileDescriptor(CFileDescriptor&& other) noexcept : m_descriptor(other.Release()) {}
    CFileDescriptor(const CFileDescriptor&) = delete;
    CFileDescriptor& operator=(const CFileDescriptor&) = delete;

    [[nodiscard]] bool IsOpen() const { return m_descriptor >= 0; }
    [[nodiscard]] int Get() const { return m_descriptor; }
    /// Hands the file over to the caller.
    [[nodiscard]] int Release() { return std::exchange(m_descriptor, -1); }

private:
    int m_descriptor;
};
