// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "history/MemberCommand.h"

class CLockCommand final : public CMemberCommand<&CPicObject::locked, ObjectAttribute::Locked> {
public:
    CLockCommand() : CMemberCommand(Str::UndoLockUnlock) {}
};
