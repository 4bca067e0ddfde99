// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/settings/Settings.h"

class QSettings;

/// The group of the user's configuration that holds the program's settings: the registry on Windows, an
/// INI file elsewhere.
class CSettingsStore final : public ISettingsStore {
public:
    explicit CSettingsStore(QSettings& configuration) : m_configuration(configuration) {}

    [[nodiscard]] std::optional<int32_t> Read(std::string_view name) const override;
    void Write(std::string_view name, int32_t value) override;

private:
    QSettings& m_configuration;
};
