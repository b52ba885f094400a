#include "tests/whole/SaleDesk.h"

#include <gmock/gmock.h>

#include <QTimer>

using controls::Answer;
using testing::EndsWith;
using testing::HasSubstr;

namespace {

/// A window of customer 7 on order 2, of two lines and a payment of 500, and another desk on the same database that is
/// quicker. Order 1 is below it, order 3 another customer's.
class StaleWindow : public testing::TestWithParam<ado::Engine>
{
protected:
    StaleWindow() { openFresh(); }

    void openFresh()
    {
        desk_.reset();
        desk_ = std::make_unique<SaleDesk>(GetParam());
        runFile(desk_->database, "whole/stale.sql");
        desk_->open();
        desk_->choose("tdbCustSaleMaster", 0);
        desk_->choose("tdbCustSaleDetails", 0);
        desk_->choose("tdbCustTranManage", 0);
    }

    void elsewhere(const char *statement) { desk_->database.run(QString::fromUtf8(statement)); }
    void withoutLedger()
    {
        elsewhere("DELETE FROM tPSTransaction");
        desk_->open();
        desk_->choose("tdbCustSaleMaster", 0);
    }
    /// Saves in the dialog that the button opens, after something has happened at another desk.
    void saveIn(
        const char *button, const char *save, const std::function<void()> &meanwhile = [] {})
    {
        desk_->in(button, [&](QWidget *dialog) {
            meanwhile();
            desk_->press(dialog, save);
        });
    }
    void payOutstanding(const std::function<void()> &meanwhile)
    {
        desk_->in("chkCmdRunMisuMoneyManger", [&](QWidget *list) {
            desk_->actor.clickRow(list->findChild<QTableView *>(), 0);
            desk_->actor.inModalWindow([&] { desk_->press(list, "cmdMisuMoneyPay"); },
                                       [&](QWidget *payment) {
                                           meanwhile();
                                           desk_->press(payment, "cmdConfirm");
                                       });
            desk_->press(list, "cmdClose");
        });
    }
    void typeOutstanding(const char *money)
    {
        QTableView *orders = desk_->grid("tdbCustSaleMaster");
        orders->setFocus();
        orders->setCurrentIndex(orders->model()->index(0, 7));
        orders->edit(orders->currentIndex());
        auto *cell = orders->findChild<QLineEdit *>();
        ASSERT_TRUE(cell);
        cell->selectAll();
        QTest::keyClicks(cell, QString::fromLatin1(money));
        QTest::keyClick(cell, Qt::Key_Return);
        walk::settle();
    }

    std::unique_ptr<SaleDesk> desk_;
};

const char *const notAdded = "판매추가: 판매추가를 실패 했습니다. 다시 시도 하십시오.\n";
const char *const notSaved = "저장: 저장을 하지 못했습니다. 서버와의 연결을 확인하십시오.\n";
const char *const productGone = "다른 데스크에서 먼저 삭제한 물품입니다.";
const char *const conflict = "다른 데스크에서 먼저 수정하거나 삭제했습니다.";
const char *const editStays = "다른 데스크에서 먼저 수정하거나 삭제했습니다. 입력한 내용은 화면에 그대로 있습니다.\n"
                              "확인한 뒤 다시 저장하거나 취소하십시오.";

/// A box's line with the remark that stands below its text.
std::string remarked(std::string line, const std::string &remark)
{
    return line.insert(line.size() - 1, " {" + remark + "}");
}

} // namespace

// After a restore a key may have come back to another patient's order, while a window stood open; or to the same patient's,
// which nobody can know to be the order that is shown.
TEST_P(StaleWindow, AnOrderOfAnotherPatientOrOfARestoredDatabaseTakesNothing)
{
    bool toAnother = true;
    std::string stored;
    const auto comesBack = [&] {
        if (toAnother) {
            elsewhere("UPDATE tPSOrderMaster SET Cust_PK = 8 WHERE OrdM_PK = 2");
            elsewhere("UPDATE tPSTransaction SET tpstrans_Customer_PK = 8");
        } else {
            elsewhere("UPDATE t_DeskSchema SET DS_Generation = DS_Generation + 1");
        }
        stored = desk_->all();
    };
    const struct
    {
        const char *what;
        std::function<void()> act;
        std::string told;
    } cases[] = {
        {"line",
         [&] {
             comesBack();
             desk_->boxes.answers = {Answer::No};
             desk_->addLine(0, "1");
         },
         notAdded},
        {"return",
         [&] {
             comesBack();
             saveIn("chkCmdRefund", "chkCmdSave");
         },
         "반품: 오류가 있어 반품처리를 완료하지 못했습니다.\n"},
        {"line's deletion",
         [&] {
             comesBack();
             desk_->answer("chkCmdDelOrderDetail", Answer::Yes);
         },
         "고객 판매 디테일 삭제: 고객 판매 디테일을 삭제하지 못했습니다.\n"},
        {"order's deletion",
         [&] {
             comesBack();
             desk_->answer("chkCmdOrderMasterED_1", Answer::Yes);
         },
         "판매 마스터 삭제: 고객 판매 마스터를 삭제하지 못했습니다.\n"},
        {"order's edit",
         [&] {
             desk_->click("chkCmdOrderMasterED_0");
             desk_->type("txtOrderMaster_5", "call");
             comesBack();
             desk_->click("chkcmdCSSaveInfo_0");
             desk_->click("chkcmdCSSaveInfo_1");
         },
         remarked(notSaved, editStays)},
        {"outstanding money in the list",
         [&] {
             comesBack();
             typeOutstanding("70");
         },
         conflict},
        {"first payment",
         [&] {
             withoutLedger();
             comesBack();
             saveIn("chkCmdAutomateReceipt", "cmdConfirm");
         },
         conflict},
        {"further payment", [&] { saveIn("chkCmdAutomateReceipt", "cmdConfirm", comesBack); }, conflict},
        {"change of a ledger row",
         [&] {
             comesBack();
             saveIn("chkcmdAddEditDelTran_1", "cmdConfirm");
         },
         conflict},
        {"a ledger row's memo",
         [&] {
             comesBack();
             desk_->type("txtTransMemo", "call");
             desk_->click("chkCmdSaveMemo");
         },
         conflict},
        {"outstanding money collected", [&] { payOutstanding(comesBack); }, conflict},
    };
    const auto tryOut = [&](const auto &c) {
        SCOPED_TRACE(c.what);
        openFresh();
        c.act();
        const std::string said = desk_->said();
        EXPECT_THAT(said,
                    HasSubstr(toAnother || c.told != conflict ? c.told : "데이터베이스가 백업으로 복원되었습니다."));
        EXPECT_EQ(said.find("복원되어 목록을 모두 새로 가져왔습니다.") == std::string::npos, toAnother) << said;
        EXPECT_EQ(desk_->all(), stored);
    };
    for (bool way : {true, false}) {
        toAnother = way;
        std::ranges::for_each(cases, tryOut);
    }
}

TEST_P(StaleWindow, AfterARestoreTheFirstTryReadsAnewAndTheSecondIsTaken)
{
    const char *const restored = "UPDATE t_DeskSchema SET DS_Generation = DS_Generation + 1";
    for (bool newOrder : {false, true}) {
        elsewhere("UPDATE tPSProductMaster SET PM_Name = PM_Name || '*' WHERE PM_PK = 1");
        elsewhere(restored);
        for (const char *added : {"0", "1"}) {
            if (newOrder)
                desk_->boxes.answers = {Answer::Yes};
            desk_->addLine(0, newOrder ? "6" : "5");
            EXPECT_EQ(desk_->joined(newOrder ? "SELECT COUNT(*) FROM tPSOrderDetail WHERE OrdD_Count = 6"
                                             : "SELECT COUNT(*) FROM tPSOrderDetail WHERE OrdD_Count = 5"),
                      added)
                << desk_->said();
        }
        EXPECT_THAT(desk_->grid("tdbSaleProductLists")->model()->index(0, 1).data().toString().toStdString(),
                    EndsWith(newOrder ? "**" : "*"));
    }
}

TEST_P(StaleWindow, ALineOrMoneyForAnOrderWhoseDateIsNotTheOneShownIsRefusedOnceAndGoesThereThen)
{
    const auto moves = [this] { elsewhere("UPDATE tPSOrderMaster SET OrdM_Date = '2026-03-05' WHERE OrdM_PK = 2"); };
    moves();
    const auto add = [&] {
        desk_->boxes.answers = {Answer::No};
        desk_->addLine(0, "5");
    };
    add();
    EXPECT_THAT(desk_->said(), EndsWith(notAdded));
    add();
    EXPECT_EQ(desk_->joined("SELECT OrdM_PK FROM tPSOrderDetail WHERE OrdD_Count = 5"), "2");
    desk_->said();
    elsewhere("UPDATE tPSOrderMaster SET OrdM_Date = '2026-03-06' WHERE OrdM_PK = 2");
    for (const char *rows : {"1", "2"}) {
        saveIn("chkCmdAutomateReceipt", "cmdConfirm");
        EXPECT_EQ(desk_->joined("SELECT COUNT(*) FROM tPSTransaction"), rows) << desk_->said();
    }
}

TEST_P(StaleWindow, AProductThatIsGoneIsNeitherSoldNorTakenBack)
{
    const char *const told[] = {notAdded, "서비스추가: 서비스추가를 실패 했습니다. 다시 시도 하십시오.\n",
                                "망실기록: 망실기록을 실패 했습니다. 다시 시도 하십시오.\n"};
    for (int kind = 0; kind < 3; ++kind) {
        openFresh();
        elsewhere("DELETE FROM tPSProductMaster WHERE PM_PK = 1");
        const std::string before = desk_->all();
        desk_->click(qPrintable(QStringLiteral("ssoptSellType_%1").arg(kind)));
        desk_->boxes.answers = {Answer::No};
        desk_->addLine(0, "1");
        EXPECT_THAT(desk_->said(), EndsWith(remarked(told[kind], productGone)));
        EXPECT_EQ(desk_->all(), before);
        EXPECT_EQ(desk_->rowsOf("tdbSaleProductLists"), 2) << "the list shows what there is";
    }
    const std::string before = desk_->all();
    saveIn("chkCmdRefund", "chkCmdSave");
    EXPECT_EQ(desk_->said(), remarked("반품: 오류가 있어 반품처리를 완료하지 못했습니다.\n", productGone));
    EXPECT_EQ(desk_->all(), before) << "no note either";
}

TEST_P(StaleWindow, ALedgerRowThatAnotherDeskChangedIsNotOverwrittenUnseen)
{
    const auto change = [&](const char *money, const std::function<void()> &meanwhile) {
        desk_->choose("tdbCustTranManage", 0);
        desk_->in("chkcmdAddEditDelTran_1", [&](QWidget *dialog) {
            meanwhile();
            desk_->actor.typeInto(desk_->actor.control(dialog, QStringLiteral("txtMoney")), QString::fromLatin1(money));
            desk_->press(dialog, "cmdConfirm");
        });
    };
    const auto row = [&] {
        return desk_->joined("SELECT tpstrans_Date, tpstrans_Operator, tpstrans_Money, tpstrans_Method, tpstrans_Memo "
                             "FROM tPSTransaction");
    };
    for (const char *column : {"tpstrans_Date = '2026-03-03'", "tpstrans_Operator = 4", "tpstrans_Money = 700",
                               "tpstrans_Method = '01'", "tpstrans_Memo = '전화'"}) {
        SCOPED_TRACE(column);
        std::string before;
        change("600", [&] {
            elsewhere((QByteArray("UPDATE tPSTransaction SET ") + column).constData());
            before = row();
        });
        EXPECT_EQ(desk_->said(), "수납 내역 수정: " + std::string(conflict) + " 아무것도 저장하지 않았습니다.\n");
        EXPECT_EQ(row(), before);
    }
    change("600", [] {});
    EXPECT_EQ(desk_->said(), "");
    EXPECT_EQ(desk_->joined("SELECT tpstrans_Money FROM tPSTransaction"), "600");
    change("800", [this] { elsewhere("DELETE FROM tPSTransaction"); });
    EXPECT_EQ(desk_->said(), "수납 내역 수정: 다른 데스크에서 먼저 삭제했습니다. 아무것도 저장하지 않았습니다.\n");
    EXPECT_EQ(desk_->rowsOf("tdbCustTranManage"), 0);
}

TEST_P(StaleWindow, WhatWasPaidSinceTheDialogOpenedIsToldBeforeMoreIsSaved)
{
    const auto paid = [this] {
        elsewhere("INSERT INTO tPSTransaction (tpstrans_Customer_PK, tpstrans_OrderM_PK, tpstrans_Date, "
                  "tpstrans_Operator, tpstrans_Money, tpstrans_Method, tpstrans_Memo) VALUES "
                  "(7, 2, '2026-03-04', 3, 12300, '01', '')");
        elsewhere("UPDATE tPSOrderMaster SET OrdM_Misugum = 400 WHERE OrdM_PK = 2");
    };
    const std::string told =
        "다른 데스크에서 이 거래의 수납 내역이나 미수금을 먼저 변경했습니다. 아직 아무것도 저장하지 "
        "않았습니다.\n이미 받은 금액이 아닌지 확인하십시오. 그래도 저장하시겠습니까?\n\n"
        "변경된 내용:\n2026-03-04 수납 12,300원 (카드)\n미수금 900원 → 400원\n";
    using Meanwhile = std::function<void()>;
    const struct
    {
        const char *what;
        bool first;
        std::function<void(const Meanwhile &)> act;
        const char *title, *rows, *owed; ///< of this desk's alone
    } cases[] = {
        {"first payment", true, [&](const Meanwhile &then) { saveIn("chkCmdAutomateReceipt", "cmdConfirm", then); },
         "수납: ", "2|7|3|52000|00", "400"},
        {"first payment, all of it outstanding", true,
         [&](const Meanwhile &then) {
             desk_->in("chkCmdAutomateReceipt", [&](QWidget *dialog) {
                 then();
                 desk_->press(dialog, "chkAllSetting_2");
                 desk_->press(dialog, "cmdConfirm");
             });
         },
         "수납: ", "", "52400"},
        {"further payment", false, [&](const Meanwhile &then) { saveIn("chkCmdAutomateReceipt", "cmdConfirm", then); },
         "수납: ", "2|7|3|51500|", "-51100"},
        {"outstanding money", false, [&](const Meanwhile &then) { payOutstanding(then); },
         "미수금 수납: ", "2|7|3|900|10", "-500"},
    };
    for (const auto &c : cases) {
        for (const Answer answer : {Answer::No, Answer::Yes}) {
            SCOPED_TRACE(c.what);
            openFresh();
            if (c.first)
                withoutLedger();
            desk_->boxes.answers = {answer};
            std::string before;
            c.act([&] {
                paid();
                before = desk_->all();
            });
            ASSERT_EQ(desk_->boxes.messages.size(), 1);
            EXPECT_EQ(desk_->boxes.messages[0].flags,
                      controls::YesNo | controls::QuestionIcon | controls::SecondButtonDefault);
            EXPECT_EQ(desk_->said(), c.title + told);
            if (answer == Answer::No) {
                EXPECT_EQ(desk_->all(), before);
            } else {
                EXPECT_EQ(desk_->joined("SELECT OrdM_Misugum FROM tPSOrderMaster WHERE OrdM_PK = 2"), c.owed);
                EXPECT_THAT(desk_->ledger(), EndsWith(c.rows));
            }
            EXPECT_EQ(desk_->text("txtOrderMaster_7").remove("\\").remove(",").toStdString(),
                      desk_->joined("SELECT OrdM_Misugum FROM tPSOrderMaster WHERE OrdM_PK = 2"));
            EXPECT_EQ(std::to_string(desk_->rowsOf("tdbCustTranManage")),
                      desk_->joined("SELECT COUNT(*) FROM tPSTransaction"));
            // Nothing more came: nothing is asked.
            desk_->boxes.answers.clear();
            saveIn("chkCmdAutomateReceipt", "cmdConfirm");
            EXPECT_EQ(desk_->said(), "");
        }
    }
}

TEST_P(StaleWindow, AnOrderIsDeletedOnlyWithTheLinesAndTheLedgerThatTheWindowShows)
{
    for (const char *meanwhile :
         {"INSERT INTO tPSOrderDetail (OrdM_PK, PM_PK, OrdD_UnitPrice, OrdD_HalinUnit, OrdD_Count) VALUES (2, 1, 0, 0, "
          "1)",
          "UPDATE tPSOrderDetail SET OrdD_Count = 7 WHERE OrdD_PK = 2", "DELETE FROM tPSOrderDetail WHERE OrdD_PK = 2",
          "INSERT INTO tPSTransaction (tpstrans_Customer_PK, tpstrans_OrderM_PK, tpstrans_Date, tpstrans_Operator, "
          "tpstrans_Money) VALUES (7, 2, '2026-03-02', 3, 1)",
          "UPDATE tPSTransaction SET tpstrans_Money = 1", "DELETE FROM tPSTransaction"}) {
        SCOPED_TRACE(meanwhile);
        openFresh();
        elsewhere(meanwhile);
        const std::string before = desk_->all();
        desk_->answer("chkCmdOrderMasterED_1", Answer::Yes);
        EXPECT_THAT(desk_->said(), EndsWith("판매 마스터 삭제: 고객 판매 마스터를 삭제하지 못했습니다.\n"));
        EXPECT_EQ(desk_->all(), before);
        EXPECT_EQ(std::to_string(desk_->rowsOf("tdbCustTranManage")),
                  desk_->joined("SELECT COUNT(*) FROM tPSTransaction"));
        desk_->answer("chkCmdOrderMasterED_1", Answer::Yes);
        EXPECT_EQ(desk_->joined("SELECT OrdM_PK FROM tPSOrderMaster ORDER BY OrdM_PK"), "1\n3") << desk_->said();
    }
}

TEST_P(StaleWindow, AProductWhoseNameBreaksTheRemarkIsNotTakenBackAndNoNoteIsWritten)
{
    elsewhere("UPDATE tPSProductMaster SET PM_Name = '감초''차' WHERE PM_PK = 1");
    desk_->open();
    desk_->choose("tdbCustSaleMaster", 0);
    desk_->choose("tdbCustSaleDetails", 0);
    const std::string before = desk_->all();
    QTimer closing;
    QObject::connect(&closing, &QTimer::timeout, [&] {
        if (QWidget *dialog = QApplication::activeModalWidget())
            desk_->press(dialog, "chkCmdSave");
    });
    closing.start(20);
    desk_->click("chkCmdRefund");
    EXPECT_EQ(desk_->said(), "반품: 물품명에 작은따옴표(')가 있어 반품할 수 없습니다. 아무것도 저장하지 않았습니다.\n"
                             "판매물품관리에서 물품명을 수정한 뒤 다시 시도하십시오.\n");
    EXPECT_EQ(desk_->all(), before);
}

TEST_P(StaleWindow, SumsThatDoNotFitAndPartsOfAWonLeaveNoLine)
{
    elsewhere("UPDATE tPSProductMaster SET PM_UnitPrice = 900000000000000");
    desk_->open();
    const auto add = [&](const char *discount) {
        desk_->choose("tdbCustSaleMaster", 0);
        desk_->control<QLineEdit>("txtSaleProductLists_4")->setText(QString::fromLatin1(discount));
        desk_->boxes.answers = {Answer::No};
        desk_->click("cmdCSAppendDetail");
    };
    desk_->choose("tdbSaleProductLists", 0);
    add("0");
    EXPECT_THAT(desk_->said(), testing::Not(HasSubstr("실패")));
    const std::string before = desk_->all();
    for (const char *discount : {"0", "-900000000000000", "899999999999999.5", "0.0001"}) {
        SCOPED_TRACE(discount);
        add(discount);
        EXPECT_THAT(desk_->said(), EndsWith(notAdded));
        EXPECT_EQ(desk_->all(), before);
    }
    const struct
    {
        const char *typed;
        const char *refused;
    } cases[] = {{"1.5", "1원 미만의 금액은 저장할 수 없습니다: 1.5"},
                 {"", "숫자나 날짜로 입력하십시오: "},
                 {"-\\1,500", nullptr}};
    for (const auto &one : cases) {
        desk_->choose("tdbCustSaleMaster", 0);
        desk_->click("chkCmdOrderMasterED_0");
        desk_->control<QLineEdit>("txtOrderMaster_7")->setText(QString::fromLatin1(one.typed));
        desk_->click("chkcmdCSSaveInfo_0");
        EXPECT_EQ(desk_->said(), one.refused ? remarked(notSaved, one.refused) : "") << one.typed;
        EXPECT_EQ(desk_->all() == before, one.refused != nullptr) << one.typed;
    }
}

TEST_P(StaleWindow, ATextWithASignThatNoServerKeepsIsNotSaved)
{
    const std::string before = desk_->all();
    const QString typed = QStringLiteral("a") + QChar(0) + QStringLiteral("b");
    desk_->click("chkCmdOrderMasterED_0");
    desk_->control<QLineEdit>("txtOrderMaster_5")->setText(typed);
    desk_->click("chkcmdCSSaveInfo_0");
    EXPECT_EQ(desk_->said(), remarked(notSaved, "저장할 수 없는 문자가 있습니다. 지우고 다시 입력하십시오."));
    desk_->in("chkCmdRefund", [&](QWidget *dialog) {
        desk_->actor.control<QLineEdit>(dialog, QStringLiteral("txtRfndMemo"))->setText(typed);
        desk_->press(dialog, "chkCmdSave");
    });
    EXPECT_EQ(desk_->said(), "반품: 메모에 저장할 수 없는 문자가 있습니다. 아무것도 저장하지 않았습니다.\n"
                             "메모를 지우고 다시 입력하십시오.\n");
    EXPECT_EQ(desk_->all(), before);
}

INSTANTIATE_TEST_SUITE_P(Engines, StaleWindow, testing::Values(ado::Engine::SQLite, ado::Engine::PostgreSQL),
                         engineName);
