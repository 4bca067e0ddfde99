// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/ui/ValueControl.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>

namespace {

/// Long enough to type the next digit.
constexpr int kPauseMs = 400;
constexpr int kUsualSliderWidth = 200;
constexpr int kLeastSliderWidth = 80;
/// Boxes that stand below each other are to be of one width: that of this number.
constexpr int kWidestNumber = -9999;

/// Wide where there is room for it, as in a dialog; in a narrow panel it gives way.
class CSlider final : public QSlider {
public:
    using QSlider::QSlider;

    [[nodiscard]] QSize sizeHint() const override
    {
        return {kUsualSliderWidth, QSlider::sizeHint().height()};
    }
    [[nodiscard]] QSize minimumSizeHint() const override
    {
        return {kLeastSliderWidth, QSlider::minimumSizeHint().height()};
    }
};

bool IsSteppingKey(int key)
{
    switch (key) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Home:
    case Qt::Key_End:
        return true;
    default:
        return false;
    }
}

} // namespace

CValueControl::CValueControl(const Range& range, int value, QWidget* parent)
    : QWidget(parent), m_slider(range.tick > 0 ? new CSlider(Qt::Horizontal, this) : nullptr),
      m_spin(new QSpinBox(this)), m_committed(value)
{
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    if (m_slider) {
        m_slider->setTickPosition(QSlider::TicksBelow);
        m_slider->setTickInterval(range.tick);
        m_slider->setPageStep(range.tick);
        m_slider->installEventFilter(this);
        layout->addWidget(m_slider, 1);
        connect(m_slider, &QSlider::valueChanged, this, &CValueControl::OnEdited);
        connect(m_slider, &QSlider::sliderReleased, this, &CValueControl::Commit);
    }
    m_spin->setAccelerated(true);
    m_spin->installEventFilter(this);
    layout->addWidget(m_spin);
    connect(m_spin, &QSpinBox::valueChanged, this, &CValueControl::OnEdited);
    connect(m_spin, &QSpinBox::editingFinished, this, &CValueControl::Commit);
    setFocusProxy(m_spin);

    m_pause.setSingleShot(true);
    m_pause.setInterval(kPauseMs);
    connect(&m_pause, &QTimer::timeout, this, &CValueControl::Commit);

    m_spin->setRange(kWidestNumber, 0);
    m_spin->setMinimumWidth(m_spin->sizeHint().width());
    SetRange(range.minimum, range.maximum);
    SetValue(value);
}

CValueControl::~CValueControl()
{
    // The parts outlive this body, and one that loses the focus then still reports its end of editing.
    m_spin->disconnect(this);
    m_spin->removeEventFilter(this);
    if (m_slider) {
        m_slider->disconnect(this);
        m_slider->removeEventFilter(this);
    }
}

int CValueControl::Value() const
{
    return m_spin->value();
}

void CValueControl::SetValue(int value)
{
    const QSignalBlocker quietSpin(m_spin);
    m_spin->setValue(value);
    m_committed = m_spin->value();
    m_pause.stop();
    if (m_slider) {
        const QSignalBlocker quietSlider(m_slider);
        m_slider->setValue(m_committed);
    }
}

void CValueControl::SetRange(int minimum, int maximum)
{
    const QSignalBlocker quietSpin(m_spin);
    m_spin->setRange(minimum, maximum);
    if (m_slider) {
        const QSignalBlocker quietSlider(m_slider);
        m_slider->setRange(minimum, maximum);
    }
}

void CValueControl::SetName(const QString& name)
{
    m_spin->setAccessibleName(name);
    if (m_slider)
        m_slider->setAccessibleName(name);
}

void CValueControl::OnEdited(int value)
{
    // A number being typed is not to be written anew.
    if (m_spin->value() != value) {
        const QSignalBlocker quietSpin(m_spin);
        m_spin->setValue(value);
    }
    if (m_slider) {
        const QSignalBlocker quietSlider(m_slider);
        m_slider->setValue(value);
    }
    if (!m_held)
        m_pause.start();
    Q_EMIT ValueEdited(value);
}

void CValueControl::Commit()
{
    m_pause.stop();
    if (Value() == m_committed)
        return;
    m_committed = Value();
    Q_EMIT ValueCommitted(m_committed);
}

bool CValueControl::eventFilter(QObject* watched, QEvent* event)
{
    const auto isSteppingKey = [event] {
        const auto* key = static_cast<QKeyEvent*>(event);
        return !key->isAutoRepeat() && IsSteppingKey(key->key());
    };
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        m_held = true;
        break;
    case QEvent::KeyPress:
        m_held = m_held || isSteppingKey();
        break;
    case QEvent::KeyRelease:
        if (!isSteppingKey())
            break;
        [[fallthrough]];
    case QEvent::MouseButtonRelease:
    case QEvent::FocusOut:
        m_held = false;
        Commit();
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}
