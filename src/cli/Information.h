// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "cli/Session.h"

#include <span>
#include <string>

/// Prints what files hold: format, size, the fields that the format brings along, and every object. Each
/// returns the exit status; a file that cannot be loaded leaves its message and the others go on.

[[nodiscard]] int PrintInformation(CSession& session, std::span<const std::string> files);
/// An array with an object a file, in the same order; a file that cannot be loaded has "message".
[[nodiscard]] int PrintInformationAsJson(CSession& session, std::span<const std::string> files);
