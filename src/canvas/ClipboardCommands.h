// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class CPixoluneView;

/// The view's clipboard commands. Each returns whether it did something; a refusal has been shown. With a
/// selection they act on the selected part of the selected visible objects, without one on the objects as
/// a whole.

bool Copy(CPixoluneView& view);
/// The frame as one picture, cut to the selection.
bool CopyMerged(CPixoluneView& view);
/// Asks, copies, and then clears as Delete does.
bool Cut(CPixoluneView& view);
/// Puts what the clipboard holds on top, selected: where it came from when that is in view, otherwise in the
/// middle of what the view shows. Takes a picture of another program when there is none of our own.
bool Paste(CPixoluneView& view);
/// Asks and then clears the selected part, or removes the objects.
bool Delete(CPixoluneView& view);
