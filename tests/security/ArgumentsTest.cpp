#include "data/clsSQL.h"
#include "desk/sample/Clinic.h"
#include "money/clsOperationMoney.h"
#include "platform/ado/Recordset.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/RuntimeError.h"
#include "session/modGlobalVars.h"
#include "settings/clsProperties.h"
#include "tests/support/Refusal.h"
#include "tests/support/TestDatabase.h"

#include <gmock/gmock.h>

#include <ostream>

// What a text that goes unescaped into a statement can and cannot do. docs/security.md says each of these in words.

namespace {

using testing::HasSubstr;

class Arguments : public testing::TestWithParam<ado::Engine>
{
protected:
    Arguments()
        : clinic_(GetParam(), false)
    {
        sample::fill(*clinic_.connection(), sample::Size::Small);
        gcnnMasterDB = clinic_.connection();
    }
    ~Arguments() override { gcnnMasterDB.reset(); }

    /// A return with that remark, as the return dialog writes it: "" when it was written, else the refusal.
    std::string returnWith(const QString &remark)
    {
        const QString statement = clsSQL().insDB2RfndOrderDetailSQL(1, 1, runtime::Currency::fromWon(900), -1, remark);
        return refusal([&] { clinic_.connection()->Execute(statement); });
    }
    /// The first value of a reading.
    std::string read(const QString &statement, QString *value = nullptr)
    {
        return refusal([&] {
            ado::Recordset rows;
            rows.Open(statement, clinic_.connection(), ado::CursorType::Static, ado::LockType::ReadOnly);
            if (value)
                *value = rows.hasCurrent() ? runtime::text(rows[rows.fieldNames().first()]) : QString();
        });
    }
    QString count(const char *from)
    {
        return clinic_.value(QStringLiteral("SELECT COUNT(*) FROM ") + QString::fromUtf8(from));
    }

    TestDatabase clinic_;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Engines, Arguments, testing::ValuesIn(allEngines), engineName);

TEST_P(Arguments, NeverBeginASecondStatementNorHideTheRest)
{
    const QString lines = count("tPSOrderDetail");
    const QString ledger = count("tPSTransaction");
    const struct
    {
        const char *remark, *refusal;
    } attacks[]{
        {"x'); DELETE FROM tPSTransaction; SELECT ('", "한 문장만"},
        {"x'); DELETE FROM tPSTransaction", "한 문장만"},
        {"x') --", "주석"},
        {"x') /* ", "주석"},
        {"'); COMMIT; BEGIN; SELECT ('", "한 문장만"},
        {"it's", "따옴표"},
    };
    for (const auto &attack : attacks) {
        EXPECT_THAT(returnWith(QString::fromLatin1(attack.remark)), HasSubstr(attack.refusal)) << attack.remark;
        EXPECT_THAT(read(clsSQL().getNumOfSameProdName(QString::fromLatin1(attack.remark))),
                    testing::Not(testing::IsEmpty()))
            << attack.remark;
    }
    EXPECT_EQ(count("tPSOrderDetail"), lines);
    EXPECT_EQ(count("tPSTransaction"), ledger);
}

TEST_P(Arguments, AreBoundToTheStatementsOwnTable)
{
    const QString ledger = count("tPSTransaction");
    for (const char *remark : {
             "' || (WITH gone AS (DELETE FROM tPSTransaction RETURNING 1) SELECT COUNT(*) FROM gone) || '",
             "' || (DELETE FROM tPSTransaction) || '",
             "' || (UPDATE tPSTransaction SET tpstrans_Money = 0 RETURNING 'x') || '",
         })
        EXPECT_THAT(returnWith(QString::fromLatin1(remark)), testing::Not(testing::IsEmpty())) << remark;
    EXPECT_THAT(read(clsSQL().getNumOfSameProdName(QStringLiteral(
                    "' UNION (WITH gone AS (DELETE FROM tPSTransaction RETURNING 1) SELECT COUNT(*) FROM gone) "
                    "UNION SELECT 1 WHERE 'x' = '"))),
                testing::Not(testing::IsEmpty()));
    EXPECT_EQ(count("tPSTransaction WHERE tpstrans_Money <> 0"), ledger);

    // Rows that are there cannot be changed by an insertion, since its columns hold no key to collide with.
    const QString before = clinic_.rows("SELECT * FROM tPSOrderDetail ORDER BY OrdD_PK").join(u'\n');
    returnWith(QStringLiteral("x') ON CONFLICT (OrdD_PK) DO UPDATE SET OrdD_Count = ('0"));
    EXPECT_EQ(clinic_.rows("SELECT * FROM tPSOrderDetail ORDER BY OrdD_PK").join(u'\n').left(before.size()), before);
}

TEST_P(Arguments, CanAddRowsToTheStatementsOwnTable)
{
    EXPECT_EQ(returnWith(QStringLiteral("x'), (2, 1, 1, 0, -500, 'of another order")), "");
    EXPECT_EQ(count("tPSOrderDetail WHERE OrdM_PK = 2 AND OrdD_Count = -500"), QStringLiteral("1"));
    // So does a property that is written for the first time; one that is there takes any text as it is.
    clsProperties().PropValue("새 항목", QStringLiteral("x'), ('또 하나', 'y"));
    EXPECT_EQ(count("tPSProperties WHERE tpsps_Key = '또 하나'"), QStringLiteral("1"));
    clsProperties().PropValue("지점명", QStringLiteral("x'), ('셋', 'y"));
    EXPECT_EQ(clsProperties().PropValue("지점명"), QStringLiteral("x'), ('셋', 'y"));
    EXPECT_EQ(count("tPSProperties WHERE tpsps_Key = '셋'"), QStringLiteral("0"));
}

TEST_P(Arguments, CanReadWhatTheConnectionMayRead)
{
    EXPECT_EQ(returnWith(QStringLiteral("' || (SELECT ssn1 FROM Customer WHERE Customer_PK = 1) || '")), "");
    EXPECT_EQ(count("tPSOrderDetail WHERE OrdD_RfndMemo = (SELECT ssn1 FROM Customer WHERE Customer_PK = 1)"),
              QStringLiteral("1"));
    QString value;
    EXPECT_EQ(read(clsSQL().getNumOfSameProdName(QStringLiteral("x' OR '1' = '1")), &value), "");
    EXPECT_EQ(value, count("tPSProductMaster"));
    // The kind of payment that the desk program asks the ledger for.
    clsOperationMoney ledger;
    ledger.OPM_SetConnection(clinic_.connection());
    qint32 money = 0;
    EXPECT_TRUE(ledger.OPM_GetPayByCustDateCatagory(0, QDate(2026, 1, 1), QStringLiteral("' OR '1' = '1"), money));
    EXPECT_GT(money, 0);
}

TEST_P(Arguments, ThatAreDoubledReachTheirColumnWhole)
{
    const QString text = QStringLiteral("'); DELETE FROM tPSTransaction; -- [MONEY] \\' %");
    clinic_.connection()->Execute(
        clsSQL().InsertTransactionSQL(1, QDate(2026, 1, 1), 3, 77, 1, QStringLiteral("00"), text));
    ado::Recordset row;
    row.Open(QStringLiteral("SELECT * FROM tPSTransaction WHERE tpstrans_Money = 77"), clinic_.connection(),
             ado::CursorType::Static, ado::LockType::ReadOnly);
    ASSERT_TRUE(row.hasCurrent());
    EXPECT_EQ(row[QStringLiteral("tpstrans_Memo")].toString().toStdString(), text.toStdString());
}

TEST(ArgumentsOfAFile, ReachNoFunctionsOutsideTheDatabase)
{
    TestDatabase clinic(ado::Engine::SQLite, false);
    sample::fill(*clinic.connection(), sample::Size::Small); // a call is made for a row
    for (const char *call : {"load_extension('x.so')", "writefile('/tmp/x', 'y')", "readfile('/etc/hostname')"}) {
        ado::Recordset rows;
        EXPECT_THROW(
            rows.Open(clsSQL().getNumOfSameProdName(QStringLiteral("' || %1 || '").arg(QString::fromLatin1(call))),
                      clinic.connection(), ado::CursorType::Static, ado::LockType::ReadOnly),
            runtime::RuntimeError)
            << call;
    }
}
