// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/TextSession.h"
#include "support/Cases.h"
#include "support/Inputs.h"
#include "support/Workbench.h"

#include <memory>

namespace {

/// So many characters, a line after every `inLine` of them.
std::string Written(int characters, int inLine)
{
    std::string text;
    for (int i = 0; i < characters; ++i)
        text += i % inLine == inLine - 1 ? '\n' : static_cast<char>('a' + i % 26);
    return text;
}

/// One more character: the preview is painted again, and what it touches of the window.
void AddTyping(const char* operation, const char* size, int characters, int inLine, bool vertical)
{
    AddCase({operation, size, "ours"}, [=] {
        struct State {
            CWorkbench bench{BackdropPicture(12).Duplicate()};
            CTextSession session{bench.View(), {10, 10}};
            TextStyle style;
        };
        auto state = std::make_shared<State>();
        state->style = TextStyleFromSettings(state->bench.Settings());
        state->style.text = Written(characters, inLine);
        state->style.vertical = vertical;
        return [state] {
            state->style.text.back() = state->style.text.back() == 'x' ? 'y' : 'x';
            state->session.Preview(state->style);
            state->bench.PaintInvalidated();
        };
    });
}

const bool kRegistered = [] {
    AddTyping("text/type-in-lines-of-50", "1000-characters", 1000, 50, false);
    AddTyping("text/type-in-one-line", "1000-characters", 1000, 1001, false);
    AddTyping("text/type-upright", "1000-characters", 1000, 50, true);
    return true;
}();

} // namespace
