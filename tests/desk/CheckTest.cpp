#include "desk/check/Examination.h"
#include "desk/sample/Clinic.h"
#include "tests/support/TestDatabase.h"

#include <map>
#include <memory>
#include <ostream>

using namespace std::chrono_literals;

namespace {

/// One small clinic an engine; what a test does to it is rolled back.
class Check : public testing::TestWithParam<ado::Engine>
{
protected:
    static void TearDownTestSuite() { clinics_.clear(); }

    void SetUp() override
    {
        std::unique_ptr<TestDatabase> &clinic = clinics_[GetParam()];
        if (!clinic) {
            clinic = std::make_unique<TestDatabase>(GetParam(), false);
            sample::fill(*clinic->connection(), sample::Size::Small);
        }
        connection_ = clinic->connection();
    }

    /// Titles of the queries that find something after the statements.
    QStringList found(const QString &statements)
    {
        connection_->BeginTrans();
        for (const QString &statement : statements.split(u';'))
            EXPECT_NE(connection_->Execute(statement), 0) << statement.toStdString();
        QStringList titles;
        for (const check::Query &query : check::queries()) {
            const check::Finding finding = check::examine(*connection_, query, 0ms);
            EXPECT_EQ(finding.failure, QString()) << query.title.toStdString();
            if (finding.violations > 0)
                titles << query.title;
        }
        connection_->RollbackTrans();
        return titles;
    }

    ado::ConnectionPtr connection_;

private:
    static inline std::map<ado::Engine, std::unique_ptr<TestDatabase>> clinics_;
};

const QString touchNothing = QStringLiteral("UPDATE tPSProperties SET tpsps_Key = tpsps_Key");

} // namespace

INSTANTIATE_TEST_SUITE_P(Engines, Check, testing::ValuesIn(allEngines), engineName);

TEST_P(Check, FindsEachDamageAndNothingBeside)
{
    // The keys: order 1 is patient 1's here, with lines of normal sale and a ledger; 900 and above are nobody's.
    const struct
    {
        const char *damage, *title;
    } damages[]{
        {"UPDATE tPSOrderMaster SET OrdM_TaxTotal = OrdM_TaxTotal + 1 WHERE OrdM_PK = 1",
         "총액이 과세·비과세 합계와 다른 주문"},
        {"UPDATE tPSOrderMaster SET OrdM_Total = OrdM_Total + 1, OrdM_TaxFreeTotal = OrdM_TaxFreeTotal + 1 WHERE "
         "OrdM_PK = 1",
         "총액이 판매 내역의 합계와 다른 주문"},
        {"INSERT INTO tPSOrderDetail (OrdM_PK, PM_PK, OrdD_UnitPrice, OrdD_HalinUnit, OrdD_Count) VALUES (1, 1, 500, "
         "100, -2)",
         "총액이 판매 내역의 합계와 다른 주문"},
        {"DELETE FROM tPSOrderDetail WHERE OrdM_PK = 1", "총액이 판매 내역의 합계와 다른 주문"},
        {"DELETE FROM tPSProductMaster; UPDATE tPSOrderMaster SET OrdM_Total = 0, OrdM_TaxTotal = 0, OrdM_TaxFreeTotal "
         "= 0 "
         "WHERE OrdM_PK = 1",
         "삭제된 물품의 판매 내역이 총액에서 빠진 거래"},
        {"INSERT INTO tPSOrderMaster (Cust_PK, OrdM_Date) VALUES (900, '2026-01-01')", "환자가 없는 주문"},
        {"INSERT INTO tPSOrderMaster (OrdM_PK, Cust_PK, OrdM_Date) VALUES (0, 1, '2026-01-01')",
         "번호가 0 이하인 주문"},
        {"UPDATE tPSOrderMaster SET OrdM_Gubun = 3 WHERE OrdM_PK = 1", "수령 방법이 잘못된 주문"},
        {"INSERT INTO tPSOrderDetail (OrdM_PK, PM_PK, OrdD_UnitPrice, OrdD_HalinUnit, OrdD_Count) VALUES (90000, 1, 0, "
         "0, 1)",
         "주문이 없는 판매 내역"},
        {"UPDATE tPSOrderDetail SET OrdD_OrderType = 3 WHERE OrdM_PK = 1", "판매 종류가 잘못된 판매 내역"},
        {"INSERT INTO tPSOrderDetail (OrdM_PK, PM_PK, OrdD_UnitPrice, OrdD_HalinUnit) VALUES (1, 1, 500, 0)",
         "수량이 없거나 범위를 벗어난 판매 내역"},
        {"INSERT INTO tPSOrderDetail (OrdM_PK, PM_PK, OrdD_UnitPrice, OrdD_HalinUnit, OrdD_Count, OrdD_OrderType) "
         "VALUES (1, 1, 500, 500, 1, 2)",
         "값이 붙은 서비스·망실 내역"},
        {"UPDATE tPSTransaction SET tpstrans_OrderM_PK = 90000 WHERE tpstrans_PK = 1",
         "주문도 진료 영수증도 없는 수납 내역"},
        {"UPDATE tPSTransaction SET tpstrans_OrderM_PK = NULL WHERE tpstrans_PK = 1",
         "주문도 진료 영수증도 없는 수납 내역"},
        {"UPDATE tPSTransaction SET tpstrans_Customer_PK = tpstrans_Customer_PK + 1 WHERE tpstrans_PK = 1",
         "다른 환자의 주문에 적힌 수납 내역"},
        {"UPDATE tPSTransaction SET tpstrans_Operator = 0 WHERE tpstrans_PK = 1",
         "방법이나 결재 코드가 잘못된 수납 내역"},
        {"UPDATE tPSTransaction SET tpstrans_Operator = 5 WHERE tpstrans_PK = 1",
         "방법이나 결재 코드가 잘못된 수납 내역"},
        {"UPDATE tPSTransaction SET tpstrans_Method = '03' WHERE tpstrans_PK = 1",
         "방법이나 결재 코드가 잘못된 수납 내역"},
        {"UPDATE tPSTransaction SET tpstrans_Money = NULL WHERE tpstrans_PK = 1",
         "금액이 없거나 범위를 벗어난 수납 내역"},
        {"UPDATE tPSIncoming SET CM_PK = 900 WHERE IN_PK = 1", "거래처가 없는 구매 내역"},
        {"UPDATE tPSProductMaster SET PM_Name = '  ' WHERE PM_PK = 1", "분류나 물품명이 없는 물품"},
        {"UPDATE tPSCompanyMaster SET CM_Name = '' WHERE CM_PK = 1", "이름이 없는 거래처"},
        {"UPDATE tPSOrderMaster SET OrdM_Date = '0026-11-24' WHERE OrdM_PK = 1", "날짜가 달력을 벗어난 기록"},
        {"UPDATE tPSTransaction SET tpstrans_Date = '0206-01-01' WHERE tpstrans_PK = 1", "날짜가 달력을 벗어난 기록"},
    };
    QStringList reported;
    for (const auto &damage : damages) {
        const QString title = QString::fromUtf8(damage.title);
        EXPECT_EQ(found(QString::fromUtf8(damage.damage)).join(u'\n').toStdString(), title.toStdString())
            << damage.damage;
        reported << title;
    }
    for (const check::Query &query : check::queries())
        EXPECT_TRUE(reported.contains(query.title)) << query.title.toStdString();
}

TEST_P(Check, LetsPassWhatTheDesksThemselvesMake)
{
    EXPECT_EQ(found(touchNothing).join(u'\n').toStdString(), "");
    for (const char *legal : {
             // Set by hand in the order pane, or left by a payment beyond the total or the outstanding money.
             "UPDATE tPSOrderMaster SET OrdM_Misugum = -500, OrdM_HalinTotal = 7 WHERE OrdM_PK = 1",
             "UPDATE tPSOrderMaster SET OrdM_Gubun = NULL, OrdM_Misugum = NULL WHERE OrdM_PK = 1",
             // An edit to no amount; a bank transfer; a payment under zero; a row that tells neither kind nor method.
             "UPDATE tPSTransaction SET tpstrans_Money = 0, tpstrans_Method = '' WHERE tpstrans_PK = 1",
             "UPDATE tPSTransaction SET tpstrans_Method = '02', tpstrans_Money = -3000 WHERE tpstrans_PK = 1",
             "UPDATE tPSTransaction SET tpstrans_Method = NULL, tpstrans_Operator = NULL WHERE tpstrans_PK = 1",
             // The desk's own treatment receipts, one of them under the key of another patient's order.
             "INSERT INTO tPSTransaction (tpstrans_Customer_PK, tpstrans_OrderM_PK, tpstrans_Date, tpstrans_Operator, "
             "tpstrans_Money, tpstrans_Method) VALUES (1, 10000001, '2026-01-01', 3, 1, '')",
             "INSERT INTO Receipt (Receipt_PK, Customer_PK) SELECT OrdM_PK, 31 - Cust_PK FROM tPSOrderMaster WHERE "
             "OrdM_PK = 2;"
             "INSERT INTO tPSTransaction (tpstrans_Customer_PK, tpstrans_OrderM_PK, tpstrans_Operator, tpstrans_Money) "
             "SELECT Customer_PK, Receipt_PK, 3, 50 FROM Receipt WHERE Receipt_PK = 2",
             // An order whose line did not follow; a second one of the day; the last line taken away.
             "INSERT INTO tPSOrderMaster (Cust_PK, OrdM_Date, OrdM_Total) SELECT Cust_PK, OrdM_Date, 0 FROM "
             "tPSOrderMaster "
             "WHERE OrdM_PK = 1",
             "DELETE FROM tPSOrderDetail WHERE OrdM_PK = 1;"
             "UPDATE tPSOrderMaster SET OrdM_Total = 0, OrdM_TaxTotal = 0, OrdM_TaxFreeTotal = 0 WHERE OrdM_PK = 1",
             // A product that is gone leaves the old totals, until a recalculation.
             "DELETE FROM tPSProductMaster",
             // Taxed yesterday, tax-free today; without a price.
             "UPDATE tPSProductMaster SET PM_IsTaxed = 1 - PM_IsTaxed, PM_UnitPrice = NULL",
             "UPDATE tPSIncoming SET IN_Count = 0, IN_UnitPrice = -1, IN_Total = 5, PM_PK = 90000 WHERE IN_PK = 1",
         })
        EXPECT_EQ(found(QString::fromUtf8(legal)).join(u'\n').toStdString(), "") << legal;
}

TEST_P(Check, ShowsTheFirstRowsWithTheirKeys)
{
    const check::Query many{
        QStringLiteral("많은 주문"), QStringLiteral("없음"),
        QStringLiteral("SELECT OrdM_PK AS 주문번호, CASE WHEN OrdM_PK > 1 THEN OrdM_Date END AS 날짜, "
                       "OrdM_TaxTotal - OrdM_TaxTotal AS 금액, '' AS 메모 FROM tPSOrderMaster ORDER BY OrdM_PK")};
    const check::Finding finding = check::examine(*connection_, many, 1ms);
    EXPECT_EQ(finding.violations, 320);
    EXPECT_EQ(finding.firstRows.size(), check::ShownRows);
    EXPECT_EQ(finding.firstRows.value(0).toStdString(), "주문번호 1 · 날짜 (없음) · 금액 0 · 메모 (빈 값)");
    EXPECT_EQ(check::examine(*connection_, {many.title, many.remedy, QStringLiteral("SELECT nothing")}, 0ms)
                  .failure.isEmpty(),
              false);
}

TEST(CheckQueries, CountOnlyWhatStandsTwice)
{
    TestDatabase clinic(ado::Engine::SQLite);
    const check::Query passing{QStringLiteral("지나가는 행"), QStringLiteral("없음"),
                               QStringLiteral("SELECT 1 AS 번호 UNION ALL SELECT strftime('%s%f', 'now')")};
    EXPECT_EQ(check::examine(*clinic.connection(), passing, 0ms).violations, 2);
    EXPECT_EQ(check::examine(*clinic.connection(), passing, 20ms).violations, 1);
}

TEST(CheckQueries, NeedATitleARemedyAndAStatement)
{
    const QString whole = QStringLiteral("-- 제목: 가\n-- 조치: 나\n-- for the reader\nSELECT 1\n");
    EXPECT_EQ(check::readQuery(whole).statement, QStringLiteral("SELECT 1"));
    for (const char *missing : {"-- 제목: 가\n", "-- 조치: 나\n", "SELECT 1\n"})
        EXPECT_ANY_THROW(check::readQuery(QString(whole).remove(QString::fromUtf8(missing)))) << missing;
}
