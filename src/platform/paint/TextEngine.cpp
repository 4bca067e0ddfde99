// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/paint/TextEngine.h"

#include <QCoreApplication>
#include <QGuiApplication>

#include <memory>

void EnsureTextEngine()
{
    if (QCoreApplication::instance() != nullptr)
        return;
    static int argumentCount = 3;
    static char program[] = "pixolune";
    static char option[] = "-platform";
    static char platform[] = "offscreen";
    static char* arguments[] = {program, option, platform, nullptr};
    static const auto application = std::make_unique<QGuiApplication>(argumentCount, arguments);
}
