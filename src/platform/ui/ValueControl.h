// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTimer>
#include <QWidget>

class QSlider;
class QSpinBox;

/// One whole number as an edit box with a spin button and, beside it, a slider; they always show the same
/// value. Two signals: one for every step of a change, one for its end, which is what a costly preview
/// waits for.
class CValueControl final : public QWidget {
    Q_OBJECT

public:
    /// Inclusive ends; tick: distance of the slider's ticks, 0 for no slider at all.
    struct Range {
        int minimum = 0;
        int maximum = 0;
        int tick = 0;
    };

    CValueControl(const Range& range, int value, QWidget* parent = nullptr);
    ~CValueControl() override;

    [[nodiscard]] int Value() const;
    /// Shows the nearest value of the range without reporting it as an edit.
    void SetValue(int value);
    void SetRange(int minimum, int maximum);
    /// What is read out for both parts.
    void SetName(const QString& name);

Q_SIGNALS:
    /// The value changed, by a drag that may go on as well.
    void ValueEdited(int value);
    /// A change came to its end: the slider or the spin button was let go, or a number was typed.
    void ValueCommitted(int value);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void OnEdited(int value);
    void Commit();

    QSlider* m_slider;
    QSpinBox* m_spin;
    QTimer m_pause; ///< typing and the wheel have no end of their own
    int m_committed;
    bool m_held = false;
};
