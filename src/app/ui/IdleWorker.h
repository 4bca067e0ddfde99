// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QTimer>

class CPixoluneApp;

/// Does what can wait, in steps short enough to go unnoticed, from soon after a change until all is done.
class CIdleWorker final : public QObject {
    Q_OBJECT

public:
    CIdleWorker(CPixoluneApp& app, QObject* parent);

    /// Something has changed.
    void Wake();

private:
    void Work();

    CPixoluneApp& m_app;
    QTimer m_timer;
};
