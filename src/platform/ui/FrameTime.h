// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// How long a frame of an animation is shown, from its delay in hundredths of a second. Without one it is the
/// tenth of a second that other programs take.
[[nodiscard]] constexpr int FrameMilliseconds(int delay)
{
    return delay > 0 ? delay * 10 : 100;
}
