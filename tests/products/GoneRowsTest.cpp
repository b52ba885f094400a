#include "tests/support/SaleWindow.h"

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
                           .column = "PM_EtcMemo"};
const ListCase purchaseList{.name = "purchases",
                            .grid = "tdbProductIncoming",
                            .commands = "chkcmdIncomingAED",
                            .save = "chkcmdIncomingSave_0",
                            .table = "tPSIncoming",
                            .key = "IN_PK",
                            .title = "물품구매내역",
                            .kind = "구매내역",
                            .field = "txtIncMemo",
                            .column = "IN_EtcMemo"};
const ListCase dealerList{.name = "dealers",
                          .grid = "tdbCompanyMaster",
                          .commands = "chkcmdCmpnyMstrAED",
                          .save = "chkcmdCmpnyMstrSave_0",
                          .table = "tPSCompanyMaster",
                          .key = "CM_PK",
                          .title = "거래처목록",
                          .kind = "거래처",
                          .field = "txtCmMemo",
                          .column = "CM_EtcMemo"};
const ListCase *const lists[] = {&productList, &purchaseList, &dealerList};

/// Three rows in each list, 첫째, 둘째 and 셋째; the purchases are those of the first product. Nothing was sold, and the
/// purchases that stand there name a dealer who is not on the list.
class GoneRows : public SaleWindow
{
protected:
    GoneRows() { runFile("products/three-rows.sql"); }
    static ado::Recordset &rowsOf(const ListCase &which) { return list(which.grid); }
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
    static void command(const ListCase &list, int index)
    {
        push((std::string(list.commands) + '_' + char('0' + index)).c_str());
    }
    std::string gone(const ListCase &list)
    {
        return std::string(list.title) + ": 다른 데스크에서 먼저 삭제한 " + list.kind
               + "입니다. 목록을 새로 가져왔습니다.";
    }
    std::string stock()
    {
        return texts({"txtProdStat_0", "txtProdStat_1", "txtProdStat_2", "txtProdStat_3", "txtProdStat_4"});
    }
};

} // namespace

TEST_F(GoneRows, ARowThatIsGoneWhenItIsChosenIsToldOnceAndNothingStaysOnView)
{
    for (const ListCase *list : lists) {
        SCOPED_TRACE(list->name);
        manage();
        ASSERT_EQ(text(list->field), "첫째");
        deleteElsewhere(*list, 2);
        choose(list->grid, 1);
        EXPECT_THAT(boxes_.take(), ElementsAre(gone(*list)));
        EXPECT_EQ(rowsShown(list->grid), 2);
        EXPECT_FALSE(rowsOf(*list).hasCurrent());
        EXPECT_EQ(text(list->field), "");
        if (list == &productList) {
            EXPECT_EQ(rowsShown("tdbProductIncoming"), 0);
            EXPECT_EQ(text("txtIncMemo"), "");
            EXPECT_EQ(stock(), "||||");
        }
        boxes_.answers = {Answer::Yes};
        command(*list, 1);
        command(*list, 2);
        EXPECT_THAT(boxes_.take(), IsEmpty());
        EXPECT_EQ(inEdit(), "");
        EXPECT_THAT(stored(*list), ElementsAre("첫째", "셋째"));

        choose(list->grid, 1);
        EXPECT_EQ(text(list->field), "셋째");
        close();
        boxes_.answers.clear();
    }
}

TEST_F(GoneRows, WhatIsDeletedIsTheRowThatWasAskedFor)
{
    for (const ListCase *list : lists) {
        SCOPED_TRACE(list->name);
        manage();
        choose(list->grid, 1);
        boxes_.answers = {Answer::Yes};
        boxes_.whileItStands = [&] { rowsOf(*list).moveTo(0); };
        command(*list, 2);
        EXPECT_EQ(boxes_.take().size(), 1u);
        EXPECT_THAT(stored(*list), ElementsAre("첫째", "셋째"));

        choose(list->grid, 1);
        boxes_.answers = {Answer::Yes};
        boxes_.whileItStands = [&] { deleteElsewhere(*list, 3); };
        command(*list, 2);
        ASSERT_EQ(boxes_.messages.size(), 2u);
        EXPECT_EQ(boxes_.take()[1], gone(*list));
        EXPECT_FALSE(rowsOf(*list).hasCurrent());
        EXPECT_EQ(text(list->field), "");
        EXPECT_THAT(stored(*list), ElementsAre("첫째"));
        close();
    }
}

// Once told, the user sees what the other desk made of it, and may delete that.
TEST_F(GoneRows, ARowThatWasChangedIsDeletedAtTheSecondTry)
{
    for (const ListCase *list : {&purchaseList, &dealerList}) {
        SCOPED_TRACE(list->name);
        manage();
        choose(list->grid, 1);
        changeElsewhere(*list, 2);
        boxes_.answers = {Answer::Yes, Answer::Confirm, Answer::Yes};
        command(*list, 2);
        EXPECT_EQ(boxes_.take().size(), 2u);
        EXPECT_EQ(currentRow(*list), 1);
        EXPECT_EQ(text(list->field), "남의 것");
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
        manage();
        pane<IncomingPane>().insFrmCompanySelect_evtDealerSelected(3, QString());
        choose(list->grid, 1);
        command(*list, 1);
        put(list->field, "고침");
        rowsOf(*list).Requery();
        push(list->save);
        EXPECT_THAT(boxes_.take(), IsEmpty());
        EXPECT_THAT(stored(*list), ElementsAre("첫째", "고침", "셋째"));
        close();
    }
}

TEST_F(GoneRows, AnEditThatCollidesKeepsItsRowAndTheNextOneIsSaved)
{
    for (const ListCase *list : {&productList, &dealerList}) {
        SCOPED_TRACE(list->name);
        manage();
        choose(list->grid, 1);
        command(*list, 1);
        changeElsewhere(*list, 2);
        put(list->field, "고침");
        push(list->save);
        EXPECT_THAT(boxes_.take(), ElementsAre("저장: 저장을 하지 못했습니다. 서버와의 연결을 확인하십시오."));
        EXPECT_EQ(currentRow(*list), 1);
        EXPECT_EQ(text(list->field), "남의 것");
        command(*list, 1);
        put(list->field, "고침");
        push(list->save);
        EXPECT_THAT(stored(*list), ElementsAre("첫째", "고침", "셋째"));

        choose(list->grid, 2);
        command(*list, 1);
        deleteElsewhere(*list, 3);
        push(list->save);
        EXPECT_EQ(boxes_.take().size(), 1u);
        EXPECT_EQ(currentRow(*list), -1);
        EXPECT_EQ(text(list->field), "");
        close();
    }
}

// The save of a purchase traps nothing: the edit stays open, with what was typed.
TEST_F(GoneRows, APurchaseThatCollidesStaysInEditAndIsSavedAtTheNextTry)
{
    manage();
    pane<IncomingPane>().insFrmCompanySelect_evtDealerSelected(3, QString());
    choose("tdbProductIncoming", 1);
    command(purchaseList, 1);
    changeElsewhere(purchaseList, 2);
    put("txtIncMemo", "고침");
    push("chkcmdIncomingSave_0");
    EXPECT_EQ(boxes_.take().size(), 1u);
    EXPECT_EQ(inEdit(), "purchase");
    EXPECT_EQ(text("txtIncMemo"), "고침");
    EXPECT_EQ(currentRow(purchaseList), 1);
    EXPECT_EQ(rowsOf(purchaseList)["IN_EtcMemo"].toString(), QStringLiteral("남의 것"));
    EXPECT_FALSE(gcnnMasterDB->inTransaction());
    push("chkcmdIncomingSave_0");
    EXPECT_EQ(inEdit(), "");
    EXPECT_THAT(stored(purchaseList), ElementsAre("첫째", "고침", "셋째"));

    choose("tdbProductIncoming", 2);
    command(purchaseList, 1);
    deleteElsewhere(purchaseList, 3);
    for (int attempt = 0; attempt < 2; ++attempt) {
        push("chkcmdIncomingSave_0");
        EXPECT_EQ(boxes_.take().size(), 1u);
        EXPECT_EQ(inEdit(), "purchase");
        EXPECT_FALSE(rowsOf(purchaseList).hasCurrent());
    }
    EXPECT_THAT(stored(purchaseList), ElementsAre("첫째", "고침"));
}

TEST_F(GoneRows, APurchaseIsNotSavedWithoutItsProductAndItsDealer)
{
    manage();
    const struct
    {
        int begins, dealer;
        const ListCase &gone;
        int key;
    } cases[] = {{0, 3, dealerList, 3}, {1, 2, dealerList, 2}, {0, 1, productList, 1}};
    for (const auto &row : cases) {
        SCOPED_TRACE(row.gone.name + std::to_string(row.begins));
        command(purchaseList, row.begins);
        pane<IncomingPane>().insFrmCompanySelect_evtDealerSelected(row.dealer, QString());
        deleteElsewhere(row.gone, row.key);
        push("chkcmdIncomingSave_0");
        EXPECT_EQ(boxes_.take().size(), 1u);
        EXPECT_EQ(inEdit(), "purchase");
        EXPECT_FALSE(gcnnMasterDB->inTransaction());
        EXPECT_EQ(rows("SELECT COUNT(*), COUNT(DISTINCT CM_PK) FROM tPSIncoming"), Rows{"4|1"});
        push("chkcmdIncomingSave_1");
    }
}

TEST_F(GoneRows, HidingAProductThatIsGoneIsToldOnce)
{
    manage();
    choose("tdbSaleProductListsManager", 1);
    deleteElsewhere(productList, 2);
    auto &grid = at<QTableView>("tdbSaleProductListsManager");
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, grid.visualRect(grid.model()->index(1, 0)).center());
    EXPECT_THAT(boxes_.take(), ElementsAre(gone(productList)));
    EXPECT_EQ(grid.model()->rowCount(), 2);
    EXPECT_EQ(stock(), "||||");
}

TEST_F(GoneRows, AListThatCannotBeLoadedLeavesNothingOnViewAndIsLoadedWhenItCanBe)
{
    manage();
    const struct
    {
        const ListCase *list;
        std::function<void()> load, loadIfClosed;
        std::function<bool()> isLoaded;
    } cases[] = {
        {&productList, [&] { pane<ProductPane>().loadProductListsManager(); },
         [&] { pane<ProductPane>().loadIfClosed(); }, [&] { return pane<ProductPane>().isLoaded(); }},
        {&purchaseList, [&] { pane<ProductPane>().fillPanel(); }, [&] { pane<IncomingPane>().loadIfClosed(); },
         [&] { return pane<IncomingPane>().isLoaded(); }},
        {&dealerList, [&] { pane<DealerPane>().loadCompanyMaster(); }, [&] { pane<DealerPane>().loadIfClosed(); },
         [&] { return pane<DealerPane>().isLoaded(); }},
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
        EXPECT_EQ(text(c.list->field), "");
        if (c.list == &productList) {
            EXPECT_EQ(text("txtIncMemo"), "");
            EXPECT_EQ(stock(), "||||");
        }
        atOtherDesk("ALTER TABLE away RENAME TO " + table);
        c.loadIfClosed();
        EXPECT_TRUE(c.isLoaded());
        EXPECT_EQ(text(c.list->field), "첫째");
        rowsOf(*c.list).moveTo(1);
        c.loadIfClosed();
        EXPECT_EQ(currentRow(*c.list), 1) << "what is loaded stays as it is";
        rowsOf(*c.list).moveTo(0);
    }
}

TEST_F(GoneRows, AProductListThatFailsBeneathAnEditLeavesTheEditAndComesWithItsEnd)
{
    manage();
    choose("tdbSaleProductListsManager", 1);
    command(productList, 1);
    put("txtProSaleInfo_3", "고침");
    atOtherDesk("ALTER TABLE tPSProductMaster RENAME TO away");
    pane<ProductPane>().loadProductListsManager(true);
    EXPECT_EQ(text("txtProSaleInfo_3"), "고침");
    atOtherDesk("ALTER TABLE away RENAME TO tPSProductMaster");
    EXPECT_TRUE(pane<ProductPane>().abandonEdit());
    EXPECT_FALSE(pane<ProductPane>().abandonEdit());
    EXPECT_EQ(text("txtProSaleInfo_3"), "첫째");
}

TEST_F(GoneRows, TheSaleListThatCannotBeLoadedShowsNoProductAndIsLoadedWhenItCanBe)
{
    manage();
    auto &saleList = pane<SaleListPane>();
    EXPECT_EQ(rowsShown("tdbSaleProductLists"), 3);
    atOtherDesk("ALTER TABLE tPSProductMaster RENAME TO away");
    QSignalSpy shown(&saleList, &SaleListPane::productRowChanged);
    saleList.loadSaleProductLists();
    EXPECT_THAT(boxes_.take(), ElementsAre("데이터 가져오기: 물품 목록을 가져오지 못했습니다."));
    EXPECT_EQ(shown.size(), 1);
    EXPECT_FALSE(saleList.isLoaded());
    atOtherDesk("ALTER TABLE away RENAME TO tPSProductMaster");
    saleList.requerySaleProductLists();
    EXPECT_EQ(rowsShown("tdbSaleProductLists"), 3);
}

// The host may delete its window beneath any box; whoever asked must not go on with it. The boxes that need no other desk are
// those of tests/entry/ModalLifeTest.cpp.
TEST_F(GoneRows, TheWindowMayGoBeneathTheBoxOfAConflict)
{
    const struct
    {
        const char *box;
        std::function<void()> before, act;
    } cases[] = {
        {"a product that collides",
         [&] {
             command(productList, 1);
             changeElsewhere(productList, 1);
         },
         [] { at<QAbstractButton>("chkCmdSaveProduct_0").click(); }},
        {"a dealer that collides",
         [&] {
             command(dealerList, 1);
             changeElsewhere(dealerList, 1);
         },
         [] { at<QAbstractButton>("chkcmdCmpnyMstrSave_0").click(); }},
        {"a product that is gone", [&] { deleteElsewhere(productList, 2); },
         [&] { list("tdbSaleProductListsManager").moveTo(1); }},
        {"a dealer that is gone", [&] { deleteElsewhere(dealerList, 2); }, [&] { rowsOf(dealerList).moveTo(1); }},
        {"a purchase that cannot be shown",
         [&] {
             atOtherDesk("ALTER TABLE tPSCompanyMaster RENAME TO away"); // the name of its dealer
         },
         [&] { list("tdbSaleProductListsManager").moveTo(1); }},
    };
    for (const auto &row : cases) {
        SCOPED_TRACE(row.box);
        manage();
        row.before();
        boxes_.answers = {Answer::Yes};
        boxes_.whileItStands = [&] { close(); };
        row.act();
        EXPECT_FALSE(isUp());
        EXPECT_THAT(boxes_.take(), testing::SizeIs(1));
    }
    EXPECT_THAT(stored(purchaseList), ElementsAre("첫째", "둘째", "셋째"));
}
