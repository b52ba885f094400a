#include "data/clsSQL.h"
#include "platform/runtime/RuntimeError.h"
#include "products/GoneRow.h"
#include "products/IncomingOperations.h"
#include "products/ProductOperations.h"
#include "session/modGlobalVars.h"
#include "tests/support/TestDatabase.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>

#include <gmock/gmock.h>

#include <array>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Lines = std::vector<std::string>;

/// One desk of the shop: its own session on its own connection.
struct Till
{
    explicit Till(const ado::ConnectionPtr &lent)
        : connection(lent)
    {
        load();
    }
    /// What works on gcnnMasterDB works on this desk's connection now.
    Till &here()
    {
        gcnnMasterDB = connection;
        return *this;
    }
    void load()
    {
        open(session.rsSaleProductListsManager, clsSQL().getProductMasterSQL(true));
        open(session.rsCompanyMaster, clsSQL().getCmpnyMstrSQL());
        open(session.rsProductIncoming, clsSQL().getProdIncomingSQL(1));
    }
    void open(SaleSession::RecordsetPtr &recordset, const QString &source)
    {
        recordset = std::make_unique<ado::Recordset>();
        recordset->Open(source, connection, ado::CursorType::Keyset, ado::LockType::Optimistic);
    }

    ado::ConnectionPtr connection;
    SaleSession session;
    ProductOperations products{session};
    IncomingOperations incoming{session};
};

class Shop : public testing::TestWithParam<ado::Engine>
{
protected:
    ~Shop() override { gcnnMasterDB.reset(); }

    Lines rows(const char *statement)
    {
        Lines lines;
        for (const QString &line : database_.rows(QString::fromUtf8(statement)))
            lines.push_back(line.toStdString());
        return lines;
    }
    void run(const char *statement) { database_.run(QString::fromUtf8(statement)); }
    Lines products()
    {
        return rows(
            "SELECT PM_Catagory, PM_Name, PM_UnitPrice, PM_IsTaxed, PM_IsValid, PM_IsHide, PM_EtcMemo, PM_AddedDate "
            "FROM tPSProductMaster ORDER BY PM_PK");
    }
    Lines purchases()
    {
        return rows("SELECT PM_PK, CM_PK, IN_Count, IN_UnitPrice, IN_HalinTotal, IN_Total, IN_EtcMemo, IN_Date FROM "
                    "tPSIncoming "
                    "ORDER BY IN_PK");
    }
    Till &desk() { return first_.here(); }
    Till &otherDesk()
    {
        if (!second_)
            second_ = std::make_unique<Till>(database_.otherDesk());
        return second_->here();
    }

    static ProductEdit tea() { return {" 차 ", "감초차", "\\12,000", "단 맛", true, false, QDate(2026, 11, 24)}; }
    static IncomingEdit twelve() { return {"7", "12", "\\1,000", "\\500", "\\11,500", "외상", QDate(2026, 11, 24)}; }

    const QString writer = QCoreApplication::applicationDirPath() + QStringLiteral("/product_writer");
    TestDatabase database_{GetParam()};

private:
    Till first_{database_.connection()};
    std::unique_ptr<Till> second_;
};

const char *const storedTea = "차|감초차|12000|1|0|NULL|단 맛|2026-11-24";

} // namespace

TEST_P(Shop, AProductRefusedForItsNameIsStoredOnceWhenItIsSavedAgain)
{
    for (const auto &[catagory, name] : {std::pair("", "감초차"), {"차", "  "}, {" ", ""}}) {
        ado::AbandonedTransactions edgeOfEvent;
        ProductEdit edit = tea();
        edit.catagory = catagory;
        edit.name = name;
        EXPECT_EQ(desk().products.add(edit), SaveOutcome::Refused);
        EXPECT_TRUE(gcnnMasterDB->inTransaction()) << "the check comes after the begin";
    }
    EXPECT_FALSE(gcnnMasterDB->inTransaction());
    EXPECT_EQ(desk().products.add(tea()), SaveOutcome::Saved);
    EXPECT_FALSE(gcnnMasterDB->inTransaction());
    EXPECT_THAT(products(), ElementsAre(storedTea));

    // Refused and given up: the next save of another row brings nothing of it along.
    EXPECT_EQ(desk().products.add({}), SaveOutcome::Refused);
    desk().session.rsSaleProductListsManager->Requery();
    gcnnMasterDB->RollbackTrans();
    desk().products.beginChange();
    EXPECT_EQ(desk().products.change(tea()), SaveOutcome::Saved);
    EXPECT_EQ(desk().products.add(tea()), SaveOutcome::Saved) << "one name may stand twice";
    EXPECT_THAT(products(), ElementsAre(storedTea, storedTea));
    EXPECT_EQ(countSameExistProductName(gcnnMasterDB, QStringLiteral("감초차")), 2);
}

TEST_P(Shop, AProductWithoutPriceFlagsAndDateKeepsToWhatThePanelShows)
{
    run("INSERT INTO tPSProductMaster (PM_Name, PM_IsHide) VALUES ('빈 물품', 1)");
    desk().load();
    ProductEdit shown{"기타", "빈 물품", "", "", true, false, QDate(1900, 1, 1)};
    desk().products.beginChange();
    EXPECT_EQ(desk().products.change(shown), SaveOutcome::Saved);
    EXPECT_THAT(products(), ElementsAre("기타|빈 물품|NULL|1|0|1||1900-01-01"));

    shown.unitPrice = QStringLiteral("\\0");
    desk().products.beginChange();
    EXPECT_EQ(desk().products.change(shown), SaveOutcome::Saved);
    EXPECT_THAT(rows("SELECT PM_UnitPrice FROM tPSProductMaster"), ElementsAre("0"));
    shown.unitPrice.clear(); // a box emptied by the user stands for no money
    EXPECT_EQ(desk().products.add(shown), SaveOutcome::Saved);
    EXPECT_THAT(rows("SELECT PM_UnitPrice FROM tPSProductMaster ORDER BY PM_PK"), ElementsAre("0", "0"));
}

TEST_P(Shop, AnEditSavesTheProductItBeganWith)
{
    run("INSERT INTO tPSProductMaster (PM_Catagory, PM_Name) VALUES ('가', '첫째'), ('나', '둘째')");
    desk().load();
    ado::Recordset &list = *desk().session.rsSaleProductListsManager;
    list.moveTo(1);
    desk().products.beginChange();
    run("UPDATE tPSProductMaster SET PM_IsHide = 1 WHERE PM_PK = 2"); // what no save assigns takes no part
    list.Requery();                                                   // stands on the first product again
    EXPECT_EQ(desk().products.change(tea()), SaveOutcome::Saved);
    EXPECT_THAT(rows("SELECT PM_Name FROM tPSProductMaster ORDER BY PM_PK"), ElementsAre("첫째", "감초차"));

    // Changed by another desk and read anew since: what was typed knew nothing of that.
    list.Requery();
    list.moveTo(1);
    desk().products.beginChange();
    run("UPDATE tPSProductMaster SET PM_EtcMemo = '품절' WHERE PM_PK = 2");
    list.Requery();
    EXPECT_EQ(desk().products.change(tea()), SaveOutcome::Failed);
    run("DELETE FROM tPSProductMaster WHERE PM_PK = 2");
    list.Requery();
    EXPECT_EQ(desk().products.change(tea()), SaveOutcome::Failed);
    EXPECT_THAT(rows("SELECT PM_Name, PM_EtcMemo FROM tPSProductMaster"), ElementsAre("첫째|NULL"));
    EXPECT_FALSE(gcnnMasterDB->inTransaction());
}

TEST_P(Shop, APurchaseThatFailedUntrappedIsStoredOnceByTheNextSave)
{
    run("INSERT INTO tPSProductMaster (PM_Catagory, PM_Name) VALUES ('가', '첫째')");
    IncomingEdit edit = twelve();
    edit.companyTag = QStringLiteral(" ");
    EXPECT_EQ(desk().incoming.add(ProductKey(1), edit), SaveOutcome::Refused);
    edit = twelve();
    edit.date = QDate();
    {
        ado::AbandonedTransactions edgeOfEvent;
        EXPECT_THROW(desk().incoming.add(ProductKey(1), edit), runtime::RuntimeError);
        EXPECT_TRUE(gcnnMasterDB->inTransaction());
    }
    EXPECT_THAT(purchases(), IsEmpty());
    EXPECT_EQ(desk().incoming.add(ProductKey(1), twelve()), SaveOutcome::Saved);
    EXPECT_THAT(purchases(), ElementsAre("1|7|12|1000|500|11500|외상|2026-11-24"));

    // What no number is counts as far as it is one in the quantity, and by its digits in money.
    edit = {"3", "-2.5개", "값 1,500", "", "-\\3,750", "", QDate(2026, 1, 2)};
    EXPECT_EQ(desk().incoming.change(IncomingKey(1), edit), SaveOutcome::Saved);
    EXPECT_THAT(purchases(), ElementsAre("1|3|-2.5|1500|0|-3750||2026-01-02"));
}

TEST_P(Shop, AnOpenEditKeepsNobodyWaiting)
{
    EXPECT_EQ(desk().products.add({}), SaveOutcome::Refused); // transaction and new row stay open
    QElapsedTimer clock;
    clock.start();
    otherDesk();
    gcnnMasterDB->Execute("INSERT INTO tPSOrderDetail (OrdM_PK, PM_PK, OrdD_Count) VALUES (1, 1, 1)");
    EXPECT_EQ(otherDesk().products.add(tea()), SaveOutcome::Saved);
    EXPECT_LT(clock.elapsed(), 2'000);
    EXPECT_EQ(desk().products.add(tea()), SaveOutcome::Saved);
    EXPECT_THAT(products(), ElementsAre(storedTea, storedTea));
}

TEST_P(Shop, TwoDesksThatAddAtOnceLoseNothing)
{
    constexpr int each = 500;
    std::array<QProcess, 2> desks;
    for (std::size_t i = 0; i < desks.size(); ++i)
        desks[i].start(writer, {database_.address(), QStringLiteral("desk%1-").arg(i), QString::number(each)});
    for (QProcess &desk : desks) {
        ASSERT_TRUE(desk.waitForFinished(120'000));
        ASSERT_EQ(desk.exitCode(), 0) << desk.readAllStandardError().toStdString();
    }
    const std::string sum = std::to_string(each * (each + 1) / 2);
    EXPECT_THAT(
        rows(
            "SELECT PM_Catagory, COUNT(DISTINCT PM_Name), SUM(PM_UnitPrice) FROM tPSProductMaster GROUP BY PM_Catagory "
            "ORDER BY PM_Catagory"),
        ElementsAre("desk0-|500|" + sum, "desk1-|500|" + sum));
    EXPECT_THAT(
        rows("SELECT COUNT(*), SUM(IN_Count) FROM tPSIncoming INNER JOIN tPSProductMaster ON tPSIncoming.PM_PK = "
             "tPSProductMaster.PM_PK WHERE IN_Count = PM_UnitPrice"),
        ElementsAre("1000|" + std::to_string(each * (each + 1))));
}

// Two programs: whichever is second is told and changes nothing of the first one's row.
TEST_P(Shop, OneOfTwoDesksThatSaveTheSameRowAtOnceFails)
{
    run("INSERT INTO tPSProductMaster (PM_Catagory, PM_Name) VALUES ('가', '첫째')");
    run("INSERT INTO tPSCompanyMaster (CM_Name) VALUES ('한약방')");
    run("INSERT INTO tPSIncoming (PM_PK, CM_PK, IN_Count) VALUES (1, 1, 1)");
    run("INSERT INTO tPSOrderMaster (Cust_PK, OrdM_Date) VALUES (1, '2026-11-01')");
    const struct
    {
        QString row;
        const char *stored;
    } races[] = {
        {"product", "SELECT PM_Name, PM_EtcMemo FROM tPSProductMaster"},
        {"dealer", "SELECT CM_Name, CM_EtcMemo FROM tPSCompanyMaster"},
        {"purchase", "SELECT IN_EtcMemo, IN_EtcMemo FROM tPSIncoming"},
        {"order", "SELECT OrdM_Address, OrdM_ETCMemo FROM tPSOrderMaster"},
    };
    for (const auto &race : races) {
        std::array<QProcess, 2> desks;
        for (std::size_t i = 0; i < desks.size(); ++i)
            desks[i].start(writer, {database_.address(), QStringLiteral("desk%1").arg(i), race.row});
        for (QProcess &desk : desks) {
            while (!desk.canReadLine())
                ASSERT_TRUE(desk.waitForReadyRead(20'000)) << desk.readAllStandardError().toStdString();
            ASSERT_EQ(desk.readLine(), "ready\n");
        }
        for (QProcess &desk : desks)
            desk.write("now\n");
        Lines saved;
        for (std::size_t i = 0; i < desks.size(); ++i) {
            ASSERT_TRUE(desks[i].waitForFinished(20'000));
            if (desks[i].readAllStandardOutput() == "saved\n")
                saved.push_back("desk" + std::to_string(i) + "|desk" + std::to_string(i));
        }
        EXPECT_EQ(saved.size(), 1u) << race.row.toStdString();
        EXPECT_EQ(rows(race.stored), saved) << race.row.toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Engines, Shop, testing::ValuesIn(allEngines), engineName);
