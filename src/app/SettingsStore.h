// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/settings/Settings.h"

#include <memory>

class QSettings;

/// The group of the user's configuration that holds the program's settings: the registry on Windows, an
/// INI file elsewhere.
class CSettingsStore final : public ISettingsStore {
public:
    /// A configuration that is open already.
    explicit CSettingsStore(QSettings& configuration);
    /// Opens the configuration of the user; written when the store goes.
    CSettingsStore();
    ~CSettingsStore() override;

    [[nodiscard]] std::optional<int32_t> Read(std::string_view name) const override;
    void Write(std::string_view name, int32_t value) override;

private:
    std::unique_ptr<QSettings> m_owned;
    QSettings& m_configuration;
};

/// The configuration of the user: settings, and the state of the windows.
[[nodiscard]] std::unique_ptr<QSettings> OpenUserConfiguration();
