// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/PageSetupDialog.h"

#include "platform/ui/QtText.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QRadioButton>

namespace {

constexpr QPageSize::PageSizeId kPapers[] = {
    QPageSize::A3,      QPageSize::A4,        QPageSize::A5,       QPageSize::A6,
    QPageSize::B4,      QPageSize::B5,        QPageSize::Letter,   QPageSize::Legal,
    QPageSize::Tabloid, QPageSize::Executive, QPageSize::Postcard,
};
constexpr double kLargestMargin = 100;
constexpr double kLargestOffset = 1000;

QDoubleSpinBox* Millimetres(double value, double largest, Str name)
{
    auto* box = new QDoubleSpinBox;
    box->setRange(0, largest);
    box->setDecimals(1);
    box->setSuffix(ToQString(Str::Millimetres));
    box->setValue(value);
    box->setAccessibleName(ToQString(name).remove(QLatin1Char('&')));
    return box;
}

} // namespace

CPageSetupDialog::CPageSetupDialog(const PageSetup& setup, QWidget* parent) : QDialog(parent)
{
    setWindowTitle(ToQString(Str::PageSetup));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* groups = new QGridLayout;
    groups->addWidget(CreatePaper(setup), 0, 0);
    groups->addWidget(CreateMargins(setup), 0, 1);
    groups->addWidget(CreateScale(setup), 1, 0);
    groups->addWidget(CreatePosition(setup), 1, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(groups);
    layout->addStretch();
    layout->addWidget(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

QWidget* CPageSetupDialog::CreatePaper(const PageSetup& setup)
{
    auto* group = new QGroupBox(ToQString(Str::Paper));
    auto* rows = new QFormLayout(group);
    m_paper = new QComboBox;
    for (const QPageSize::PageSizeId id : kPapers)
        m_paper->addItem(QPageSize::name(id), static_cast<int>(id));
    if (m_paper->findData(static_cast<int>(setup.page.pageSize().id())) < 0)
        m_paper->addItem(setup.page.pageSize().name(), static_cast<int>(setup.page.pageSize().id()));
    m_paper->setCurrentIndex(m_paper->findData(static_cast<int>(setup.page.pageSize().id())));
    m_portrait = new QRadioButton(ToQString(Str::Portrait));
    m_landscape = new QRadioButton(ToQString(Str::Landscape));
    (setup.page.orientation() == QPageLayout::Landscape ? m_landscape : m_portrait)->setChecked(true);
    rows->addRow(ToQString(Str::PaperSize), m_paper);
    rows->addRow(m_portrait);
    rows->addRow(m_landscape);
    return group;
}

QWidget* CPageSetupDialog::CreateMargins(const PageSetup& setup)
{
    auto* group = new QGroupBox(ToQString(Str::Margins));
    auto* rows = new QFormLayout(group);
    const QMarginsF margins = setup.page.margins(QPageLayout::Millimeter);
    const struct {
        Str label;
        double value;
    } sides[] = {{Str::MarginLeft, margins.left()},
                 {Str::MarginTop, margins.top()},
                 {Str::MarginRight, margins.right()},
                 {Str::MarginBottom, margins.bottom()}};
    for (size_t i = 0; i < m_margins.size(); ++i) {
        m_margins[i] = Millimetres(sides[i].value, kLargestMargin, sides[i].label);
        rows->addRow(ToQString(sides[i].label), m_margins[i]);
    }
    return group;
}

QWidget* CPageSetupDialog::CreateScale(const PageSetup& setup)
{
    auto* group = new QGroupBox(ToQString(Str::PrintScale));
    auto* rows = new QVBoxLayout(group);
    m_fitsPage = new QRadioButton(ToQString(Str::FitPage));
    m_actualSize = new QRadioButton(ToQString(Str::ActualSizeAt));
    m_resolution = new QSpinBox;
    m_resolution->setRange(kMinResolution, kMaxResolution);
    m_resolution->setSuffix(ToQString(Str::PixelsPerInch));
    m_resolution->setValue(setup.resolution);
    m_resolution->setAccessibleName(m_actualSize->text().remove(QLatin1Char('&')));
    m_resolution->setEnabled(!setup.fitsPage);
    connect(m_actualSize, &QRadioButton::toggled, m_resolution, &QWidget::setEnabled);
    (setup.fitsPage ? m_fitsPage : m_actualSize)->setChecked(true);
    rows->addWidget(m_fitsPage);
    rows->addWidget(m_actualSize);
    rows->addWidget(m_resolution);
    rows->addStretch();
    return group;
}

QWidget* CPageSetupDialog::CreatePosition(const PageSetup& setup)
{
    auto* group = new QGroupBox(ToQString(Str::PrintPosition));
    auto* rows = new QFormLayout(group);
    m_centered = new QCheckBox(ToQString(Str::CenteredOnPage));
    m_centered->setChecked(setup.isCentered);
    rows->addRow(m_centered);
    m_offset = {Millimetres(setup.offset.x(), kLargestOffset, Str::FromLeftMargin),
                Millimetres(setup.offset.y(), kLargestOffset, Str::FromTopMargin)};
    rows->addRow(ToQString(Str::FromLeftMargin), m_offset[0]);
    rows->addRow(ToQString(Str::FromTopMargin), m_offset[1]);
    for (QDoubleSpinBox* box : m_offset) {
        box->setDisabled(setup.isCentered);
        connect(m_centered, &QCheckBox::toggled, box, &QWidget::setDisabled);
    }
    return group;
}

PageSetup CPageSetupDialog::Setup() const
{
    PageSetup setup;
    const QPageSize paper(static_cast<QPageSize::PageSizeId>(m_paper->currentData().toInt()));
    setup.page = QPageLayout(
        paper, m_landscape->isChecked() ? QPageLayout::Landscape : QPageLayout::Portrait,
        QMarginsF(m_margins[0]->value(), m_margins[1]->value(), m_margins[2]->value(), m_margins[3]->value()),
        QPageLayout::Millimeter);
    setup.fitsPage = m_fitsPage->isChecked();
    setup.resolution = m_resolution->value();
    setup.isCentered = m_centered->isChecked();
    setup.offset = {m_offset[0]->value(), m_offset[1]->value()};
    return setup;
}
