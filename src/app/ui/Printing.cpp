// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/ui/Printing.h"

#include "app/ui/PageSetupDialog.h"
#include "app/ui/PrintPreviewDialog.h"
#include "fileio/FlattenedFrame.h"
#include "model/PixoluneDoc.h"
#include "platform/ui/QtPicture.h"
#include "platform/ui/QtText.h"
#include "platform/ui/UserInterface.h"

#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>

namespace {

constexpr uint32_t kPaperWhite = 0xFFFFFF;
constexpr double kMillimetresPerInch = 25.4;

} // namespace

bool PrintFrame(const CPixoluneDoc& document, const PageSetup& setup, QPrinter& printer)
{
    const CPackedDib frame = FlattenOver(document.Canvas(), kPaperWhite);
    const QImage picture = ToQImage(frame).convertToFormat(QImage::Format_RGB32);
    QPainter painter;
    if (picture.isNull() || !painter.begin(&printer))
        return false;
    painter.setRenderHint(QPainter::SmoothPixmapTransform, setup.fitsPage);
    painter.setRenderHint(QPainter::LosslessImageRendering);
    const double scale = printer.resolution() / kMillimetresPerInch;
    painter.scale(scale, scale);
    const QRectF room(QPointF(), setup.page.paintRect(QPageLayout::Millimeter).size());
    painter.setClipRect(room);
    bool isFirst = true;
    for (const QRectF& place : FrameOnPages(picture.size(), setup)) {
        if (!isFirst && !printer.newPage())
            return false;
        isFirst = false;
        painter.drawImage(place, picture);
    }
    return painter.end();
}

void CPrinting::Prepare(QPrinter& printer, const CPixoluneDoc& document) const
{
    printer.setPageLayout(PageSetup::Load(m_configuration).page);
    printer.setDocName(ToQString(document.Title()));
}

bool CPrinting::SetUpPage(QWidget& parent)
{
    CPageSetupDialog dialog(PageSetup::Load(m_configuration), &parent);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    dialog.Setup().Save(m_configuration);
    return true;
}

bool CPrinting::PrintOn(QPrinter& printer, const CPixoluneDoc& document)
{
    // The printer's own dialogs may have changed the page.
    PageSetup setup = PageSetup::Load(m_configuration);
    setup.page = printer.pageLayout();
    setup.page.setUnits(QPageLayout::Millimeter);
    return PrintFrame(document, setup, printer);
}

bool CPrinting::Print(const CPixoluneDoc& document)
{
    QPrinter printer(QPrinter::HighResolution);
    Prepare(printer, document);
    return Print(printer, document);
}

bool CPrinting::Print(QPrinter& printer, const CPixoluneDoc& document)
{
    QPrintDialog dialog(&printer, &m_window);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    if (PrintOn(printer, document))
        return true;
    document.Services().ui.ShowMessage(std::string(Text(Str::PrintFailed)));
    return false;
}

bool CPrinting::Preview(const CPixoluneDoc& document)
{
    QPrinter printer(QPrinter::HighResolution);
    Prepare(printer, document);
    const auto paint = [&](QPrinter& target) { PrintOn(target, document); };
    const auto setUpPage = [&](QWidget& parent) {
        const bool isChanged = SetUpPage(parent);
        Prepare(printer, document);
        return isChanged;
    };
    CPrintPreviewDialog dialog(printer, paint, setUpPage, &m_window);
    dialog.resize(m_window.size() * 3 / 4);
    return dialog.exec() == QDialog::Accepted && Print(printer, document);
}
