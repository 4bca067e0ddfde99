// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "history/MemberCommand.h"

class CVisibilityCommand final : public CMemberCommand<&CPicObject::visible, ObjectAttribute::Visible> {
public:
    CVisibilityCommand() : CMemberCommand(Str::UndoShowHide) {}
};
