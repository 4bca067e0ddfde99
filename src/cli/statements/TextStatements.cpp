// SPDX-License-Identifier: GPL-3.0-or-later
#include "canvas/TextSession.h"
#include "cli/statements/StatementFamilies.h"

#include <array>
#include <optional>

namespace {

constexpr int kLargestFontSize = 1000;

/// Stands in for the window that would show the Add Text dialog.
class CTextPoint final : public IViewHost {
public:
    explicit CTextPoint(CPixoluneView& view) : m_view(view) { m_view.SetHost(this); }
    ~CTextPoint() override { m_view.SetHost(nullptr); }
    CTextPoint(const CTextPoint&) = delete;
    CTextPoint& operator=(const CTextPoint&) = delete;

    void OnTextPoint(Point documentPoint) override { m_asked = documentPoint; }
    /// Where the tool asked for a text; none for a click outside the document.
    [[nodiscard]] const std::optional<Point>& Asked() const { return m_asked; }

private:
    CPixoluneView& m_view;
    std::optional<Point> m_asked;
};

/// The dialog's values: the settings', then what the statement changes of them.
TextStyle TakeStyle(const CSettings& settings, CArguments& arguments)
{
    enum Key : size_t { Font, Size, Smooth, Vertical };
    constexpr std::array<std::string_view, 4> kKeys{"font", "size", "smooth", "vertical"};
    TextStyle style = TextStyleFromSettings(settings);
    style.text = arguments.Word("TEXT");
    while (const std::optional<KeyValue> option = arguments.Option(kKeys)) {
        const auto number = [&](int minimum, int maximum) {
            return arguments.IntegerOf(kKeys[option->key], option->value, minimum, maximum);
        };
        switch (option->key) {
        case Font:
            style.family = option->value;
            break;
        case Size:
            style.size = number(1, kLargestFontSize);
            break;
        case Smooth:
            style.smooth = number(0, 1) != 0;
            break;
        default:
            style.vertical = number(0, 1) != 0;
            break;
        }
    }
    return style;
}

Outcome AddText(CSession& session, CArguments& arguments)
{
    const Point point = arguments.Coordinates();
    const TextStyle style = TakeStyle(session.Settings(), arguments);
    if (!arguments.Finish())
        return Outcome::ScriptError;
    session.RunMenuCommand(CommandId::ToolText);
    CPixoluneView& view = session.View();
    const CTextPoint host(view);
    MouseInput input;
    input.client = session.ToClient(point);
    input.button = MouseButton::Left;
    view.Press(input);
    view.Release(input);
    if (host.Asked())
        CTextSession(view, *host.Asked()).Ok(style);
    return Outcome::Done;
}

constexpr StatementRow kRows[] = {
    {"text", "X Y TEXT [font=F] [size=N] [smooth=0|1] [vertical=0|1]",
     "Clicks with the text tool and writes a text there.", Needs::Document, AddText},
};

} // namespace

std::span<const StatementRow> TextStatements()
{
    return kRows;
}
