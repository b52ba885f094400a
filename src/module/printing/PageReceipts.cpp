#include "printing/PageReceipts.h"

#include "data/clsSQL.h"
#include "platform/controls/MessageBox.h"
#include "platform/controls/Modal.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Log.h"
#include "platform/runtime/Operation.h"
#include "platform/runtime/RuntimeError.h"
#include "printing/PageReceipt.h"
#include "printing/ReceiptLog.h"
#include "printing/frmPrinter.h"
#include "session/modGlobalVars.h"

using receipt::Numbers;

namespace {

const QString keyField = QStringLiteral("OrdM_PK");
const QString dateField = QStringLiteral("OrdM_Date");

PageReceipt::Shape orderShape()
{
    const QString dashes = QLatin1Char(' ') + QString(68, QLatin1Char('-'));
    return {.columnWidths = {u"2.9cm", u"2.9cm", u"2.9cm", u"2.9cm", u"2.9cm", u"2.9cm"},
            .headDashes = dashes,
            .moneyDashes = dashes,
            .nameColumn = 1,
            .moneyLabel = 1,
            .customerSpan = 6};
}

PageReceipt::Shape periodShape()
{
    return {.columnWidths = {u"2.4cm", u"2.9cm", u"2.9cm", u"2.9cm", u"1.3cm", u"1.3cm", u"2.9cm"},
            .headDashes = QString(70, QLatin1Char('-')),
            .moneyDashes = QString(65, QLatin1Char('-')),
            .nameColumn = 2,
            .moneyLabel = 2,
            .customerSpan = 6};
}

} // namespace

PageReceipts::PageReceipts(SaleSession &session, QWidget *owner)
    : session_(session)
    , owner_(owner)
{
}

void PageReceipts::printOrderReceipt()
{
    preview([this] { return orderReceipt(); },
            [this] { return runtime::dateText(session_.rsCustSaleMaster->value(dateField).toDate()); },
            [this] {
                return QStringLiteral("receipt of order %1").arg(runtime::CLng((*session_.rsCustSaleMaster)[keyField]));
            });
}

void PageReceipts::printPeriodReceipt(const QDate &dtStart, const QDate &dtEnd)
{
    preview([&] { return periodReceipt(dtStart, dtEnd); },
            [&] { return runtime::dateText(dtStart) + u'~' + runtime::dateText(dtEnd); },
            [] { return QStringLiteral("receipt of a period"); });
}

template <typename Compose>
void PageReceipts::preview(Compose &&compose, const std::function<QString()> &days,
                           const std::function<QString()> &which)
{
    const runtime::Operation operation("print receipt");
    try {
        const controls::Modal<frmPrinter> form(owner_);
        const print::VSPrinter *vsPrint = form->vsPrint();
        form->vsPrint()->setDocument(compose(), form->windowTitle(),
                                     QStringLiteral("영수증 %1 %2").arg(runtime::Trim(session_.customer.name), days()));
        // The order may be another one by the time of printing.
        QObject::connect(vsPrint, &print::VSPrinter::printed, vsPrint,
                         [vsPrint, receipt = which()](const QString &printer) {
                             logReceipt(receipt, printer, vsPrint->document());
                         });
        controls::runModal(form.get());
    } catch (const runtime::RuntimeError &error) {
        runtime::trapped();
        controls::MsgBox(QStringLiteral("영수증 출력시 오류가 발생했습니다. 이 유: ") + error.description(),
                         controls::InformationIcon, QStringLiteral("영수증 출력"), owner_);
    }
}

print::Document PageReceipts::orderReceipt() const
{
    const ado::Recordset &order = *session_.rsCustSaleMaster;
    const qint32 lngOrdMPK = runtime::CLng(order[keyField]);
    PageReceipt page(orderShape());
    page.addHead(runtime::Trim(session_.customer.name) + QStringLiteral("님 (구매날짜:")
                 + runtime::text(order[dateField]) + QLatin1Char(')'));
    qint16 intItem = 1;
    receipt::readLines(gcnnMasterDB, lngOrdMPK, Numbers::NullIsZero, intItem,
                       [&](const receipt::Line &line) { page.addLine(line); });
    page.addMoneyRows(receipt::readTotals(gcnnMasterDB, clsSQL().getTranAllEachTotalByOrdMPKSQL(lngOrdMPK)));
    return page.take();
}

print::Document PageReceipts::periodReceipt(const QDate &dtStart, const QDate &dtEnd) const
{
    const QString start = runtime::dateText(dtStart);
    const QString end = runtime::dateText(dtEnd);
    PageReceipt page(periodShape());
    page.addHead(runtime::Trim(session_.customer.name) + QStringLiteral("님 (구매날짜:  ") + start
                 + QStringLiteral(" ~ ") + end + QLatin1Char(')'));

    qint16 intItem = 1; // runs on through all orders
    const std::unique_ptr<ado::Recordset> orders = session_.rsCustSaleMaster->Clone();
    for (orders->MoveFirst(); !orders->Eof(); orders->MoveNext()) {
        if (orders->isGone())
            continue; // another desk deleted it
        const QString date = runtime::text(orders->value(dateField));
        if (date < start || date > end)
            continue;
        receipt::readLines(gcnnMasterDB, runtime::CLng(orders->value(keyField)), Numbers::NullIsZero, intItem,
                           [&](const receipt::Line &line) { page.addLine(line, date); });
    }
    // Quirk (docs/architecture.md): the whole shop's money of those days, not only this customer's.
    page.addMoneyRows(receipt::readTotals(gcnnMasterDB, clsSQL().getTranAllEachTotalByPeriodSQL(dtStart, dtEnd)));
    return page.take();
}
