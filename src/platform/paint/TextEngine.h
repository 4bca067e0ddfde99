// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// Makes sure that fonts can be used: they need an application object of the toolkit, which a program
/// without windows does not have by itself. Costs time only once, and nothing where there is one.
void EnsureTextEngine();
