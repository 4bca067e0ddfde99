// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/PixoluneDoc.h"

/// Fills a document from the New Image settings: one selected object of the canvas's size in InitColor,
/// transparent when InitTransparent is on. False, with a message, when memory runs out.
bool InitializeNewDocument(CPixoluneDoc& document);
