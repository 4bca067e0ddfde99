// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <csetjmp>
// The library's header needs these two before it.
// clang-format off
#include <cstddef>
#include <cstdio>
#include <jpeglib.h>
// clang-format on

/// The JPEG library's way to fail: it prints nothing and jumps back to GuardedJpegCalls.
class CJpegFailure {
public:
    CJpegFailure() = default;
    CJpegFailure(const CJpegFailure&) = delete;
    CJpegFailure& operator=(const CJpegFailure&) = delete;

    /// For the `err` field of a coder, which this must outlive.
    [[nodiscard]] jpeg_error_mgr* Install()
    {
        jpeg_std_error(&m_callbacks.base);
        m_callbacks.base.error_exit = [](j_common_ptr coder) {
            std::longjmp(reinterpret_cast<Callbacks*>(coder->err)->jump, 1);
        };
        m_callbacks.base.emit_message = [](j_common_ptr, int) {};
        m_callbacks.base.output_message = [](j_common_ptr) {};
        return &m_callbacks.base;
    }
    [[nodiscard]] std::jmp_buf& Jump() { return m_callbacks.jump; }

private:
    struct Callbacks {
        jpeg_error_mgr base; ///< first, so that the library's pointer to it points here
        std::jmp_buf jump;
    };
    Callbacks m_callbacks = {};
};

/// Runs library calls; false when they failed. Nothing in `step` may need destruction.
template <class Step> bool GuardedJpegCalls(CJpegFailure& failure, const Step& step)
{
    if (setjmp(failure.Jump()) != 0)
        return false;
    step();
    return true;
}
