#include "tests/data/FilledClinic.h"

#include "data/clsSQL.h"
#include "money/clsOperationMoney.h"
#include "platform/automation/Automation.h"
#include "platform/runtime/Conversions.h"

#include <gtest/gtest.h>

#include <functional>

namespace {

const QDate November(2026, 11, 1);

QDate day(int ofNovember)
{
    return November.addDays(ofNovember - 1);
}

class OperationMoney : public testing::TestWithParam<ado::Engine>
{
protected:
    OperationMoney()
        : database_(clinic::filledToWrite(GetParam()))
        , connection_(database_.connection())
    {
        money_.OPM_SetConnection(connection_);
    }

    qint32 rowsLeft(qint32 key)
    {
        return database_
            .value(QStringLiteral("SELECT COUNT(*) FROM tPSTransaction WHERE tpstrans_OrderM_PK=%1").arg(key))
            .toInt();
    }

    TestDatabase &database_;
    ado::ConnectionPtr connection_;
    clsOperationMoney money_;
};

using SumCall = std::function<bool(clsOperationMoney &, const ado::ConnectionPtr &, qint32 &)>;

struct SumCase
{
    const char *what;
    SumCall call;
    qint32 expected;
};

#define SUM(call)                                                                                                      \
    [](clsOperationMoney &m, [[maybe_unused]] const ado::ConnectionPtr &cn, qint32 &out) { return m.call; }

const std::vector<SumCase> &sumCases()
{
    static const std::vector<SumCase> cases{
        {"cut of an order", SUM(OPM_GetCutByTransaction(101, out)), 70},
        {"cut of an order without rows", SUM(OPM_GetCutByTransaction(105, out)), 0},
        {"cut of a day, all customers' keys of either kind", SUM(OPM_GetCutByDate(day(1), out)), 80},
        {"cut of a customer's day", SUM(OPM_GetCutByCustDate(1, day(1), out)), 80},
        {"cut of another customer's day", SUM(OPM_GetCutByCustDate(2, day(1), out)), 0},
        {"discount of an order", SUM(OPM_GetDiscountByTransaction(101, out)), 200},
        {"discount of a day", SUM(OPM_GetDiscountByDate(day(20), out)), 30},
        {"discount of a customer's day", SUM(OPM_GetDiscountByCustDate(1, day(1), out)), 200},
        {"payment of an order", SUM(OPM_GetPayByTransaction(101, out)), 3400},
        {"payment less a negative one", SUM(OPM_GetPayByTransaction(102, out)), 17350},
        {"payment of NULL and 0", SUM(OPM_GetPayByTransaction(103, out)), 0},
        {"payment of a day", SUM(OPM_GetPayByDate(day(24), out)), 1},
        {"payment of a customer's day", SUM(OPM_GetPayByCustDate(1, day(2), out)), 5390},
        {"payment by a method", SUM(OPM_GetPayByCustDateCatagory(1, day(2), "01", out)), 4400},
        {"payment without a method is not the empty method", SUM(OPM_GetPayByCustDateCatagory(1, day(2), "", out)), 0},
        {"refund of an order", SUM(OPM_GetRefundByTransaction(cn, 101, out)), 300},
        {"refund of a day", SUM(OPM_GetRefundByDate(day(20), out)), 740},
        {"refund of a customer's day", SUM(OPM_GetRefundByCustDate(2, day(24), out)), 900},
        {"cut of an order's day", SUM(OPM_GetCutByReceiptBoninGeneral(cn, 101, out, day(1))), 70},
        {"cut of an order's other day", SUM(OPM_GetCutByReceiptBoninGeneral(cn, 101, out, day(2))), 0},
        {"discount of an order's day", SUM(OPM_GetDiscountByReceiptBoninGeneral(cn, 101, out, day(1))), 200},
        {"payment of an order's day", SUM(OPM_GetPayByReceiptBoninGeneral(cn, 101, out, day(3))), 1000},
        {"refund of an order's day", SUM(OPM_GetRefundByReceiptBoninGeneral(cn, 101, out, day(3))), 300},
    };
    return cases;
}

TEST_P(OperationMoney, SumsByKeyDayAndMethod)
{
    for (const SumCase &row : sumCases()) {
        qint32 out = -1;
        EXPECT_TRUE(row.call(money_, connection_, out)) << row.what;
        EXPECT_EQ(out, row.expected) << row.what;
    }
}

TEST_P(OperationMoney, FailsWithZeroWithoutAConnection)
{
    const ado::ConnectionPtr none;
    EXPECT_TRUE(money_.OPM_DestroyConnection());
    for (const SumCase &row : sumCases()) {
        qint32 out = -1;
        EXPECT_FALSE(row.call(money_, none, out)) << row.what;
        EXPECT_EQ(out, 0) << row.what;
    }
    qint32 a = 1, b = 1, c = 1, d = 1, e = 1;
    ado::Recordset rows;
    EXPECT_EQ(money_.OPM_ExistOperationByReceipt(101), -1);
    EXPECT_EQ(money_.OPM_DeleteAllByReceipt(none, 101), -1);
    EXPECT_FALSE(money_.OPM_GetPayByCustPeriodCatagory(none, 1, day(1), day(30), a, b, c));
    EXPECT_FALSE(money_.OPM_GetSumOfTransactionByReceipt(none, 101, a, b));
    EXPECT_EQ(money_.OPM_MakeTransactionRecordSet(none, 1, {}, &rows, a, b, c, d, e), -1);
    EXPECT_EQ(a + b + c + d + e, 0);
    EXPECT_EQ(money_.OPM_MakeTransactionForSunapRefund(none, day(1), day(30), true, &rows), -1);
    EXPECT_EQ(money_.OPM_MakeTransactionForSunapRefund(connection_, day(1), day(30), true, nullptr), -1);
}

TEST_P(OperationMoney, TellsAFailedOpenFromASumThatDoesNotFit)
{
    qint32 sum = 5;
    EXPECT_FALSE(money_.OPM_GetPayByCustDateCatagory(1, day(1), "0'1", sum)); // the quote breaks the statement
    EXPECT_EQ(sum, 0);

    for (int twice = 0; twice < 2; ++twice)
        connection_->Execute(clsSQL().InsertTransactionSQL(3, day(1), 3, 2000000000, 105, "00"));
    connection_->Execute(clsSQL().InsertTransactionSQL(3, day(1), 4, 5, 105, "00"));
    EXPECT_TRUE(money_.OPM_GetPayByTransaction(105, sum)); // good, and as far as it came
    EXPECT_EQ(sum, 0);
    qint32 cash = 1, bank = 1, card = 1;
    EXPECT_TRUE(money_.OPM_GetPayByCustPeriodCatagory(connection_, 3, day(1), day(1), cash, bank, card));
    EXPECT_EQ(cash, -5);
}

TEST_P(OperationMoney, TellsWhetherAKeyHasRows)
{
    EXPECT_EQ(money_.OPM_ExistOperationByReceipt(101), 1);
    EXPECT_EQ(money_.OPM_ExistOperationByReceipt(9001), 1);
    EXPECT_EQ(money_.OPM_ExistOperationByReceipt(105), 0);
}

TEST_P(OperationMoney, DeletesOnlyMarkedRowsWhenAMarkIsGiven)
{
    const struct
    {
        const char *mark;
        qint32 left;
    } table[] = {{"x", 7}, {"표", 6}, {"' OR '1'='1", 6}, {"표'시", 5}, {"", 0}};
    for (const auto &row : table) {
        EXPECT_EQ(money_.OPM_DeleteAllByReceipt(connection_, 101, QString::fromUtf8(row.mark)), 0) << row.mark;
        EXPECT_EQ(rowsLeft(101), row.left) << row.mark;
    }
    EXPECT_EQ(rowsLeft(102), 7);
}

TEST_P(OperationMoney, SplitsAPeriodByMedium)
{
    const struct
    {
        const char *what;
        int first, last;
        qint32 cash, bank, card;
    } table[] = {
        {"NULL, 00, 10 and an unknown 03 are cash; 02 and 12 bank; 01 and 11 card; refunds subtract", 1, 30, 12500,
         2800, 9100},
        {"both ends are in", 5, 5, 10000, 0, 5000},
        {"a negative payment and a refund", 7, 7, -500, 0, -300},
        {"nothing", 10, 12, 0, 0, 0},
        {"ends the wrong way round", 30, 1, 0, 0, 0},
    };
    for (const auto &row : table) {
        qint32 cash = 1, bank = 1, card = 1;
        EXPECT_TRUE(
            money_.OPM_GetPayByCustPeriodCatagory(connection_, 1, day(row.first), day(row.last), cash, bank, card));
        EXPECT_EQ(std::tuple(cash, bank, card), std::tuple(row.cash, row.bank, row.card)) << row.what;
    }
}

TEST_P(OperationMoney, SumsOneReceipt)
{
    qint32 taken = 1, refund = 1;
    EXPECT_TRUE(money_.OPM_GetSumOfTransactionByReceipt(connection_, 101, taken, refund));
    EXPECT_EQ(std::pair(taken, refund), std::pair(3670, 300));
    EXPECT_TRUE(money_.OPM_GetSumOfTransactionByReceipt(connection_, 105, taken, refund));
    EXPECT_EQ(std::pair(taken, refund), std::pair(0, 0));
}

TEST_P(OperationMoney, HandsOutTheTreatmentReceiptsOfSomeDays)
{
    const struct
    {
        const char *what;
        QList<QDate> days;
        qint32 bonin, halin, jeolsa, sunap, refund;
        int rows;
    } table[] = {
        {"all days when none is given", {}, 6500, 30, 10, 4990, 700, 6},
        {"two days", {day(1), day(20)}, 6500, 30, 10, 4990, 700, 5},
        {"one day", {day(20)}, 1500, 30, 0, 0, 700, 2},
        {"a receipt without ledger rows", {day(2)}, 0, 0, 0, 0, 0, 1},
        {"a day without receipts", {day(9)}, 0, 0, 0, 0, 0, 0},
    };
    database_.run(
        "INSERT INTO tPSTransaction (tpstrans_Customer_PK, tpstrans_OrderM_PK, tpstrans_Date, tpstrans_Operator, "
        "tpstrans_Money) SELECT 1, Receipt_PK, '2026-11-02', 9, 77 FROM Receipt WHERE Customer_PK = 1 AND TxDate = "
        "'2026-11-02'"); // of a kind that nobody counts
    ado::Recordset rows; // stays open from one call to the next, as a caller's does
    for (const auto &row : table) {
        qint32 bonin = 1, halin = 1, jeolsa = 1, sunap = 1, refund = 1;
        EXPECT_EQ(
            money_.OPM_MakeTransactionRecordSet(connection_, 1, row.days, &rows, bonin, halin, jeolsa, sunap, refund),
            0);
        EXPECT_EQ(std::tuple(bonin, halin, jeolsa, sunap, refund),
                  std::tuple(row.bonin, row.halin, row.jeolsa, row.sunap, row.refund))
            << row.what;
        EXPECT_EQ(clinic::render(rows).size() - 1, row.rows) << row.what;
    }
}

TEST_P(OperationMoney, ListsPaymentsAndRefundsThatAreToBeSubmitted)
{
    const auto listed = [&](bool all) {
        ado::Recordset rows;
        EXPECT_EQ(money_.OPM_MakeTransactionForSunapRefund(connection_, day(1), day(24), all, &rows), 0);
        QStringList lines;
        for (; rows.hasCurrent(); rows.MoveNext())
            lines += QStringLiteral("%1 %2 %3 %4")
                         .arg(rows["name"].toString(), rows["tpstrans_Date"].toDate().toString("d"))
                         .arg(rows["tpstrans_Operator"].toInt())
                         .arg(runtime::CLng(rows["tpstrans_Money"]));
        lines.sort();
        return lines;
    };
    // Rows of 0 or no money are never listed: the customer's payments of the 20th are not there.
    QStringList all{"김영희 1 3 2000",  "김영희 2 3 5390", "김영희 3 3 1000", "김영희 3 4 300",
                    "김영희 5 3 15000", "김영희 6 3 2850", "김영희 7 3 -500", "김영희 7 4 300",
                    "김영희 20 4 740",  "박'철수 24 3 1",  "박'철수 24 4 900"};
    all.sort();
    EXPECT_EQ(listed(true).join(u'\n').toStdString(), all.join(u'\n').toStdString());
    all.replace(all.indexOf("김영희 1 3 2000"), "김영희 1 3 1000");
    EXPECT_EQ(listed(false).join(u'\n').toStdString(), all.join(u'\n').toStdString());
}

TEST_P(OperationMoney, IsCalledByNameWithAmountsWrittenBack)
{
    QVariantList lent{QVariant::fromValue(connection_)};
    clsOperationMoney byName;
    EXPECT_TRUE(automation::call(byName, "OPM_SetConnection", lent).toBool());
    QVariantList arguments{101, 0};
    EXPECT_TRUE(automation::call(byName, "opm_getcutbytransaction", arguments).toBool());
    EXPECT_EQ(arguments.at(1).toInt(), 70);
}

INSTANTIATE_TEST_SUITE_P(Engines, OperationMoney, testing::ValuesIn(allEngines), engineName);

} // namespace
