// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/SettingsStore.h"

#include "platform/ui/QtText.h"

#include <QSettings>

namespace {

QString Key(std::string_view name)
{
    return QStringLiteral("Default/") + ToQString(name);
}

} // namespace

CSettingsStore::CSettingsStore(QSettings& configuration) : m_configuration(configuration) {}

CSettingsStore::CSettingsStore() : m_owned(OpenUserConfiguration()), m_configuration(*m_owned) {}

CSettingsStore::~CSettingsStore() = default;

std::optional<int32_t> CSettingsStore::Read(std::string_view name) const
{
    bool isNumber = false;
    const qlonglong value = m_configuration.value(Key(name)).toLongLong(&isNumber);
    if (!isNumber)
        return std::nullopt;
    return static_cast<int32_t>(value);
}

void CSettingsStore::Write(std::string_view name, int32_t value)
{
    m_configuration.setValue(Key(name), value);
}

std::unique_ptr<QSettings> OpenUserConfiguration()
{
    return std::make_unique<QSettings>(QStringLiteral("Morvandelite"),
                                       QStringLiteral("Morvandelite Pixolune"));
}
