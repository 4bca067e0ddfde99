// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "document/PropertiesSession.h"
#include "document/SizeEntry.h"
#include "platform/ui/Mnemonics.h"

#include <QDialog>

#include <array>

class CValueControl;
class QCheckBox;
class QComboBox;
class QLineEdit;
class QWidget;

/// Name, flags, transparency, place and size of one object. Every change is seen at once.
class CPropertiesDialog final : public QDialog {
    Q_OBJECT

public:
    /// window: the main window.
    CPropertiesDialog(CPixoluneDoc& document, Ref<CPicObject> object, QWidget* window);

    void accept() override;
    void reject() override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    enum class Side : size_t { Width, Height };

    [[nodiscard]] QWidget* CreateLocation(Mnemonics& mnemonics);
    [[nodiscard]] QWidget* CreateDimension(Mnemonics& mnemonics);
    void EnablePlace();
    /// A value of the size changed; the other one may follow.
    void Edit(Side side, int value);
    void ShowUnit();
    /// Scales the object's picture to the size that the controls show.
    void ApplySize();
    [[nodiscard]] bool IsPercent() const;

    CPropertiesSession m_session;
    CSizeEntry m_entry;
    QLineEdit* m_name;
    QCheckBox* m_visible;
    CValueControl* m_transparency;
    std::array<CValueControl*, 2> m_place{}; ///< left, top
    QCheckBox* m_lock;
    std::array<CValueControl*, 2> m_size{}; ///< width, height, in the unit chosen
    QComboBox* m_unit;
    QCheckBox* m_preserveRatio;
};
