#include "trials/desk/Clerk.h"

#include "data/clsSQL.h"
#include "money/OutstandingMoney.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/RuntimeError.h"
#include "session/modGlobalVars.h"

namespace trial {

using runtime::RuntimeError;

namespace {

void openRows(SaleSession::RecordsetPtr &rows, const QString &source)
{
    auto opened = std::make_unique<ado::Recordset>(); // where the server is away the old rows stay
    opened->Open(source, gcnnMasterDB, ado::CursorType::Keyset, ado::LockType::Optimistic);
    rows = std::move(opened);
}

/// Why an operation that throws nothing was not done.
QString reasonOf(Outcome outcome)
{
    switch (outcome) {
    case Outcome::ProductGone:
        return QStringLiteral("the product is gone");
    case Outcome::Conflict:
        return QStringLiteral("another desk was there");
    case Outcome::Failed:
        return QStringLiteral("an error");
    default:
        return QStringLiteral("stopped");
    }
}

} // namespace

Clerk::Clerk(const Task &task, Journal &journal)
    : task_(task)
    , journal_(journal)
    , random_(task.seed)
    , token_(task.firstToken)
{
    openProducts();
}

Clerk::~Clerk()
{
    session_.release();
}

void Clerk::openProducts()
{
    auto opened = std::make_unique<ado::Recordset>();
    opened->Open(clsSQL().getProductMasterSQL(false), gcnnMasterDB, ado::CursorType::Static, ado::LockType::ReadOnly);
    session_.rsSaleProductLists = std::move(opened);
    openRows(session_.rsSaleProductListsManager, clsSQL().getProductMasterSQL(true));
}

void Clerk::visit()
{
    if (roll(8) == 0)
        openProducts();
    // Those who crowd meet at the patient of the half-second.
    const int meeting = int(now() / 500'000 * 7919 % task_.patients) + 1;
    const bool crowded = roll(100) < task_.crowding;
    openPatient(crowded ? meeting : roll(task_.patients) + 1);
    for (int operations = 1 + roll(6); operations > 0; --operations)
        act();
}

void Clerk::openPatient(int key)
{
    session_.customer.lngCustPK = key;
    openRows(session_.rsCustSaleMaster, clsSQL().getOrderMasterSQL(key));
    order_ = 0;
}

std::vector<qint32> Clerk::ordersOfTrial() const
{
    std::vector<qint32> keys;
    const ado::Recordset &orders = *session_.rsCustSaleMaster;
    for (int row = 0; row < orders.rowCount(); ++row) {
        const qint32 key = runtime::CLng(orders.bookmarkAt(row));
        if (key > task_.ordersBefore)
            keys.push_back(key);
    }
    return keys;
}

void Clerk::openOrder(qint32 key)
{
    seen_ = now();
    session_.rsCustSaleMaster->Requery();
    session_.rsCustSaleMaster->setBookmark(key);
    order_ = session_.rsCustSaleMaster->hasCurrent() && session_.rsCustSaleMaster->bookmark() == key ? key : 0;
}

/// What a desk does in a day, by the dice: sales most of all.
void Clerk::act()
{
    using Step = void (Clerk::*)();
    static constexpr Step steps[] = {
        &Clerk::sell,           &Clerk::sell,        &Clerk::sell,        &Clerk::sell,       &Clerk::takeMoney,
        &Clerk::takeMoney,      &Clerk::takeMoney,   &Clerk::collect,     &Clerk::editOrder,  &Clerk::editOrder,
        &Clerk::takeBack,       &Clerk::takeBack,    &Clerk::addEntry,    &Clerk::deleteLine, &Clerk::deleteEntry,
        &Clerk::sellOnNewOrder, &Clerk::deleteOrder, &Clerk::changeEntry, &Clerk::addProduct, &Clerk::deleteProduct,
    };
    const std::vector<qint32> orders = ordersOfTrial();
    if (orders.empty())
        return sellOnNewOrder();
    openOrder(orders[std::size_t(roll(int(orders.size())))]);
    if (order_ == 0)
        return;
    // A patient who was here often gets rid of something first, or the lists would grow beyond any clinic's.
    const Step step = orders.size() > 30 ? &Clerk::deleteOrder : steps[roll(std::size(steps))];
    (this->*step)();
}

bool Clerk::perform(const char *kind, Numbers numbers, const Work &work)
{
    numbers["cust"] = session_.customer.lngCustPK;
    numbers["seen"] = seen_;
    journal_.begin(kind, numbers);
    try {
        const Outcome outcome = work();
        if (outcome == Outcome::Done) {
            journal_.done();
            return true;
        }
        journal_.refused(reasonOf(outcome));
    } catch (const RuntimeError &error) {
        journal_.refused(QString::number(int(error.number())) + u' ' + error.description());
    }
    return false;
}

/// Which order took the line is the server's choice, but one of this trial: a line of the clinic's own may have the token by
/// chance, and any line as its price. Read past the operation, so it is not part of its time.
void Clerk::noteOrderOf(qint64 token)
{
    ado::Recordset found;
    found.Open(QStringLiteral(
                   "SELECT d.OrdM_PK FROM tPSOrderMaster m JOIN tPSOrderDetail d ON d.OrdM_PK = m.OrdM_PK "
                   "WHERE m.Cust_PK = %1 AND m.OrdM_PK > %3 AND CASE WHEN d.OrdD_Count < 0 THEN d.OrdD_UnitPrice ELSE "
                   "d.OrdD_HalinUnit END = %2")
                   .arg(session_.customer.lngCustPK)
                   .arg(token)
                   .arg(task_.ordersBefore),
               gcnnMasterDB, ado::CursorType::ForwardOnly, ado::LockType::ReadOnly);
    if (!found.Eof())
        journal_.note({{"to", runtime::CLng(found[QStringLiteral("OrdM_PK")])}});
}

bool Clerk::standOn(SaleSession::RecordsetPtr &rows, const QString &source,
                    const std::function<bool(const ado::Recordset &)> &fits)
{
    openRows(rows, source);
    const int count = rows->rowCount();
    for (int at = 0, row = count ? roll(count) : 0; at < count; ++at, row = (row + 1) % count) {
        rows->moveTo(row);
        try {
            if (fits(*rows))
                return true;
        } catch (const RuntimeError &) {
            // Another desk deleted it since.
        }
    }
    return false;
}

EntryLine Clerk::lineFor(qint64 token)
{
    ado::Recordset &products = *session_.rsSaleProductLists;
    products.moveTo(roll(products.rowCount()));
    EntryLine line{0, QString::number(token), QString::number(1 + roll(4)), {}, {}};
    sales_.takeCurrentProduct(line);
    return line;
}

void Clerk::sellOnNewOrder()
{
    const qint64 token = next();
    const EntryLine line = lineFor(token);
    const QDate date = day();
    session_.customer.address = QString::number(token);
    sales_.setToday([date] { return date; });
    if (perform("sell-new", {{"token", token}, {"product", line.product.number()}},
                [&] { return sales_.addDetailToNewOrder(line); }))
        noteOrderOf(token);
}

void Clerk::sell()
{
    const qint64 token = next();
    const EntryLine line = lineFor(token);
    perform("sell", {{"token", token}, {"order", order_}, {"product", line.product.number()}},
            [&] { return sales_.addDetailToSelectedOrder(shown(), line); });
}

void Clerk::takeBack()
{
    const auto sold = [](const ado::Recordset &line) { return runtime::CInt(line[QStringLiteral("OrdD_Count")]) > 0; };
    if (!standOn(session_.rsCustSaleDetails, clsSQL().getOrderDetailSQL(order_), sold))
        return;
    const qint64 token = next();
    session_.customer.address = QString::number(token);
    if (perform("return", {{"token", token}, {"order", order_}}, [&] {
            const SoldLine line = returns_.currentLine();
            const QDate date = roll(2) ? line.order.date : day();
            return returns_.takeBack(line, {-1, date, QString(), runtime::Currency::fromWon(token)});
        }))
        noteOrderOf(token);
}

void Clerk::deleteLine()
{
    const auto any = [](const ado::Recordset &line) { return !runtime::isNull(line[QStringLiteral("OrdD_PK")]); };
    if (!standOn(session_.rsCustSaleDetails, clsSQL().getOrderDetailSQL(order_), any))
        return;
    const ado::Recordset &line = *session_.rsCustSaleDetails;
    const bool sold = runtime::CInt(line[QStringLiteral("OrdD_Count")]) > 0;
    const LineKey key(line[QStringLiteral("OrdD_PK")]);
    const QVariant token = line[sold ? QStringLiteral("OrdD_HalinUnit") : QStringLiteral("OrdD_UnitPrice")];
    perform("delete-line", {{"gone", runtime::CLng(token)}, {"order", order_}},
            [&] { return sales_.deleteDetail(OrderKey(order_), key); });
}

void Clerk::editOrder()
{
    const ado::Recordset &order = *session_.rsCustSaleMaster;
    const auto text = [&](const char *field) { return runtime::text(order[QLatin1String(field)]); };
    const qint64 token = next();
    OrderEdit edit;
    qint64 before = 0;
    try {
        edit = {text("OrdM_Address"),    text("OrdM_Cel"),       text("OrdM_Tel"),
                text("OrdM_TakbaeMemo"), QString::number(token), text("OrdM_HalinTotal"),
                text("OrdM_Misugum"),    roll(2) == 1,           order[QStringLiteral("OrdM_Date")].toDate()};
        before = text("OrdM_ETCMemo").toLongLong();
        OrderEdit shown = edit;
        shown.memo = text("OrdM_ETCMemo");
        save_.begin(shown);
    } catch (const RuntimeError &) {
        return; // deleted while it was looked at
    }
    perform("edit", {{"token", token}, {"before", before}, {"order", order_}}, [&] { return save_.save(edit); });
}

void Clerk::deleteOrder()
{
    // As the window shows them when the user asks for the deletion.
    openRows(session_.rsCustSaleDetails, clsSQL().getOrderDetailSQL(order_));
    openRows(session_.rsCustTranManage, clsSQL().getCustTranSQL(session_.customer.lngCustPK, order_));
    perform("delete", {{"order", order_}}, [&] { return sales_.deleteOrder(shown()); });
}

} // namespace trial
