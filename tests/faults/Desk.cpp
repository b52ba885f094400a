#include "tests/faults/Desk.h"

#include "data/clsSQL.h"
#include "desk/schema/Schema.h"
#include "money/OutstandingMoney.h"
#include "session/modGlobalVars.h"
#include "settings/clsProperties.h"
#include "tests/support/Cases.h"

namespace {

const CustomerKey customer{1};
const ShownOrder order{OrderKey(1), customer, QDate(2026, 11, 20)};
const ShownOrder unpaid{OrderKey(2), customer, QDate(2026, 11, 19)};

bool done(Outcome outcome)
{
    return outcome == Outcome::Done;
}

bool done(SaveOutcome outcome)
{
    return outcome == SaveOutcome::Saved;
}

EntryLine line(Desk &desk)
{
    EntryLine typed{0, QStringLiteral("100"), QStringLiteral("2"), {}, {}};
    desk.orders.takeCurrentProduct(typed);
    return typed;
}

bool saveOrder(Desk &desk)
{
    OrderEdit edit{QStringLiteral("부산시"), QStringLiteral("010"), QStringLiteral("051"), QStringLiteral("문앞"),
                   QStringLiteral("단골"),   QStringLiteral("100"), QStringLiteral("900"), true,
                   QDate(2026, 11, 21)};
    OrderSave save(desk.session);
    save.begin({});
    return done(save.save(edit));
}

bool takeBack(Desk &desk, const QDate &date)
{
    return done(desk.returns.takeBack(desk.returns.currentLine(),
                                      {-1, date, QStringLiteral("상함"), runtime::Currency::fromWon(900)}));
}

ledger::Row row(qint16 intOperator)
{
    return {order, QDate(2026, 11, 24), intOperator, 300, ledger::CashMethod};
}

LedgerEntry entry()
{
    return {QDate(2026, 11, 23),    ledger::Payment,
            QStringLiteral("01"),   runtime::Currency::fromWon(700),
            QStringLiteral("카드"), true};
}

bool payFirst(Desk &desk)
{
    ledger::appendFirstPayment(*gcnnMasterDB, {unpaid, QDate(2026, 11, 24), 10, 20, 300, 400});
    ledger::addOutstanding(*gcnnMasterDB, *desk.session.rsCustSaleMaster, unpaid, runtime::Currency::fromWon(270));
    return true;
}

ProductEdit product()
{
    return {QStringLiteral("차"), QStringLiteral("쌍화차"), QStringLiteral("4000"), QStringLiteral("새것"), true, true,
            QDate(2026, 11, 24)};
}

bool changeProduct(Desk &desk)
{
    desk.products.beginChange();
    return done(desk.products.change(product()));
}

IncomingEdit purchase()
{
    return {QStringLiteral("1"),    QStringLiteral("12"),   QStringLiteral("1000"), QStringLiteral("500"),
            QStringLiteral("9500"), QStringLiteral("외상"), QDate(2026, 11, 24)};
}

const DealerEdit dealer{QStringLiteral("동의"), QStringLiteral("1-2"),  QStringLiteral("대구"),
                        QStringLiteral("053"),  QStringLiteral("새로"), false};

bool deleteLedgerRow(Desk &desk)
{
    desk.session.rsCustTranManage->Delete();
    return true;
}

bool saveProperty(const char *key)
{
    clsProperties().PropValue(QString::fromUtf8(key), QStringLiteral("값"));
    return true;
}

constexpr Work all[] = {
    {"line on a new order", [](Desk &d) { return done(d.orders.addDetailToNewOrder(line(d))); }, 3},
    {"line on the selected order", [](Desk &d) { return done(d.orders.addDetailToSelectedOrder(order, line(d))); }, 2},
    {"delete a line", [](Desk &d) { return done(d.orders.deleteDetail(order.key, LineKey(1))); }, 2},
    {"delete an order", [](Desk &d) { return done(d.orders.deleteOrder(order)); }},
    {"save an order", saveOrder},
    {"return on the sale's day", [](Desk &d) { return takeBack(d, QDate(2026, 11, 20)); }, 3},
    {"return on a new order", [](Desk &d) { return takeBack(d, QDate(2026, 11, 24)); }, 4},
    {"first payment", payFirst, 5},
    {"further payment",
     [](Desk &) {
         ledger::insertRow(*gcnnMasterDB, row(ledger::Refund));
         return true;
     }},
    {"payment by the form", [](Desk &d) { return ledger::addFormEntry(d.session, order, entry()); }},
    {"change a ledger row by the form",
     [](Desk &d) { return ledger::changeFormEntry(d.session, order, LedgerKey(1), entry()); }},
    {"change a ledger row",
     [](Desk &d) {
         d.session.rsCustTranManage->moveToKey(LedgerKey(1).bookmark());
         ledger::updateRow(*gcnnMasterDB, ledger::shownRow(*d.session.rsCustTranManage), row(ledger::Cut));
         return true;
     }},
    {"delete a ledger row", deleteLedgerRow},
    {"collect outstanding money",
     [](Desk &) {
         outstanding::pay(*gcnnMasterDB, row(ledger::Payment));
         return true;
     }},
    {"add a product", [](Desk &d) { return done(d.products.add(product())); }},
    {"change a product", changeProduct},
    {"delete a product",
     [](Desk &d) { return d.products.remove(ProductKey(2)) == ProductOperations::Deletion::Deleted; }},
    {"add a purchase", [](Desk &d) { return done(d.purchases.add(ProductKey(1), purchase())); }},
    {"change a purchase", [](Desk &d) { return done(d.purchases.change(IncomingKey(1), purchase())); }},
    {"delete a purchase",
     [](Desk &d) {
         d.purchases.remove(IncomingKey(1));
         return true;
     }},
    {"add a dealer", [](Desk &d) { return done(d.dealers.add(dealer)); }},
    {"change a dealer", [](Desk &d) { return done(d.dealers.change(DealerKey(2), dealer)); }},
    {"delete a dealer", [](Desk &d) { return d.dealers.remove(DealerKey(2)) == DealerOperations::Deletion::Deleted; }},
    {"a new property", [](Desk &) { return saveProperty("새로운"); }, 1, false},
    {"change a property", [](Desk &) { return saveProperty("shop"); }, 1, false},
};

void openRows(SaleSession::RecordsetPtr &rows, const QString &source)
{
    if (!rows)
        rows = std::make_unique<ado::Recordset>();
    if (rows->isOpen())
        rows->Requery();
    else
        rows->Open(source, gcnnMasterDB, ado::CursorType::Keyset, ado::LockType::Optimistic);
}

} // namespace

std::span<const Work> works()
{
    return all;
}

void makeClinic(const QString &file)
{
    const ado::ConnectionPtr clinic = ado::Connection::open(QStringLiteral("sqlite:") + file, true);
    fillClinic(*clinic);
    // Closed with its log played in, and as --make leaves it: the desk that opens it first sets the mode.
    clinic->Execute(QStringLiteral("PRAGMA journal_mode = DELETE"));
}

void fillClinic(ado::Connection &clinic)
{
    schema::createSchema(clinic);
    for (const QStringList &statement : casesOf("faults/clinic.cases", 1))
        clinic.Execute(statement[0]);
}

Desk::Desk(const QString &file)
    : Desk(ado::Connection::open(QStringLiteral("sqlite:") + file))
{
}

Desk::Desk(const ado::ConnectionPtr &clinic)
{
    gcnnMasterDB = clinic;
    session.customer.lngCustPK = customer.number();
    session.customer.address = QStringLiteral("서울시");
    readAnew();
}

void Desk::readAnew()
{
    openRows(session.rsSaleProductLists, clsSQL().getProductMasterSQL(false));
    openRows(session.rsSaleProductListsManager, clsSQL().getProductMasterSQL(true));
    openRows(session.rsCustSaleMaster, clsSQL().getOrderMasterSQL(customer.number()));
    session.rsCustSaleMaster->setBookmark(order.key.bookmark());
    openRows(session.rsCustSaleDetails, clsSQL().getOrderDetailSQL(order.number()));
    openRows(session.rsCustTranManage, clsSQL().getCustTranSQL(customer.number(), order.number()));
    openRows(session.rsProductIncoming, clsSQL().getProdIncomingSQL(1));
    openRows(session.rsCompanyMaster, clsSQL().getCmpnyMstrSQL());
}

Desk::~Desk()
{
    session.release();
    gcnnMasterDB.reset();
}
