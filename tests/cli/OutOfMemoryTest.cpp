// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/ScriptRunner.h"
#include "platform/memory/HeapBlock.h"
#include "support/TestPictures.h"

#include <gtest/gtest.h>
#include <malloc.h>

#include <atomic>
#include <cstdlib>
#include <new>
#include <sstream>

namespace {

std::atomic<int64_t> newsLeft = -1;  ///< until the heap is full; below 0: it never is
std::atomic<bool> isFull = false;    ///< only what has been given back since can be had
std::atomic<int64_t> bytesFreed = 0; ///< since then

void* TakeFromHeap(size_t bytes)
{
    if (newsLeft >= 0 && newsLeft-- == 0)
        isFull = true;
    void* const block = std::malloc(bytes);
    if (!isFull || block == nullptr)
        return block;
    const auto size = static_cast<int64_t>(malloc_usable_size(block));
    if ((bytesFreed -= size) >= 0)
        return block;
    bytesFreed += size;
    std::free(block);
    return nullptr;
}

/// The heap is full after so many requests of operator new, until the guard goes.
class CFullHeap {
public:
    explicit CFullHeap(int64_t after)
    {
        bytesFreed = 0;
        newsLeft = after;
    }
    ~CFullHeap()
    {
        newsLeft = -1;
        isFull = false;
    }
    CFullHeap(const CFullHeap&) = delete;
    CFullHeap& operator=(const CFullHeap&) = delete;
    [[nodiscard]] static bool WasFull() { return isFull; }
};

} // namespace

// These stand in for the library's functions in this program.
void* operator new(size_t bytes)
{
    while (true) {
        if (void* const block = TakeFromHeap(bytes == 0 ? 1 : bytes))
            return block;
        if (const std::new_handler handler = std::get_new_handler())
            handler();
        else
            throw std::bad_alloc();
    }
}
void* operator new(size_t bytes, const std::nothrow_t&) noexcept
{
    try {
        return operator new(bytes);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}
void operator delete(void* block) noexcept
{
    if (isFull && block != nullptr)
        bytesFreed += static_cast<int64_t>(malloc_usable_size(block));
    std::free(block);
}
void operator delete(void* block, size_t) noexcept
{
    operator delete(block);
}

namespace {

/// A session whose scripts run one after another.
class CScripted {
public:
    /// False when a statement was refused or failed.
    bool Run(const std::string& script)
    {
        std::istringstream input(script);
        std::ostringstream errors;
        return RunScript(m_session, input, {"s", false}, errors) == kAllDone;
    }
    std::string TakeOutput()
    {
        std::string text = m_output.str();
        m_output.str({});
        return text;
    }
    std::string History() { return Printed("print history\nprint modified"); }
    /// Order, attributes and pixels of all objects, and the canvas.
    std::string Objects()
    {
        std::string state = Printed("print canvas\nprint objects");
        for (const Ref<CPicObject>& object : m_session.Canvas().objects) {
            const std::span<const uint8_t> pixels = object->image->Dib().Bits();
            state.append(pixels.begin(), pixels.end());
        }
        return state;
    }

private:
    std::string Printed(const std::string& statements)
    {
        TakeOutput();
        EXPECT_TRUE(Run(statements));
        return TakeOutput();
    }

    std::ostringstream m_output;
    CSession m_session{m_output};
};

struct Row {
    const char* statement;
    const char* before = "";   ///< runs first, with all the memory there is
    const char* undo = "undo"; ///< takes the statement back
};

constexpr const char* kDocument = "new 40 30 #336699\nnew-object\nset PaintLineWidth 5\ntool pencil\n"
                                  "stroke 2 2 30 20 12 25\ntool default\nselect all\n";
constexpr const char* kSelected =
    "tool elliptical-selection\npress 5 5\ndrag 30 25\nrelease 30 25\ntool default";

constexpr Row kRows[] = {
    {"new-object"},
    {"duplicate-objects"},
    {"delete-objects"},
    {"combine"},
    {"make-frame"},
    {"move-to-front", "select 0"},
    {"trim", "select 1"},
    {"resize 50 60"},
    {"properties 1 width=80 height=70", "select 1"},
    {"rename 0 other"},
    {"opacity 0 9"},
    {"align left"},
    {"negative"},
    {"gray"},
    {"mirror vertically"},
    {"mirror horizontally"},
    {"blur 7"},
    {"gaussian-blur 9"},
    {"sharpness 20"},
    {"emboss 30 3 50"},
    {"sunspot 10 10 60"},
    {"brightness-contrast 20 30"},
    {"red-green-blue 10 20 30"},
    {"hue-saturation-lightness 40 20 10"},
    {"rotate 33"},
    {"cut"},
    {"copy"},
    {"copy-merged"},
    {"paste", "copy"},
    {"delete"},
    {"cut", kSelected},
    {"copy", kSelected},
    {"delete", kSelected},
    {"invert-selection", kSelected},
    {"select-all"},
    {"click 10 10 shift", "tool magic-wand-selection"},
    {"stroke 0 0 39 29", "tool pencil"},
    {"stroke 0 0 60 45", "tool pencil"},
    {"stroke 0 0 39 29", "tool erase"},
    {"click 20 15", "tool flood-fill"},
    {"stroke 4 4 30 20", "tool rectangle"},
    {"stroke 4 4 30 20", "tool ellipse"},
    {"text 3 3 words"},
    {"undo", "negative", "redo"},
    {"redo", "blur 5\nundo"},
};

} // namespace

/// Of the figure that the report tells of a row.
std::string PropertyName(const Row& row)
{
    const std::string before = row.before;
    return before.empty() ? row.statement : before.substr(0, before.find('\n')) + ", " + row.statement;
}

/// Whichever block cannot be had, nothing is lost: what the statement did in spite of it can be undone.
TEST(OutOfMemory, LosesNothing)
{
    constexpr int kFailures = 25;
    int all = 0;
    for (const Row& row : kRows) {
        int refused = 0;
        const std::string before = std::string(kDocument) + row.before;
        CScripted plenty;
        ASSERT_TRUE(plenty.Run(before)) << row.before;
        ASSERT_TRUE(plenty.Run(row.statement)) << row.statement;
        for (int after = 0; after < kFailures; ++after) {
            SCOPED_TRACE(std::string(row.before) + " / " + row.statement + " / " + std::to_string(after));
            CScripted scarce;
            ASSERT_TRUE(scarce.Run(before));
            const std::string untouched = scarce.Objects();
            const std::string history = scarce.History();
            {
                const CAllocationFailure failure(after);
                const bool isRefused = !scarce.Run(row.statement);
                refused += isRefused;
                const std::string said = scarce.TakeOutput();
                EXPECT_EQ(said.find("message: Out of Memory!\n") != std::string::npos, isRefused) << said;
            }
            const bool isRecorded = scarce.History() != history;
            EXPECT_TRUE(!isRecorded || scarce.Run(row.undo));
            const bool isBack = scarce.Objects() == untouched;
            EXPECT_TRUE(isBack) << (isRecorded ? "after undo" : "nothing recorded");
        }
        RecordProperty(PropertyName(row), refused);
        all += refused;
    }
    RecordProperty("refused", all);
}

/// What the statement leaves when nothing is lacking. One reserve counts, so no session is left open.
std::string ObjectsAfter(const std::string& before, const std::string& statement)
{
    CScripted plenty;
    EXPECT_TRUE(plenty.Run(before) && plenty.Run(statement)) << statement;
    return plenty.Objects();
}

/// From whichever request of the library on the heap is full, each statement comes to its end as if it were
/// not: what is held back is enough for all that is not pixels.
TEST(OutOfMemory, OfTheLibraryIsNotSeen)
{
    int all = 0;
    for (const Row& row : kRows) {
        int survived = 0;
        const std::string before = std::string(kDocument) + row.before;
        const std::string done = ObjectsAfter(before, row.statement);
        bool wasFull = true;
        for (int64_t after = 0; wasFull; after += 1 + after / 40) {
            SCOPED_TRACE(std::string(row.before) + " / " + row.statement + " / " + std::to_string(after));
            CScripted scarce;
            ASSERT_TRUE(scarce.Run(before));
            bool isDone = false;
            {
                const CFullHeap heap(after);
                isDone = scarce.Run(row.statement);
                wasFull = CFullHeap::WasFull();
            }
            EXPECT_TRUE(isDone);
            EXPECT_TRUE(scarce.Objects() == done);
            survived += wasFull;
        }
        RecordProperty(PropertyName(row), survived);
        all += survived;
    }
    RecordProperty("survived", all);
}
