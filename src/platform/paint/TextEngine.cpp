// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/paint/TextEngine.h"

#include <QCoreApplication>
#include <QGuiApplication>

#include <memory>

namespace {

/// Without a desktop the toolkit complains about folders that only a desktop needs.
class CQuietToolkit {
public:
    CQuietToolkit() : m_before(qInstallMessageHandler([](QtMsgType, const auto&, const QString&) {})) {}
    ~CQuietToolkit() { qInstallMessageHandler(m_before); }
    CQuietToolkit(const CQuietToolkit&) = delete;
    CQuietToolkit& operator=(const CQuietToolkit&) = delete;

private:
    QtMessageHandler m_before;
};

} // namespace

void EnsureTextEngine()
{
    if (QCoreApplication::instance() != nullptr)
        return;
    const CQuietToolkit quiet;
    static int argumentCount = 3;
    static char program[] = "pixolune";
    static char option[] = "-platform";
    static char platform[] = "offscreen";
    static char* arguments[] = {program, option, platform, nullptr};
    static const auto application = std::make_unique<QGuiApplication>(argumentCount, arguments);
}
