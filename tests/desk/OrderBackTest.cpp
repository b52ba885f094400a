#include "desk/undo/OrderBack.h"
#include "desk/backup/Backup.h"
#include "desk/journal/Seal.h"
#include "desk/sample/Clinic.h"
#include "tests/desk/Content.h"
#include "tests/support/Refusal.h"

#include <gmock/gmock.h>

#include <QThread>

namespace {

class OrderBack : public testing::TestWithParam<ado::Engine>
{
protected:
    OrderBack()
        : clinic_(GetParam(), false)
    {
        sample::fill(*clinic_.connection(), sample::Size::Small);
        if (GetParam() != ado::Engine::SQLite)
            clinic_.run("ALTER TABLE tPSOrderDetail ALTER COLUMN OrdD_PK SET GENERATED ALWAYS");
        journal::attend(*clinic_.connection());
        for (const char *statement :
             {"UPDATE tPSOrderMaster SET OrdM_ETCMemo = '탭\t줄\n역\\빗금 \\N', OrdM_Address = '', OrdM_Misugum = "
              "922337203685477 WHERE OrdM_PK = 7",
              "UPDATE tPSTransaction SET tpstrans_Memo = NULL, tpstrans_Method = NULL WHERE tpstrans_OrderM_PK = 7",
              // A treatment receipt of another patient has the order's number.
              "INSERT INTO tPSTransaction (tpstrans_PK, tpstrans_Customer_PK, tpstrans_OrderM_PK, tpstrans_Operator, "
              "tpstrans_Money) VALUES (90000, 30, 7, 3, 50)"})
            clinic_.run(QString::fromUtf8(statement));
        backup_ = folder_.filePath("clinic.backup");
        if (GetParam() != ado::Engine::Odbc)
            backup::backUp(clinic_.address(), backup_);
        clinic_.run("DELETE FROM tPSTransaction WHERE tpstrans_PK = 90000");
        before_ = contentOf(clinic_);
    }

    /// As the sale window does, over a line of whatever speed.
    void deleteOrder(unsigned long milliseconds = 0)
    {
        ado::Connection &desk = *clinic_.connection();
        desk.BeginTrans();
        for (const char *statement :
             {"DELETE FROM tPSOrderDetail WHERE OrdM_PK = 7", "DELETE FROM tPSTransaction WHERE tpstrans_OrderM_PK = 7",
              "DELETE FROM tPSOrderMaster WHERE OrdM_PK = 7"}) {
            desk.Execute(QLatin1String(statement));
            QThread::msleep(milliseconds);
        }
        desk.CommitTrans();
    }
    undo::LostOrder lost(bool fromJournal)
    {
        return fromJournal ? undo::orderInJournal(*clinic_.connection(), 7) : undo::orderInBackup(backup_, 7);
    }

    TestDatabase clinic_;
    const QTemporaryDir folder_;
    QString backup_;
    QStringList before_;
};
INSTANTIATE_TEST_SUITE_P(Engines, OrderBack,
                         testing::Values(ado::Engine::SQLite, ado::Engine::PostgreSQL, ado::Engine::Odbc), engineName);

} // namespace

TEST_P(OrderBack, ComesWithItsLinesAndItsMoneyUnderItsOwnKeys)
{
    for (const bool fromJournal : {false, true}) {
        if (!fromJournal && GetParam() == ado::Engine::Odbc)
            continue;
        deleteOrder();
        ASSERT_NE(contentOf(clinic_), before_);
        const undo::PutBack outcome = undo::putBack(*clinic_.connection(), lost(fromJournal));
        EXPECT_EQ(contentOf(clinic_).join('\n').toStdString(), before_.join('\n').toStdString());
        EXPECT_GT(outcome.lines, 0);
        EXPECT_EQ(outcome.notices, QStringList());
        EXPECT_THAT(refusal([&] { undo::putBack(*clinic_.connection(), lost(fromJournal)); }),
                    testing::HasSubstr("이미 있는 거래"));
    }
}

TEST_P(OrderBack, BringsWhatWentWithItAndNothingThatHadGoneBefore)
{
    const char *const line =
        "DELETE FROM tPSOrderDetail WHERE OrdD_PK = (SELECT MIN(OrdD_PK) FROM tPSOrderDetail WHERE OrdM_PK = 7)";
    const char *const money = "DELETE FROM tPSTransaction WHERE tpstrans_PK = (SELECT MIN(tpstrans_PK) FROM "
                              "tPSTransaction WHERE tpstrans_OrderM_PK = 7)";
    const struct
    {
        const char *gone;
        const char *thereafter;
        unsigned long milliseconds; ///< before the order goes
        unsigned long slowness;     ///< of the line to the server
    } cases[]{{money, "SELECT 1", 1'100, 0},
              {line, "UPDATE tPSOrderMaster SET OrdM_Total = OrdM_Total - 1 WHERE OrdM_PK = 7", 0, 600}};
    for (const auto &one : cases) {
        const QStringList whole = contentOf(clinic_);
        clinic_.run(one.gone);
        ASSERT_NE(contentOf(clinic_), whole);
        clinic_.run(one.thereafter);
        const QStringList shorter = contentOf(clinic_);
        QThread::msleep(one.milliseconds);
        deleteOrder(one.slowness);
        undo::putBack(*clinic_.connection(), lost(true));
        EXPECT_EQ(contentOf(clinic_), shorter) << one.gone;
    }
}

TEST_P(OrderBack, IsRefusedWholeWhereSomethingElseStands)
{
    deleteOrder();
    const undo::LostOrder order = lost(true);
    const QString money = QString::number(order.rows.last().key());
    const QStringList gone = contentOf(clinic_);
    const struct
    {
        const char *meanwhile;
        const char *thereafter;
        const char *told;
    } cases[]{
        {"INSERT INTO tPSOrderMaster (OrdM_PK, Cust_PK, OrdM_Date) VALUES (7, 1, '2026-11-24')",
         "DELETE FROM tPSOrderMaster WHERE OrdM_PK = 7", "이미 있는 거래"},
        {"UPDATE Customer SET Customer_PK = -Customer_PK", "UPDATE Customer SET Customer_PK = -Customer_PK",
         "환자가 없는 거래"},
        {"INSERT INTO tPSTransaction (tpstrans_PK) VALUES (%1)", "DELETE FROM tPSTransaction WHERE tpstrans_PK = %1",
         "다른 내역이 쓰고 있어"},
    };
    for (const auto &one : cases) {
        clinic_.run(QString(one.meanwhile).replace("%1", money));
        EXPECT_THAT(refusal([&] { undo::putBack(*clinic_.connection(), order); }), testing::HasSubstr(one.told));
        clinic_.run(QString(one.thereafter).replace("%1", money));
        EXPECT_EQ(contentOf(clinic_), gone) << one.meanwhile;
    }
    clinic_.run("DELETE FROM tPSProductMaster");
    const undo::PutBack outcome = undo::putBack(*clinic_.connection(), order);
    EXPECT_EQ(outcome.notices.size(), outcome.lines) << "each line's product is gone";
}
