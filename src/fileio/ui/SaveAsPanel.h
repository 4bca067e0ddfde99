// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fileio/SaveAs.h"
#include "platform/settings/Settings.h"

#include <QWidget>

#include <functional>
#include <vector>

class QGroupBox;
class QVBoxLayout;

/// The options of one format, below the file controls of its Save dialog. Starts from the settings.
class CSaveAsPanel final : public QWidget {
    Q_OBJECT

public:
    CSaveAsPanel(SavePanel kind, const CSettings& settings, Size canvas, QWidget* parent = nullptr);

    /// Copies the values shown into the settings and the options of this save.
    void Store(CSettings& settings, SaveAsOptions& options) const;

Q_SIGNALS:
    /// Store would give something else now.
    void Changed();

private:
    struct Choice {
        Str text;
        int value;
    };
    using Take = std::function<void(CSettings&, SaveAsOptions&)>;

    void AddQuality(int quality);
    [[nodiscard]] QGroupBox* AddGroup(Str title);
    void AddCheckBox(QVBoxLayout& layout, Str text, Setting setting, const CSettings& settings);
    void AddChoices(Str title, std::span<const Choice> choices, int current,
                    std::function<void(CSettings&, SaveAsOptions&, int)> take);
    void AddFillColor(int32_t color);
    void AddHotSpot(Size canvas);

    QVBoxLayout* m_layout;
    std::vector<Take> m_takes;
};
