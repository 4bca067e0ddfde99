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

/// Whichever block cannot be had, nothing is lost: what the statement did in spite of it can be undone.
TEST(OutOfMemory, LosesNothing)
{
    constexpr int kFailures = 25;
    for (const Row& row : kRows) {
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
                const std::string said = scarce.TakeOutput();
                EXPECT_EQ(said.find("message: Out of Memory!\n") != std::string::npos, isRefused) << said;
            }
            const bool isRecorded = scarce.History() != history;
            EXPECT_TRUE(!isRecorded || scarce.Run(row.undo));
            const bool isBack = scarce.Objects() == untouched;
            EXPECT_TRUE(isBack) << (isRecorded ? "after undo" : "nothing recorded");
        }
    }
}
