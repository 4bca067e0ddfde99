// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

/// Name, version and licence of the program and of the libraries that it works with.
class CAboutDialog final : public QDialog {
    Q_OBJECT

public:
    explicit CAboutDialog(QWidget* parent);
};
