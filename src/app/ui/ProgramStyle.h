// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QProxyStyle>

/// The desktop's style with the program's own icons: in file dialogs and message boxes those of its family,
/// on the buttons that end a dialog none.
class CProgramStyle final : public QProxyStyle {
    Q_OBJECT

public:
    [[nodiscard]] QIcon standardIcon(StandardPixmap icon, const QStyleOption* option = nullptr,
                                     const QWidget* widget = nullptr) const override;
    [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption* option = nullptr,
                                const QWidget* widget = nullptr,
                                QStyleHintReturn* returnData = nullptr) const override;
};
