#include "tests/products/ProductDesk.h"

#include "platform/controls/EventEdge.h"
#include "products/SaleListPane.h"

#include <QSignalSpy>

using controls::Answer;

namespace {

/// What a list is called on the screen and in the database.
struct ListCase
{
    const char *name;
    const char *grid;
    const char *commands;
    const char *save;
    const char *table;
    const char *key;
    const char *title;
    const char *kind;
    const char *field;  ///< of the panel
    const char *column; ///< what it shows
    SaleSession::RecordsetPtr SaleSession::*rows;
};

const ListCase productList{.name = "products",
                           .grid = "tdbSaleProductListsManager",
                           .commands = "chkCmdProdSaleAddEdiDel",
                           .save = "chkCmdSaveProduct_0",
                           .table = "tPSProductMaster",
                           .key = "PM_PK",
                           .title = "판매 물품",
                           .kind = "물품",
                           .field = "txtProSaleInfo_3",
                           .column = "PM_EtcMemo",
                           .rows = &SaleSession::rsSaleProductListsManager};
const ListCase purchaseList{.name = "purchases",
                            .grid = "tdbProductIncoming",
                            .commands = "chkcmdIncomingAED",
                            .save = "chkcmdIncomingSave_0",
                            .table = "tPSIncoming",
                            .key = "IN_PK",
                            .title = "물품구매내역",
                            .kind = "구매내역",
                            .field = "txtIncMemo",
                            .column = "IN_EtcMemo",
                            .rows = &SaleSession::rsProductIncoming};
const ListCase dealerList{.name = "dealers",
                          .grid = "tdbCompanyMaster",
                          .commands = "chkcmdCmpnyMstrAED",
                          .save = "chkcmdCmpnyMstrSave_0",
                          .table = "tPSCompanyMaster",
                          .key = "CM_PK",
                          .title = "거래처목록",
                          .kind = "거래처",
                          .field = "txtCmMemo",
                          .column = "CM_EtcMemo",
                          .rows = &SaleSession::rsCompanyMaster};
const ListCase *const lists[] = {&productList, &purchaseList, &dealerList};

/// Three rows in each list, 첫째, 둘째 and 셋째; the purchases are those of the first product. Nothing was sold, and the
/// purchases name a dealer who is not on the list.
class GoneRows : public ProductDesk
{
protected:
    GoneRows()
    {
        const struct
        {
            int number;
            const char *name;
        } all[] = {{1, "첫째"}, {2, "둘째"}, {3, "셋째"}};
        for (const auto &[number, name] : all) {
            const QString memo = QString::fromUtf8(name);
            atOtherDesk(QStringLiteral(
                            "INSERT INTO tPSProductMaster (PM_Catagory, PM_Name, PM_EtcMemo) VALUES ('%1', 'n', '%2')")
                            .arg(QString::number(number), memo));
            atOtherDesk(QStringLiteral("INSERT INTO tPSIncoming (PM_PK, CM_PK, IN_Date, IN_Count, IN_EtcMemo) VALUES "
                                       "(1, 99, '2026-11-%1', 10, '%2')")
                            .arg(30 - number)
                            .arg(memo));
            atOtherDesk(QStringLiteral("INSERT INTO tPSCompanyMaster (CM_Name, CM_EtcMemo) VALUES ('%1', '%2')")
                            .arg(QString::number(number), memo));
        }
        atOtherDesk("INSERT INTO tPSIncoming (PM_PK, CM_PK, IN_Date, IN_Count, IN_EtcMemo) VALUES (3, 99, "
                    "'2026-11-01', 7, '셋째의')");
    }
    ado::Recordset &rowsOf(const ListCase &list) { return *(session_.*list.rows); }
    int currentRow(const ListCase &list) { return rowsOf(list).currentRow(); }
    void deleteElsewhere(const ListCase &list, int key)
    {
        atOtherDesk(QStringLiteral("DELETE FROM %1 WHERE %2 = %3")
                        .arg(QLatin1String(list.table), QLatin1String(list.key))
                        .arg(key));
    }
    void changeElsewhere(const ListCase &list, int key)
    {
        atOtherDesk(QStringLiteral("UPDATE %1 SET %2 = '남의 것' WHERE %3 = %4")
                        .arg(QLatin1String(list.table), QLatin1String(list.column), QLatin1String(list.key))
                        .arg(key));
    }
    Rows stored(const ListCase &list)
    {
        const QString products = &list == &purchaseList ? QStringLiteral(" WHERE PM_PK = 1") : QString();
        return rows(QStringLiteral("SELECT %1 FROM %2%3 ORDER BY %4")
                        .arg(QLatin1String(list.column), QLatin1String(list.table), products, QLatin1String(list.key)));
    }
    void command(const ListCase &list, int index)
    {
        window().push((std::string(list.commands) + '_' + char('0' + index)).c_str());
    }
    std::string gone(const ListCase &list)
    {
        return std::string(list.title) + ": 다른 데스크에서 먼저 삭제한 " + list.kind
               + "입니다. 목록을 새로 가져왔습니다.";
    }
    std::string stock()
    {
        return window().texts({"txtProdStat_0", "txtProdStat_1", "txtProdStat_2", "txtProdStat_3", "txtProdStat_4"});
    }
};

} // namespace

TEST_F(GoneRows, ARowThatIsGoneWhenItIsChosenIsToldOnceAndNothingStaysOnView)
{
    for (const ListCase *list : lists) {
        SCOPED_TRACE(list->name);
        open();
        ASSERT_EQ(window().text(list->field), "첫째");
        deleteElsewhere(*list, 2);
        choose(list->grid, 1);
        EXPECT_THAT(boxes_.take(), ElementsAre(gone(*list)));
        EXPECT_EQ(window().at<QTableView>(list->grid).model()->rowCount(), 2);
        EXPECT_FALSE(rowsOf(*list).hasCurrent());
        EXPECT_EQ(window().text(list->field), "");
        if (list == &productList) {
            EXPECT_EQ(window().at<QTableView>("tdbProductIncoming").model()->rowCount(), 0);
            EXPECT_EQ(window().text("txtIncMemo"), "");
            EXPECT_EQ(stock(), "||||");
        }
        boxes_.answers = {Answer::Yes};
        command(*list, 1);
        command(*list, 2);
        EXPECT_THAT(boxes_.take(), IsEmpty());
        EXPECT_EQ(window().modes.current(), QString());
        EXPECT_THAT(stored(*list), ElementsAre("첫째", "셋째"));

        choose(list->grid, 1);
        EXPECT_EQ(window().text(list->field), "셋째");
        close();
        boxes_.answers.clear();
    }
}

TEST_F(GoneRows, WhatIsDeletedIsTheRowThatWasAskedFor)
{
    for (const ListCase *list : lists) {
        SCOPED_TRACE(list->name);
        open();
        choose(list->grid, 1);
        whileABoxStands([&] { rowsOf(*list).moveTo(0); });
        command(*list, 2);
        EXPECT_EQ(boxes_.take().size(), 1u);
        EXPECT_THAT(stored(*list), ElementsAre("첫째", "셋째"));

        whileABoxStands([&, other = 0]() mutable {
            if (other++ == 0)
                deleteElsewhere(*list, 3);
        });
        choose(list->grid, 1);
        command(*list, 2);
        ASSERT_EQ(boxes_.boxes.size(), 2u);
        EXPECT_EQ(boxes_.take()[1], gone(*list));
        EXPECT_FALSE(rowsOf(*list).hasCurrent());
        EXPECT_EQ(window().text(list->field), "");
        EXPECT_THAT(stored(*list), ElementsAre("첫째"));
        close();
    }
}

// Once told, the user sees what the other desk made of it, and may delete that.
TEST_F(GoneRows, ARowThatWasChangedIsDeletedAtTheSecondTry)
{
    for (const ListCase *list : {&purchaseList, &dealerList}) {
        SCOPED_TRACE(list->name);
        open();
        choose(list->grid, 1);
        changeElsewhere(*list, 2);
        boxes_.answers = {Answer::Yes, Answer::Confirm, Answer::Yes};
        command(*list, 2);
        EXPECT_EQ(boxes_.take().size(), 2u);
        EXPECT_EQ(currentRow(*list), 1);
        EXPECT_EQ(window().text(list->field), "남의 것");
        command(*list, 2);
        EXPECT_EQ(boxes_.take().size(), 1u);
        EXPECT_THAT(stored(*list), ElementsAre("첫째", "셋째"));
        close();
    }
}

TEST_F(GoneRows, AnEditSavesTheRowItBeganWithWhereverTheListStands)
{
    for (const ListCase *list : lists) {
        SCOPED_TRACE(list->name);
        open();
        window().incoming->insFrmCompanySelect_evtDealerSelected(99, QString());
        choose(list->grid, 1);
        command(*list, 1);
        window().type(list->field, "고침");
        rowsOf(*list).Requery();
        window().push(list->save);
        EXPECT_THAT(boxes_.take(), IsEmpty());
        EXPECT_THAT(stored(*list), ElementsAre("첫째", "고침", "셋째"));
        close();
    }
}

TEST_F(GoneRows, AnEditThatCollidesKeepsItsRowAndTheNextOneIsSaved)
{
    for (const ListCase *list : {&productList, &dealerList}) {
        SCOPED_TRACE(list->name);
        open();
        choose(list->grid, 1);
        command(*list, 1);
        changeElsewhere(*list, 2);
        window().type(list->field, "고침");
        window().push(list->save);
        EXPECT_THAT(boxes_.take(), ElementsAre("저장: 저장을 하지 못했습니다. 서버와의 연결을 확인하십시오."));
        EXPECT_EQ(currentRow(*list), 1);
        EXPECT_EQ(window().text(list->field), "남의 것");
        command(*list, 1);
        window().type(list->field, "고침");
        window().push(list->save);
        EXPECT_THAT(stored(*list), ElementsAre("첫째", "고침", "셋째"));

        choose(list->grid, 2);
        command(*list, 1);
        deleteElsewhere(*list, 3);
        window().push(list->save);
        EXPECT_EQ(boxes_.take().size(), 1u);
        EXPECT_EQ(currentRow(*list), -1);
        EXPECT_EQ(window().text(list->field), "");
        close();
    }
}

// The save of a purchase traps nothing: the edit stays open, with what was typed.
TEST_F(GoneRows, APurchaseThatCollidesStaysInEditAndIsSavedAtTheNextTry)
{
    open();
    window().incoming->insFrmCompanySelect_evtDealerSelected(99, QString());
    choose("tdbProductIncoming", 1);
    command(purchaseList, 1);
    changeElsewhere(purchaseList, 2);
    window().type("txtIncMemo", "고침");
    window().push("chkcmdIncomingSave_0");
    EXPECT_EQ(boxes_.take().size(), 1u);
    EXPECT_EQ(window().modes.current(), QStringLiteral("11"));
    EXPECT_EQ(window().text("txtIncMemo"), "고침");
    EXPECT_EQ(currentRow(purchaseList), 1);
    EXPECT_EQ(rowsOf(purchaseList)["IN_EtcMemo"].toString(), QStringLiteral("남의 것"));
    EXPECT_FALSE(gcnnMasterDB->inTransaction());
    window().push("chkcmdIncomingSave_0");
    EXPECT_EQ(window().modes.current(), QString());
    EXPECT_THAT(stored(purchaseList), ElementsAre("첫째", "고침", "셋째"));

    choose("tdbProductIncoming", 2);
    command(purchaseList, 1);
    deleteElsewhere(purchaseList, 3);
    for (int attempt = 0; attempt < 2; ++attempt) {
        window().push("chkcmdIncomingSave_0");
        EXPECT_EQ(boxes_.take().size(), 1u);
        EXPECT_EQ(window().modes.current(), QStringLiteral("11"));
        EXPECT_FALSE(rowsOf(purchaseList).hasCurrent());
    }
    EXPECT_THAT(stored(purchaseList), ElementsAre("첫째", "고침"));
}

TEST_F(GoneRows, APurchaseIsNotAddedToAProductThatIsGone)
{
    open();
    window().push("chkcmdIncomingAED_0");
    window().incoming->insFrmCompanySelect_evtDealerSelected(99, QString());
    deleteElsewhere(productList, 1);
    window().push("chkcmdIncomingSave_0");
    EXPECT_EQ(boxes_.take().size(), 1u);
    EXPECT_EQ(window().modes.current(), QStringLiteral("11"));
    EXPECT_FALSE(gcnnMasterDB->inTransaction());
    EXPECT_THAT(stored(purchaseList), ElementsAre("첫째", "둘째", "셋째"));
}

TEST_F(GoneRows, HidingAProductThatIsGoneIsToldOnce)
{
    open();
    choose("tdbSaleProductListsManager", 1);
    deleteElsewhere(productList, 2);
    auto &grid = window().at<QTableView>("tdbSaleProductListsManager");
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, grid.visualRect(grid.model()->index(1, 0)).center());
    EXPECT_THAT(boxes_.take(), ElementsAre(gone(productList)));
    EXPECT_EQ(grid.model()->rowCount(), 2);
    EXPECT_EQ(stock(), "||||");
}

TEST_F(GoneRows, AListThatCannotBeLoadedLeavesNothingOnViewAndIsLoadedWhenItCanBe)
{
    open();
    const struct
    {
        const ListCase *list;
        std::function<void()> load, loadIfClosed;
        std::function<bool()> isLoaded;
    } cases[] = {
        {&productList, [&] { window().products->loadProductListsManager(); },
         [&] { window().products->loadIfClosed(); }, [&] { return window().products->isLoaded(); }},
        {&purchaseList, [&] { window().products->fillPanel(); }, [&] { window().incoming->loadIfClosed(); },
         [&] { return window().incoming->isLoaded(); }},
        {&dealerList, [&] { window().dealers->loadCompanyMaster(); }, [&] { window().dealers->loadIfClosed(); },
         [&] { return window().dealers->isLoaded(); }},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.list->name);
        const QString table = QLatin1String(c.list->table);
        atOtherDesk("ALTER TABLE " + table + " RENAME TO away");
        controls::runEvent(c.load);
        c.loadIfClosed();
        EXPECT_EQ(boxes_.take().size(), c.list == &purchaseList ? 1u : 0u)
            << "those of products and dealers are silent";
        EXPECT_FALSE(c.isLoaded());
        EXPECT_EQ(window().text(c.list->field), "");
        if (c.list == &productList) {
            EXPECT_EQ(window().text("txtIncMemo"), "");
            EXPECT_EQ(stock(), "||||");
        }
        atOtherDesk("ALTER TABLE away RENAME TO " + table);
        c.loadIfClosed();
        EXPECT_TRUE(c.isLoaded());
        EXPECT_EQ(window().text(c.list->field), "첫째");
        rowsOf(*c.list).moveTo(1);
        c.loadIfClosed();
        EXPECT_EQ(currentRow(*c.list), 1) << "what is loaded stays as it is";
        rowsOf(*c.list).moveTo(0);
    }
}

TEST_F(GoneRows, AProductListThatFailsBeneathAnEditLeavesTheEditAndComesWithItsEnd)
{
    open();
    choose("tdbSaleProductListsManager", 1);
    command(productList, 1);
    window().type("txtProSaleInfo_3", "고침");
    atOtherDesk("ALTER TABLE tPSProductMaster RENAME TO away");
    window().products->loadProductListsManager(true);
    EXPECT_EQ(window().text("txtProSaleInfo_3"), "고침");
    atOtherDesk("ALTER TABLE away RENAME TO tPSProductMaster");
    EXPECT_TRUE(window().products->abandonEdit());
    EXPECT_FALSE(window().products->abandonEdit());
    EXPECT_EQ(window().text("txtProSaleInfo_3"), "첫째");
}

TEST_F(GoneRows, TheSaleListThatCannotBeLoadedShowsNoProductAndIsLoadedWhenItCanBe)
{
    open();
    SaleListPane saleList(session_, &window());
    saleList.loadSaleProductLists();
    EXPECT_EQ(session_.rsSaleProductLists->rowCount(), 3);
    atOtherDesk("ALTER TABLE tPSProductMaster RENAME TO away");
    QSignalSpy shown(&saleList, &SaleListPane::productRowChanged);
    saleList.loadSaleProductLists();
    EXPECT_THAT(boxes_.take(), ElementsAre("데이터 가져오기: 물품 목록을 가져오지 못했습니다."));
    EXPECT_EQ(shown.size(), 1);
    EXPECT_FALSE(saleList.isLoaded());
    atOtherDesk("ALTER TABLE away RENAME TO tPSProductMaster");
    saleList.requerySaleProductLists();
    EXPECT_EQ(session_.rsSaleProductLists->rowCount(), 3);
}

// The host may delete its window beneath any box; whoever asked must not go on with it.
TEST_F(GoneRows, TheWindowMayGoBeneathEveryBox)
{
    const auto push = [&](const char *name) { return [this, name] { window().at<QAbstractButton>(name).click(); }; };
    const struct
    {
        const char *box;
        std::function<void()> before, act;
    } cases[] = {
        {"delete a product", [] {}, push("chkCmdProdSaleAddEdiDel_2")},
        {"delete a purchase", [] {}, push("chkcmdIncomingAED_2")},
        {"delete a dealer", [] {}, push("chkcmdCmpnyMstrAED_2")},
        {"a product without a name", [&] { command(productList, 0); }, push("chkCmdSaveProduct_0")},
        {"a purchase without a dealer", [&] { command(purchaseList, 0); }, push("chkcmdIncomingSave_0")},
        {"a dealer without a name", [&] { command(dealerList, 0); }, push("chkcmdCmpnyMstrSave_0")},
        {"a product that collides",
         [&] {
             command(productList, 1);
             changeElsewhere(productList, 1);
         },
         push("chkCmdSaveProduct_0")},
        {"a dealer that collides",
         [&] {
             command(dealerList, 1);
             changeElsewhere(dealerList, 1);
         },
         push("chkcmdCmpnyMstrSave_0")},
        {"a product that is gone", [&] { deleteElsewhere(productList, 2); }, [&] { list().moveTo(1); }},
        {"a dealer that is gone", [&] { deleteElsewhere(dealerList, 2); }, [&] { rowsOf(dealerList).moveTo(1); }},
        {"a purchase that cannot be shown",
         [&] {
             atOtherDesk("ALTER TABLE tPSCompanyMaster RENAME TO away"); // the name of its dealer
         },
         [&] { list().moveTo(1); }},
    };
    for (const auto &row : cases) {
        SCOPED_TRACE(row.box);
        open();
        row.before();
        whileABoxStands([&] { close(); });
        row.act();
        EXPECT_FALSE(isUp());
        EXPECT_THAT(boxes_.take(), testing::SizeIs(1));
    }
    EXPECT_THAT(stored(purchaseList), ElementsAre("첫째", "둘째", "셋째"));
}
