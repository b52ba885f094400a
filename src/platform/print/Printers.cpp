#include "platform/print/Printers.h"

#include "platform/runtime/RuntimeError.h"

#include <QBuffer>
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
    const bool lying = document.paper() == A4.transposed();
    const QSizeF paper = lying ? A4 : document.paper();
    const QPageSize size(paper, QPageSize::Millimeter, QString(),
                         paper == A4 ? QPageSize::FuzzyMatch : QPageSize::ExactMatch);
    QPageLayout layout(size, lying ? QPageLayout::Landscape : QPageLayout::Portrait, {});
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

enum class Drawn { Whole, Refused, Stopped };

template <typename Device>
Drawn drawOn(Device &device, const Document &document, double dotsPerInch, const Progress &progress)
{
    QPainter painter;
    if (!painter.begin(&device))
        return Drawn::Refused;
    int number = 0;
    for (const Page &page : document.pages()) {
        if (number++ > 0 && !device.newPage())
            return Drawn::Refused;
        drawPage(painter, page, document.scale() * dotsPerInch);
        if (progress && !progress(number))
            return Drawn::Stopped;
    }
    return painter.end() ? Drawn::Whole : Drawn::Refused;
}

Drawn drawAsPdf(QIODevice &target, const Document &document, const QString &title, const Progress &progress)
{
    QPdfWriter writer(&target);
    writer.setResolution(pdfDotsPerInch);
    writer.setPageLayout(layoutOf(document));
    writer.setTitle(title);
    return drawOn(writer, document, pdfDotsPerInch, progress);
}

/// A printer cannot be stopped any more once it was begun: what may be stopped is drawn once for nobody.
bool wasStopped(const Document &document, const Progress &progress)
{
    QBuffer nobody;
    nobody.open(QIODevice::WriteOnly);
    return progress && drawAsPdf(nobody, document, QString(), progress) == Drawn::Stopped;
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

bool send(const Document &document, const QString &device, const QString &title, const Progress &progress)
{
    if (isFile(device))
        return savePdf(document, device, title, progress);
    const QString name = device.isEmpty() ? defaultPrinter() : device;
    if (name.isEmpty())
        refuse(QStringLiteral("이 컴퓨터에 등록된 프린터가 없습니다."));
    const QPrinterInfo info = QPrinterInfo::printerInfo(name);
    if (info.isNull())
        refuse(QStringLiteral("프린터를 찾을 수 없습니다: %1").arg(name));
    QPrinter printer(info, QPrinter::HighResolution);
    printer.setDocName(title);
    printer.setPageLayout(layoutOf(document));
    if (!hasTaken(printer, document.paper()))
        refuse(QStringLiteral("이 문서의 용지 크기를 프린터가 지원하지 않습니다. 다른 프린터를 선택하십시오: ") + name);
    if (wasStopped(document, progress))
        return false;
    if (drawOn(printer, document, printer.resolution(), {}) != Drawn::Whole)
        refuse(QStringLiteral("프린터로 출력하지 못했습니다: %1").arg(name));
    return true;
}

bool savePdf(const Document &document, const QString &file, const QString &title, const Progress &progress)
{
    QSaveFile target(file);
    const QString failure = QStringLiteral("PDF 파일을 쓸 수 없습니다: %1").arg(file);
    if (!target.open(QIODevice::WriteOnly))
        refuse(failure);
    const Drawn drawn = drawAsPdf(target, document, title, progress);
    if (drawn == Drawn::Stopped)
        return false; // what was written goes, the file that was there stays
    if (drawn == Drawn::Refused || !target.commit())
        refuse(failure);
    return true;
}

} // namespace print
