#include "desk/sample/TradeWriter.h"

#include "desk/rows/BulkInsert.h"
#include "desk/sample/Catalogue.h"
#include "desk/sample/Patients.h"
#include "desk/sample/Purchases.h"
#include "desk/sample/Trade.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/RuntimeError.h"

namespace sample {

namespace {

using rows::BulkInsert;
using runtime::dateText;

struct Plan
{
    int goods;
    int patients;
    int newPatients; ///< of them, who have bought nothing yet
    int orders;
    QDate first;
    QDate last;
};

Plan planOf(Size size)
{
    const QDate last(2026, 6, 30);
    const auto grown = [&](int orders) {
        return Plan{20'000, 50'000, 500, orders, last.addYears(-5).addDays(1), last};
    };
    if (size == Size::Large)
        return grown(1'000'000);
    if (size == Size::Tenth)
        return grown(100'000);
    if (size == Size::Hundredth)
        return grown(10'000);
    return {listedProducts(), 30, 2, 320, last.addYears(-1).addDays(1), last};
}

QVariant orNull(const std::optional<int> &value)
{
    return value ? QVariant(*value) : QVariant();
}

QVariant orNull(const std::optional<bool> &value)
{
    return value ? QVariant(int(*value)) : QVariant();
}

QVariant orNull(const std::optional<QString> &value)
{
    return value ? QVariant(*value) : QVariant();
}

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

BulkInsert into(ado::Connection &connection, const char *table, const char *columns)
{
    return BulkInsert(connection, text(table), text(columns).split(QLatin1Char(' ')));
}

void writeGoods(ado::Connection &connection, const std::vector<Product> &goods)
{
    BulkInsert rows =
        into(connection, "tPSProductMaster",
             "PM_PK PM_Catagory PM_Name PM_UnitPrice PM_IsTaxed PM_IsValid PM_IsHide PM_EtcMemo PM_AddedDate");
    int key = 0;
    for (const Product &product : goods)
        rows.add({++key, product.category, product.name, product.price, int(product.taxed), int(product.handled),
                  orNull(product.hidden), product.memo, dateText(product.added)});
    rows.finish();
}

void writeDealers(ado::Connection &connection, const std::vector<Dealer> &dealers)
{
    BulkInsert rows =
        into(connection, "tPSCompanyMaster", "CM_PK CM_Name CM_RegNum CM_Tel CM_Address CM_EtcMemo CM_IsValid");
    int key = 0;
    for (const Dealer &dealer : dealers)
        rows.add(
            {++key, dealer.name, dealer.registration, dealer.phone, dealer.address, dealer.memo, int(dealer.trading)});
    rows.finish();
}

void writePatients(ado::Connection &connection, const std::vector<Patient> &patients)
{
    BulkInsert rows =
        into(connection, "Customer",
             "Customer_PK name sn ssn1 ssn2 Insu_Type Insu_Symbol Insu_No sex birth zipcode address phone cell vip");
    int key = 0;
    for (const Patient &patient : patients) {
        const int century = patient.birth.year() < 2000 ? 0 : 2;
        const QString hiddenNumber = QStringLiteral("%1******").arg(century + (patient.male ? 1 : 2));
        rows.add({++key, patient.name, patient.chartNumber, patient.birth.toString(QStringLiteral("yyMMdd")),
                  hiddenNumber, patient.insuranceType, patient.insuranceSymbol, patient.insuranceNumber,
                  int(patient.male), dateText(patient.birth), patient.zipCode, patient.address, patient.phone,
                  patient.cell, patient.vip});
    }
    rows.finish();
}

/// The desk's own treatment receipts. Their keys lie beyond those of all orders: the ledger holds either in one column.
void writeReceipts(ado::Connection &connection, const Plan &plan)
{
    constexpr int firstKey = 10'000'001;
    BulkInsert rows =
        into(connection, "Receipt", "Receipt_PK Customer_PK TxDate Bonin_Money Cheonggu_Money General_Money");
    Random random(77);
    const int days = int(plan.first.daysTo(plan.last));
    for (int number = 0; number < plan.patients * 3; ++number) {
        const qint64 own = qint64(random.between(50, 320)) * 100;
        rows.add({firstKey + number, number % plan.patients + 1, dateText(plan.first.addDays(random.below(days))), own,
                  own * 7 / 3 / 10 * 10, qint64(random.percent(30) ? random.between(1, 12) * 10'000 : 0)});
    }
    rows.finish();
}

void writeShop(ado::Connection &connection)
{
    BulkInsert properties = into(connection, "tPSProperties", "tpsps_Key tpsps_Value");
    const std::pair<const char16_t *, const char16_t *> values[]{
        {u"지점명", u"푸른솔한의원"},
        {u"지점대표자", u"한솔"},
        {u"지점사업자번호", u"000-90-00012"},
        {u"우편번호", u"06230"},
        {u"지점주소", u"서울특별시 강남구 역삼로 150, 2층"},
        {u"지점전화번호", u"02-0555-0100"},
        {u"홈페이지주소", u"www.example.com"},
        {u"영수증고객안내문", u"영수증이 있으면 교환/환불시 보다 편리합니다."},
        {u"수납시할인사용안함", u"0"},
        {u"숨기기체크된판매물품목록감추기", u"0"},
    };
    for (const auto &[key, value] : values)
        properties.add({QString::fromUtf16(key), QString::fromUtf16(value)});
    properties.finish();
    BulkInsert settings = into(connection, "t_HospSetup", "HS_KEY HS_Value");
    settings.add({QStringLiteral("병원명"), QStringLiteral("푸른솔한의원")});
    settings.finish();
}

/// Orders with their lines and ledger rows, keys in the order of writing.
class OrderWriter
{
public:
    OrderWriter(ado::Connection &connection, const std::vector<Product> &goods, const std::vector<Patient> &patients)
        : goods_(goods)
        , patients_(patients)
        , orders_(
              into(connection, "tPSOrderMaster",
                   "OrdM_PK Cust_PK OrdM_Date OrdM_Gubun OrdM_Address OrdM_Tel OrdM_Cel OrdM_TakbaeMemo OrdM_TaxTotal "
                   "OrdM_TaxFreeTotal OrdM_HalinTotal OrdM_Total OrdM_Misugum OrdM_ETCMemo"))
        , lines_(into(connection, "tPSOrderDetail",
                      "OrdM_PK PM_PK OrdD_UnitPrice OrdD_HalinUnit OrdD_Count OrdD_OrderType OrdD_RfndMemo"))
        , ledger_(into(connection, "tPSTransaction",
                       "tpstrans_Customer_PK tpstrans_OrderM_PK tpstrans_Date tpstrans_Operator tpstrans_Money "
                       "tpstrans_Method tpstrans_Memo"))
        , sold_(goods.size(), 0)
    {
    }

    void add(const Order &order)
    {
        ++key_;
        const Patient &patient = patients_[std::size_t(order.patient)];
        const OrderTotals totals = totalsOf(order, goods_);
        orders_.add({key_, order.patient + 1, dateText(order.date), orNull(order.delivery), patient.address,
                     patient.phone, patient.cell, order.courierMemo, totals.taxed, totals.taxFree, totals.discount,
                     totals.total(), order.outstanding, order.memo});
        for (const Line &line : order.lines) {
            // Only a return writes here, so a line that never came back has no value.
            lines_.add({key_, line.product + 1, line.price, line.discount, line.count, orNull(line.kind),
                        line.memo.isEmpty() ? QVariant() : QVariant(line.memo)});
            sold_[std::size_t(line.product)] += line.count;
        }
        for (const LedgerRow &row : order.ledger)
            ledger_.add(
                {order.patient + 1, key_, dateText(row.date), row.operation, row.money, orNull(row.method), row.memo});
    }

    void finish()
    {
        orders_.finish();
        lines_.finish();
        ledger_.finish();
    }

    /// Units that left the shelf, by index of the goods.
    const std::vector<int> &sold() const { return sold_; }

private:
    const std::vector<Product> &goods_;
    const std::vector<Patient> &patients_;
    BulkInsert orders_;
    BulkInsert lines_;
    BulkInsert ledger_;
    std::vector<int> sold_;
    int key_ = 0;
};

void writePurchases(ado::Connection &connection, const std::vector<Purchase> &purchases)
{
    BulkInsert rows =
        into(connection, "tPSIncoming", "PM_PK CM_PK IN_Date IN_Count IN_UnitPrice IN_HalinTotal IN_Total IN_EtcMemo");
    for (const Purchase &purchase : purchases)
        rows.add({purchase.product + 1, purchase.dealer + 1, dateText(purchase.date), double(purchase.count),
                  purchase.unitPrice, purchase.discount, purchase.total(), purchase.memo});
    rows.finish();
}

} // namespace

void writeRows(ado::Connection &connection, Size size, const Progress &progress)
{
    const Plan plan = planOf(size);
    const std::vector<Product> goods = products(plan.goods);
    const std::vector<Patient> people = patients(plan.patients);
    const std::vector<Dealer> sellers = dealers();
    const auto tell = [&](qint64 done) {
        if (progress && !progress(done, plan.orders))
            throw runtime::RuntimeError(runtime::ErrorNumber::InvalidCall, QStringLiteral("중단했습니다."));
    };
    writeShop(connection);
    writeGoods(connection, goods);
    tell(0);
    writeDealers(connection, sellers);
    writePatients(connection, people);
    writeReceipts(connection, plan);

    Trade trade(goods, plan.patients - plan.newPatients, plan.first, plan.last, plan.orders);
    OrderWriter writer(connection, goods, people);
    qint64 done = 0;
    while (const std::optional<Order> order = trade.next()) {
        writer.add(*order);
        if (++done % 1'000 == 0)
            tell(done);
    }
    writer.finish();
    writePurchases(connection, purchases(goods, writer.sold(), int(sellers.size()), plan.first, plan.last));
}

} // namespace sample
