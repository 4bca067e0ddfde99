// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imageops/TransformSession.h"
#include "platform/ui/Mnemonics.h"

#include <QDialog>

#include <functional>

class CAngleChooser;
class QCheckBox;
class QGridLayout;

/// The dialog of an image operation: a control for each of its parameters, made from its row of the table,
/// with the result shown in the document each time a control comes to rest.
class CTransformDlg final : public QDialog {
    Q_OBJECT

public:
    /// The document must have something to work on. window: the main window.
    CTransformDlg(CPixoluneDoc& document, const TransformRow& transform, QWidget* window);

    /// Starts with another of the usual angles, shown at once; none: with one to be typed.
    void Choose(std::optional<int> value);

    void accept() override;
    void reject() override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void AddSlider(const TransformParameter& parameter, QGridLayout& grid, int row);
    void AddChooser(const TransformParameter& parameter, QGridLayout& grid, int row);
    [[nodiscard]] std::vector<int> Values() const;
    void Preview();

    CTransformSession m_session;
    std::vector<std::function<int()>> m_values; ///< what each control shows
    CAngleChooser* m_chooser = nullptr;
    QCheckBox* m_preview;
    Mnemonics m_mnemonics;
};
