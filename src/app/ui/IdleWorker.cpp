// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/IdleWorker.h"

#include "app/PixoluneApp.h"

#include <QApplication>

#include <chrono>

namespace {

using namespace std::chrono_literals;

constexpr auto kDelay = 50ms;
constexpr auto kDelayInDialog = 200ms;
constexpr auto kPause = 5ms;
constexpr auto kStep = 2ms;

} // namespace

CIdleWorker::CIdleWorker(CPixoluneApp& app, QObject* parent) : QObject(parent), m_app(app)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &CIdleWorker::Work);
}

void CIdleWorker::Wake()
{
    if (!m_timer.isActive())
        m_timer.start(kDelay);
}

void CIdleWorker::Work()
{
    // What a dialog previews may be taken back.
    const bool isInDialog = QApplication::activeModalWidget() != nullptr;
    if (CJournal* journal = m_app.Journal(); journal != nullptr && !isInDialog)
        journal->Note();
    if (m_app.WorkWhileIdle(kStep))
        m_timer.start(kPause);
    else if (isInDialog)
        m_timer.start(kDelayInDialog);
}
