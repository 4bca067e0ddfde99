// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/Tool.h"

/// Asks for a text where it is clicked, or with Enter in the middle of what is seen of the document.
class CTextTool final : public CTool {
public:
    using CTool::CTool;

    void Down(const MouseInput& input) override;
    bool Key(ToolKey key) override;
};
