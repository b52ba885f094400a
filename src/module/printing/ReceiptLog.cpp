#include "printing/ReceiptLog.h"

#include "platform/print/Printers.h"
#include "platform/runtime/Log.h"

void logReceipt(const QString &which, const QString &device, const print::Document &receipt)
{
    const QString paper = QStringLiteral("%1 of %2 x %3 mm")
                              .arg(receipt.pageCount())
                              .arg(receipt.paper().width(), 0, 'f', 1)
                              .arg(receipt.paper().height(), 0, 'f', 1);
    qCInfo(runtime::programLog, "printed %s on %s, sheets: %s", qUtf8Printable(which),
           print::isFile(device) ? "a file" : qUtf8Printable(device), qUtf8Printable(paper));
}
