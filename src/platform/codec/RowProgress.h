// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ui/UserInterface.h"

#include <cstdint>

/// Tells a progress control, or none, how many of some steps are done: once per percent, not per step.
class CRowProgress {
public:
    CRowProgress(IProgress* progress, int64_t steps) : m_progress(progress), m_steps(steps > 0 ? steps : 1) {}

    void SetDone(int64_t done)
    {
        const auto percent = static_cast<int>(done * 100 / m_steps);
        if (m_progress == nullptr || percent == m_percent)
            return;
        m_percent = percent;
        m_progress->SetPosition(percent);
    }

private:
    IProgress* m_progress;
    int64_t m_steps;
    int m_percent = -1;
};
