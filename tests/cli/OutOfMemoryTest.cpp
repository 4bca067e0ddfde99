// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/ScriptRunner.h"
#include "platform/memory/HeapBlock.h"
#include "support/TestPictures.h"

#include <gtest/gtest.h>

#include <sstream>

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
    /// All that can be seen of the current document, pixels included.
    std::string State()
    {
        TakeOutput();
        EXPECT_TRUE(Run("print canvas\nprint objects\nprint history\nprint selection\nprint modified"));
        std::string state = TakeOutput();
        for (const Ref<CPicObject>& object : m_session.Canvas().objects) {
            const std::span<const uint8_t> pixels = object->image->Dib().Bits();
            state.append(pixels.begin(), pixels.end());
        }
        return state;
    }

private:
    std::ostringstream m_output;
    CSession m_session{m_output};
};

struct Row {
    const char* statement;
    const char* before = ""; ///< runs first, with all the memory there is
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
    {"emboss 30 40 50"},
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
    {"undo", "negative"},
    {"redo", "blur 5\nundo"},
};

} // namespace

/// Whichever block cannot be had: the statement does all of its work, or none and says so.
TEST(OutOfMemory, LeavesTheDocumentAsItWas)
{
    constexpr int kFailures = 25;
    for (const Row& row : kRows) {
        SCOPED_TRACE(std::string(row.before) + " / " + row.statement);
        const std::string before = std::string(kDocument) + row.before;
        CScripted plenty;
        ASSERT_TRUE(plenty.Run(before));
        ASSERT_TRUE(plenty.Run(row.statement));
        const std::string done = plenty.State();
        int refused = 0;
        for (int after = 0; after < kFailures; ++after) {
            SCOPED_TRACE(after);
            CScripted scarce;
            ASSERT_TRUE(scarce.Run(before));
            const std::string untouched = scarce.State();
            bool isDone = false;
            {
                const CAllocationFailure failure(after);
                isDone = scarce.Run(row.statement);
            }
            const std::string said = scarce.TakeOutput();
            ASSERT_TRUE(scarce.State() == (isDone ? done : untouched));
            if (!isDone) {
                EXPECT_NE(said.find("message: Out of Memory!"), std::string::npos) << said;
                ++refused;
            }
        }
        EXPECT_LT(refused, kFailures);
    }
}
