// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "history/MemberCommand.h"

class COpacityCommand final
    : public CMemberCommand<&CPicObject::transparency, ObjectAttribute::Transparency> {
public:
    COpacityCommand() : CMemberCommand(Str::UndoOpacity) {}
};
