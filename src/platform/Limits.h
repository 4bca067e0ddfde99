// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>

/// What the program takes on, however large a file claims to be. Described for users in docs/limits.md.
/// Bounds that belong to a format itself (65,535 pixels a side in a GIF) stand with its writer.

/// Powers of two that the bounds of pixels are divided by: a fuzzer tries more small pictures than large ones.
#ifdef FUZZING_BUILD_MODE_UNSAFE_FOR_PRODUCTION
inline constexpr int kFuzzingShift = 7;
#else
inline constexpr int kFuzzingShift = 0;
#endif

/// Longest side of a picture.
inline constexpr int kMaxPictureSide = 1 << 24;
/// Most pixels that one picture may have: half a gigabyte at 32 bits.
inline constexpr int64_t kMaxPicturePixels = int64_t{1} << (27 - kFuzzingShift);
/// Pixels that one file may bring, all its pictures together: four gigabytes.
inline constexpr int64_t kMaxLoadedPixels = int64_t{1} << (30 - kFuzzingShift);

/// Pixels that one file may claim without showing data for them.
inline constexpr uint64_t kFreePixels = uint64_t{1} << (24 - kFuzzingShift);

/// Largest file that is read into memory.
inline constexpr int64_t kMaxFileBytes = int64_t{1} << 30;
/// The same for the native file, whose offsets have 32 bits.
inline constexpr int64_t kMaxNativeBytes = UINT32_MAX;

/// Most pixels for each byte of a JPG file: a block of 64 samples takes more than one bit, so a file with
/// more lies about its size or has lost nearly everything.
inline constexpr int64_t kMaxJpgPixelsPerByte = 1024;
/// Pixels of all scans of a JPG file. Each scan of a progressive picture passes over all of it; a file with
/// very many in a large picture only wants to keep the machine busy.
inline constexpr int64_t kMaxJpgScannedPixels = int64_t{1} << (30 - kFuzzingShift);

/// Scans of a JPG file that are read however large the picture is, and at most; encoders use about ten for a
/// progressive picture.
inline constexpr int64_t kFewestJpgScans = 24;
inline constexpr int64_t kMostJpgScans = 500;

/// Most bytes that a byte of a deflate stream gives: 258 take at least 2 bits.
inline constexpr uint64_t kMaxInflation = 1032;
/// Bytes of a PNG picture that are inflated at once; larger ones go row by row.
inline constexpr uint64_t kMaxInflatedBytes = uint64_t{1} << 28;

/// One strip or tile of a TIFF file.
inline constexpr uint64_t kMaxTiffBufferBytes = uint64_t{1} << 28;
/// All samples of a TIFF page, decoded: twice the largest picture with four 16-bit samples.
inline constexpr uint64_t kMaxTiffDecodedBytes = uint64_t{1} << 31;
/// What the TIFF library may ask for at once.
inline constexpr int64_t kMaxTiffAllocation = int64_t{1} << 29;

/// Longest file that is read for a preview. Of videos only the beginning is read, whatever their length.
inline constexpr int64_t kMostPreviewBytes = int64_t{256} << 20;
/// How much of an animation is read for a preview.
inline constexpr size_t kMostPreviewFrames = 150;
inline constexpr int64_t kMostPreviewPixels = int64_t{1} << 26;

/// Longest journal that is read.
inline constexpr int64_t kMostJournalBytes = int64_t{1} << 36;
/// A journal is written anew once it has so many times the bytes that it had when it was new, but not below
/// the second number.
inline constexpr uint64_t kMostJournalGrowth = 4;
inline constexpr uint64_t kLeastRewrittenBytes = uint64_t{256} << 10;
