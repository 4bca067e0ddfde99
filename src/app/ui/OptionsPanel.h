// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "canvas/ToolMode.h"

#include <QWidget>

#include <array>

class CColorButton;
class CPickColorPage;
class CCommandActions;
class CSettings;
class CToolPage;
class QStackedLayout;

/// The Options Panel: the two paint colours, and the page of the current tool. The default tool, which
/// selects and moves objects, has the layout page. Pages are made when they are shown for the first time.
class COptionsPanel final : public QWidget {
    Q_OBJECT

public:
    COptionsPanel(CSettings& settings, const CCommandActions& actions, QWidget* parent);

    /// Shows the page of the mode, with the settings as they are now.
    void ShowPage(ToolMode mode);
    /// The colour picker is over a pixel, 0xAARRGGBB.
    void ShowPickedPixel(uint32_t pixel);
    /// Shows the settings as they are now.
    void Refresh();

Q_SIGNALS:
    /// Whoever had the keyboard in here is done with it: the keys are the canvas's again.
    void EditingEnded();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* CreateColors();
    QWidget* CreatePage(ToolMode mode);
    QWidget* CreateLayoutPage();
    void SetColors(int32_t foreground, int32_t background);

    CSettings& m_settings;
    const CCommandActions& m_actions;
    CColorButton* m_foreground;
    CColorButton* m_background;
    CPickColorPage* m_pickPage = nullptr; ///< none before the colour picker is used
    QStackedLayout* m_pages;
    std::array<QWidget*, kToolModeCount> m_pageOf{};
};
