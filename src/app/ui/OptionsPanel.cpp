// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/OptionsPanel.h"

#include "app/ui/CommandActions.h"
#include "canvas/ui/PickColorPage.h"
#include "canvas/ui/ToolPage.h"
#include "platform/settings/Settings.h"
#include "platform/ui/ColorButton.h"
#include "platform/ui/QtText.h"
#include "platform/ui/ThemedIcon.h"

#include <QAbstractSpinBox>
#include <QEvent>
#include <QFrame>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QStackedLayout>
#include <QToolButton>

namespace {

using enum CommandId;

/// The buttons of the layout page, row by row.
constexpr std::array<std::array<std::optional<CommandId>, 4>, 3> kLayoutButtons = {{
    {AlignLeft, AlignRight, AlignTop, AlignBottom},
    {CenterHorizontally, CenterVertically, CenterBoth, std::nullopt},
    {ObjectMoveToFront, ObjectMoveForward, ObjectMoveBackward, ObjectMoveToBack},
}};
constexpr int kButtonIcon = 24;

bool IsEndOfTyping(int key)
{
    return key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Escape;
}
/// Shows a page that is as wide as it needs to be and scrolls when it is higher than its room.
class CVerticalScroll final : public QScrollArea {
public:
    explicit CVerticalScroll(QWidget* page)
    {
        setFrameShape(QFrame::NoFrame);
        setFocusPolicy(Qt::NoFocus);
        setWidgetResizable(true);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setWidget(page);
    }

    [[nodiscard]] QSize minimumSizeHint() const override
    {
        const int page = widget()->minimumSizeHint().width();
        return {page + verticalScrollBar()->sizeHint().width(), QScrollArea::minimumSizeHint().height()};
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched == widget() && event->type() == QEvent::LayoutRequest)
            updateGeometry();
        return QScrollArea::eventFilter(watched, event);
    }
};

} // namespace

COptionsPanel::COptionsPanel(CSettings& settings, const CCommandActions& actions, QWidget* parent)
    : QWidget(parent), m_settings(settings), m_actions(actions), m_foreground(new CColorButton),
      m_background(new CColorButton), m_pages(new QStackedLayout)
{
    auto* line = new QFrame;
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);
    auto* content = new QWidget;
    auto* layout = new QVBoxLayout(content);
    layout->addWidget(CreateColors());
    layout->addWidget(line);
    layout->addLayout(m_pages, 1);
    // With large letters a page may be higher than the screen has room for.
    auto* scroll = new CVerticalScroll(content);
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->addWidget(scroll);
    Refresh();
}

QWidget* COptionsPanel::CreateColors()
{
    auto* colors = new QWidget;
    auto* grid = new QGridLayout(colors);
    grid->setContentsMargins(0, 0, 0, 0);
    const struct {
        CColorButton* button;
        Str label;
        Setting setting;
    } rows[] = {{m_foreground, Str::Foreground, Setting::PaintForeColor},
                {m_background, Str::Background, Setting::PaintBackgndColor}};
    int line = 0;
    for (const auto& row : rows) {
        auto* label = new QLabel(ToQString(row.label));
        label->setBuddy(row.button);
        row.button->setAccessibleName(label->text());
        grid->addWidget(label, line, 0);
        grid->addWidget(row.button, line, 1);
        connect(row.button, &CColorButton::ColorEdited, this, [this, setting = row.setting](int32_t color) {
            m_settings.Set(setting, color);
            Refresh();
        });
        ++line;
    }
    const auto addButton = [&](int row, Str name, const char* icon, auto act) {
        auto* button = new QToolButton;
        button->setIcon(ThemedIcon(icon));
        button->setAutoRaise(true);
        button->setToolTip(ToQString(name));
        button->setAccessibleName(button->toolTip());
        connect(button, &QToolButton::clicked, this, act);
        grid->addWidget(button, row, 2);
    };
    addButton(0, Str::SwapColors, "swap-colors", [this] {
        SetColors(m_settings.Get(Setting::PaintBackgndColor), m_settings.Get(Setting::PaintForeColor));
    });
    addButton(1, Str::ResetColors, "reset-colors", [this] {
        SetColors(CSettings::Row(Setting::PaintForeColor).initial,
                  CSettings::Row(Setting::PaintBackgndColor).initial);
    });
    grid->setColumnStretch(1, 1);
    return colors;
}

void COptionsPanel::SetColors(int32_t foreground, int32_t background)
{
    m_settings.Set(Setting::PaintForeColor, foreground);
    m_settings.Set(Setting::PaintBackgndColor, background);
    Refresh();
}

void COptionsPanel::ShowPickedPixel(uint32_t pixel)
{
    if (m_pickPage)
        m_pickPage->ShowPixel(pixel);
}

void COptionsPanel::ShowPage(ToolMode mode)
{
    QWidget*& page = m_pageOf[static_cast<size_t>(mode)];
    if (!page) {
        page = CreatePage(mode);
        m_pages->addWidget(page);
    }
    m_pages->setCurrentWidget(page);
    Refresh();
}

void COptionsPanel::Refresh()
{
    m_foreground->SetColor(m_settings.Get(Setting::PaintForeColor));
    m_background->SetColor(m_settings.Get(Setting::PaintBackgndColor));
    if (QWidget* current = m_pages->currentWidget()) {
        for (auto* page : current->findChildren<CToolPage*>())
            page->Refresh();
    }
}

QWidget* COptionsPanel::CreatePage(ToolMode mode)
{
    auto* page = new QWidget;
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    if (mode == ToolMode::Default) {
        layout->addWidget(CreateLayoutPage());
    } else if (mode == ToolMode::PickColor) {
        layout->addWidget(m_pickPage = new CPickColorPage);
    } else {
        auto* settings = new CToolPage(m_settings, ToolPageRows(mode));
        // The tools that select by a shape show what the magic wand would use.
        settings->setEnabled(mode == ToolMode::MagicWandSelection || !IsSelectionTool(mode));
        layout->addWidget(settings);
    }
    layout->addStretch();
    // A number box would keep the keyboard, and with it the letters that choose tools.
    for (auto* edit : page->findChildren<QAbstractSpinBox*>())
        edit->installEventFilter(this);
    return page;
}

bool COptionsPanel::eventFilter(QObject* watched, QEvent* event)
{
    // Clicks into the number itself go to the line edit inside; those on the arrows come here.
    const bool isDone =
        event->type() == QEvent::MouseButtonRelease ||
        (event->type() == QEvent::KeyPress && IsEndOfTyping(static_cast<const QKeyEvent*>(event)->key()));
    if (isDone)
        QMetaObject::invokeMethod(this, &COptionsPanel::EditingEnded, Qt::QueuedConnection);
    return QWidget::eventFilter(watched, event);
}

QWidget* COptionsPanel::CreateLayoutPage()
{
    auto* page = new QWidget;
    auto* grid = new QGridLayout(page);
    grid->setContentsMargins(0, 0, 0, 0);
    for (size_t line = 0; line < kLayoutButtons.size(); ++line) {
        for (size_t column = 0; column < kLayoutButtons[line].size(); ++column) {
            const std::optional<CommandId> id = kLayoutButtons[line][column];
            QAction* action = id ? m_actions.Find(*id) : nullptr;
            if (!action)
                continue;
            auto* button = new QToolButton;
            button->setDefaultAction(action);
            button->setIconSize({kButtonIcon, kButtonIcon});
            button->setAutoRaise(true);
            grid->addWidget(button, static_cast<int>(line), static_cast<int>(column));
        }
    }
    grid->setColumnStretch(static_cast<int>(kLayoutButtons[0].size()), 1);
    return page;
}
