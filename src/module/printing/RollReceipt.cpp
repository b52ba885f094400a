#include "printing/RollReceipt.h"

#include "platform/controls/MessageBox.h"
#include "platform/print/Printers.h"
#include "platform/print/Sheets.h"
#include "platform/runtime/Operation.h"
#include "printing/ReceiptLog.h"
#include "printing/RollComposer.h"
#include "printing/clsReceiptPrinter.h"

namespace {

/// Paper of the usual receipt printers, where a printer does not tell its own.
constexpr double usualRollWidth = 80;
/// Empty paper below the last line, mm.
constexpr double feed = 5;

print::RollPaper paperOf(const QString &printer)
{
    return print::isPrinter(printer) ? print::rollPaperOf(printer) : print::endlessRoll(usualRollWidth);
}

} // namespace

print::Document rollReceipt(const RollReceiptOrder &order, const print::RollPaper &paper)
{
    const RollRows rows = composeRoll(order, paper.printableWidth());
    return print::onSheets(rows.page(), rows.breaks(), paper, feed);
}

void Print2EpsonTMPartialCut(const QString &printer, const RollReceiptOrder &order)
{
    const runtime::Operation operation("print roll receipt", {{"order", order.lngOrdMPK}});
    const print::Document receipt = rollReceipt(order, paperOf(printer));
    print::send(receipt, printer, QStringLiteral("영수증"));
    logReceipt(QStringLiteral("roll receipt of order %1").arg(order.lngOrdMPK), printer, receipt);
}

void PrintRollPrintReceipt(QWidget *owner, const RollReceiptOrder &order)
{
    const QString printer = clsReceiptPrinter().GetReceiptPrinter();
    if (printer.isEmpty()) {
        controls::MsgBox(QStringLiteral("롤 프린터를 찾을 수 없습니다. 롤 프린터로 출력하기 위해서는")
                             + QLatin1Char('\r')
                             + QStringLiteral("[EPSON TM-T88II Partial cut]으로 등록된 프린터가 필요합니다."),
                         controls::InformationIcon, QStringLiteral("프린터를 찾지 못했습니다."), owner);
    } else if (printer.toUpper() == QLatin1String("CBM RECEIPT PRINTER (TEXT ONLY)")) {
        controls::MsgBox(QStringLiteral("그래픽 출력이 가능한 프린터를 사용하십시오."), controls::InformationIcon,
                         QStringLiteral("지원되지 않는 프린터"), owner);
    } else {
        Print2EpsonTMPartialCut(printer, order);
    }
}
