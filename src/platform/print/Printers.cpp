#include "platform/print/Printers.h"

#include "platform/runtime/RuntimeError.h"

#include <QFile>
#include <QPageSize>
#include <QPdfWriter>
#include <QPrinter>
#include <QPrinterInfo>
#include <QSaveFile>

#include <cmath>

namespace print {

namespace {

constexpr int pdfDotsPerInch = 1200;

[[noreturn]] void refuse(const QString &why)
{
    throw runtime::RuntimeError(runtime::ErrorNumber::InvalidCall, why);
}

QPageLayout layoutOf(const Document &document)
{
    const QPageSize size(document.paper(), QPageSize::Millimeter, QString(),
                         document.paper() == A4 ? QPageSize::FuzzyMatch : QPageSize::ExactMatch);
    QPageLayout layout(size, QPageLayout::Portrait, {});
    layout.setMode(QPageLayout::FullPageMode);
    return layout;
}

/// A printer that does not know the size keeps its own without a word, and prints what fits on it.
bool hasTaken(const QPrinter &printer, const QSizeF &paper)
{
    constexpr double tolerance = 1; // mm: descriptions round
    const QPageLayout layout = printer.pageLayout();
    const QSizeF lacking = layout.fullRect(QPageLayout::Millimeter).size() - paper;
    return layout.mode() == QPageLayout::FullPageMode && std::abs(lacking.width()) <= tolerance
           && std::abs(lacking.height()) <= tolerance;
}

/// False when the device does not take the pages.
template <typename Device>
bool drawOn(Device &device, const Document &document, double dotsPerInch)
{
    QPainter painter;
    if (!painter.begin(&device))
        return false;
    bool first = true;
    for (const Page &page : document.pages()) {
        if (!first && !device.newPage())
            return false;
        first = false;
        drawPage(painter, page, dotsPerInch);
    }
    return painter.end();
}

} // namespace

QStringList printerNames()
{
    QStringList names;
    const QList<QPrinterInfo> printers = QPrinterInfo::availablePrinters();
    for (const QPrinterInfo &printer : printers)
        names << printer.printerName();
    return names;
}

QString defaultPrinter()
{
    const QString name = QPrinterInfo::defaultPrinterName();
    return name.isEmpty() ? QPrinterInfo::availablePrinterNames().value(0) : name;
}

bool isFile(const QString &device)
{
    return device.endsWith(QLatin1String(".pdf"), Qt::CaseInsensitive);
}

bool isPrinter(const QString &name)
{
    return !QPrinterInfo::printerInfo(name).isNull();
}

QSizeF pageSize(const QString &printer)
{
    const QPrinterInfo info = QPrinterInfo::printerInfo(printer);
    const QPageSize size = info.isNull() ? QPageSize() : info.defaultPageSize();
    if (!size.isValid())
        refuse(QStringLiteral("프린터 '%1'의 용지 크기를 알 수 없습니다.").arg(printer));
    return size.size(QPageSize::Millimeter);
}

void send(const Document &document, const QString &device, const QString &title)
{
    if (isFile(device)) {
        savePdf(document, device, title);
        return;
    }
    const QString name = device.isEmpty() ? defaultPrinter() : device;
    if (name.isEmpty())
        refuse(QStringLiteral("이 컴퓨터에 등록된 프린터가 없습니다."));
    const QPrinterInfo info = QPrinterInfo::printerInfo(name);
    if (info.isNull())
        refuse(QStringLiteral("프린터 '%1'을(를) 찾을 수 없습니다.").arg(name));
    QPrinter printer(info, QPrinter::HighResolution);
    printer.setDocName(title);
    printer.setPageLayout(layoutOf(document));
    if (!hasTaken(printer, document.paper()))
        refuse(QStringLiteral("이 문서의 용지 크기를 프린터가 지원하지 않습니다. 다른 프린터를 선택하십시오: ") + name);
    if (!drawOn(printer, document, printer.resolution()))
        refuse(QStringLiteral("프린터 '%1'(으)로 출력하지 못했습니다.").arg(name));
}

void savePdf(const Document &document, const QString &file, const QString &title)
{
    QSaveFile target(file);
    const QString failure = QStringLiteral("PDF 파일을 쓸 수 없습니다: %1").arg(file);
    if (!target.open(QIODevice::WriteOnly))
        refuse(failure);
    {
        QPdfWriter writer(&target);
        writer.setResolution(pdfDotsPerInch);
        writer.setPageLayout(layoutOf(document));
        writer.setTitle(title);
        if (!drawOn(writer, document, pdfDotsPerInch))
            refuse(failure);
    }
    if (!target.commit())
        refuse(failure);
}

} // namespace print
