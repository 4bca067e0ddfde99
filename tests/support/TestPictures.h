// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "model/PixoluneDoc.h"
#include "platform/dib/PackedDib.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <initializer_list>
#include <string>

/// Every byte random; the same seed gives the same picture.
CPackedDib RandomDib(int width, int height, uint32_t seed, int bitCount = 32);

/// A 32-bit picture from 0xAARRGGBB values, top row first.
CPackedDib DibOf(int width, int height, std::initializer_list<uint32_t> pixels);

/// One colour everywhere, 0xAARRGGBB.
CPackedDib UniformDib(int width, int height, uint32_t pixel);

/// 0xAARRGGBB at (x, y), y from the top.
uint32_t PixelOf(const CPackedDib& dib, int x, int y);

/// Same size, depth and bytes; a failure names the first pixels that differ.
testing::AssertionResult SameBytes(const CPackedDib& a, const CPackedDib& b);

/// What leads from a picture to another of its size; both of 32 bits.
CPixelChanges ChangesBetween(const CPackedDib& a, const CPackedDib& b);

/// A visible object, named, at (x, y).
Ref<CPicObject> ObjectAt(CPackedDib dib, int x, int y, const std::string& name = "object");

/// A file of the collection of real files, which may be absent.
std::filesystem::path CorpusPath(const std::string& relativePath);

/// The same; skips the test, visibly, where it is absent.
#define REQUIRE_CORPUS(pathVariable, relativePath)                                                           \
    const std::filesystem::path pathVariable = CorpusPath(relativePath);                                     \
    if (!std::filesystem::exists(pathVariable))                                                              \
    GTEST_SKIP() << "no file " << (relativePath)

/// A folder of its own that goes away with its owner.
class CTemporaryFolder {
public:
    CTemporaryFolder();
    ~CTemporaryFolder();
    CTemporaryFolder(const CTemporaryFolder&) = delete;
    CTemporaryFolder& operator=(const CTemporaryFolder&) = delete;
    [[nodiscard]] const std::filesystem::path& Path() const { return m_path; }
    [[nodiscard]] std::filesystem::path File(const std::string& name) const { return m_path / name; }

private:
    std::filesystem::path m_path;
};
