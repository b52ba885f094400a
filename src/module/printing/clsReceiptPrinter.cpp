#include "printing/clsReceiptPrinter.h"

#include "platform/print/Lengths.h"
#include "platform/print/Printers.h"
#include "platform/runtime/Attempt.h"
#include "settings/clsUserSetting.h"

namespace {

const QString automatic = QStringLiteral("<자동설정>");
constexpr double rollWidthTwips = 7000;

} // namespace

QString clsReceiptPrinter::GetReceiptPrinter() const
{
    const QString stored = clsUserSetting().ReceiptPrinter();
    return stored == automatic ? GetPrinterList() : stored;
}

QString clsReceiptPrinter::GetPrinterList() const
{
    QString found;
    runtime::Attempt walk;
    walk([&] {
        const QStringList printers = print::printerNames();
        for (const QString &printer : printers) {
            if (print::toTwips(print::pageSize(printer).width()) < rollWidthTwips) {
                found = printer;
                return;
            }
        }
    });
    return found;
}

bool clsReceiptPrinter::FillPrinterList(QComboBox &box) const
{
    box.addItems(print::printerNames());
    return true;
}
