#include "tests/data/StatementCases.h"

#include "data/clsSQL.h"

using runtime::Currency;

namespace {

const QDate Day(2026, 11, 1);
constexpr const char *Orders = "tPSOrderMaster";
constexpr const char *Lines = "tPSOrderDetail";
constexpr const char *Ledger = "tPSTransaction";
constexpr const char *Properties = "tPSProperties";

Currency won(qint64 amount)
{
    return Currency::fromWon(amount);
}

std::vector<StatementCase> writingCases()
{
    const clsSQL sql;
    return {
        {"InsertTransaction", sql.InsertTransactionSQL(1, Day, 3, -2000000000, 101, "0'", "메'모"), Ledger,
         "tpstrans_PK"},
        {"InsertTransactionPlain", sql.InsertTransactionSQL(1, Day, 1, 5, 101), Ledger, "tpstrans_PK"},
        {"UpdateTransaction", sql.UpdateTransactionSQL(2, Day, 4, 7, 102, 5), Ledger, "tpstrans_PK"},
        {"InsertPSTransaction", sql.InsertPSTransaction(1, Day, 2, 9, 101, "01", "표", "G"), Ledger, "tpstrans_PK"},
        {"DelCustTran", sql.delCustTranSQL(101, 1), Ledger, "tpstrans_PK"},
        {"InsOrderMaster",
         sql.insDB2OrderMasterSQL(3, Day, 1, "주소", "02", "010", "메모", won(1), won(2), won(3), won(32767),
                                  won(-32768), ""),
         Orders, "OrdM_PK"},
        {"UpdateOrderMasterTotal",
         sql.updateOrderMasterTotalSQL(103, won(3000000000), won(-1), Currency(), won(2999999999), won(5)), Orders,
         "OrdM_PK"},
        {"UpdateMisuMoney", sql.UpdatePSMisuMoney(101, 700), Orders, "OrdM_PK"},
        {"UpdateMisuMoneyByLess", sql.UpdatePSMisuMoney(101, -700), Orders, "OrdM_PK"},
        {"UpdateMisuMoneyOfNull", sql.UpdatePSMisuMoney(103, 700), Orders, "OrdM_PK"},
        {"DelCustSaleMaster", sql.delCustSaleMasterSQL(102, 1, Day), Orders, "OrdM_PK"},
        {"DelCustSaleMasterOfAnotherDay", sql.delCustSaleMasterSQL(102, 1, Day.addDays(1)), Orders, "OrdM_PK"},
        {"InsOrderDetail", sql.insDB2OrderDetailSQL(101, 2, won(3000000000), won(-5), -3, 1), Lines, "OrdD_PK"},
        {"InsReturn", sql.insDB2RfndOrderDetailSQL(101, 2, won(900), -1, "▷반품"), Lines, "OrdD_PK"},
        {"InsReturnWithABareQuote", sql.insDB2RfndOrderDetailSQL(101, 2, won(900), -1, "it's"), Lines, "OrdD_PK",
         false},
        {"DelDetail", sql.delCustSaleDetailSQL(1), Lines, "OrdD_PK"},
        {"DelDetailsOfAnOrder", sql.delCustSaleDetailByOrdMPKSQL(101), Lines, "OrdD_PK"},
        {"DelProduct", sql.delAProductSQL(2), "tPSProductMaster", "PM_PK"},
        {"InsProperty", "INSERT INTO tPSProperties (tpsps_Key, tpsps_Value) VALUES ('지점대표자', '홍길동')",
         Properties, "tpsps_PK"},
        // The two that stand as they are and cannot run.
        {"UpdateOrderMasterFull",
         sql.updateOrderMasterFullSQL(101, 1, "a", "t", "c", "m", won(1), won(2), won(3), won(4), won(5), "e"), Orders,
         "OrdM_PK", false},
        {"UpdateOrderMasterMemo", sql.updateOrderMasterMemoSQL(101, 1, "메모").toString(), Orders, "OrdM_PK", false},
    };
}

std::vector<StatementCase> catalogueReads()
{
    const clsSQL sql;
    return {
        {"AllProducts", sql.getProductMasterSQL()},
        {"ShownProducts", sql.getProductMasterSQL(false)},
        {"OrderKeyOfTwo", sql.getOrderMasterPKSQL(1, Day)},
        {"OrderKeyOfNone", sql.getOrderMasterPKSQL(3, Day)},
        {"Orders", sql.getOrderMasterSQL(1)},
        {"Details", sql.getOrderDetailSQL(101)},
        {"DetailsOfKeyZero", sql.getOrderDetailSQL(0)},
        {"DetailsOfNoKey", sql.getOrderDetailSQL(-1)},
        {"Ledger", sql.getCustTranSQL(1, 101)},
        {"LedgerOfNoKey", sql.getCustTranSQL(-1, -1)},
        {"CountOrders", sql.getCountOrderMasterSQL(1, Day)},
        {"SumTaxed", sql.getSumTaxOrTaxFreeTotalSQL(101, true)},
        {"SumTaxFree", sql.getSumTaxOrTaxFreeTotalSQL(102, false)},
        {"SumOfNoLine", sql.getSumTaxOrTaxFreeTotalSQL(105, true)},
        {"HalinTotal", sql.getHalinTotalSQL(101)},
        {"SumHalin", sql.getSumHalinTotalSQL(102)},
        {"MisuEtc", sql.getOrderMasterMisuEtcPartSQL(104)},
        {"TotalReceived", sql.getTranTotalReceiveAmountSQL(1, 103)},
        {"AllTranAmount", sql.getAllTranAmount(1, 101)},
        {"AllTranAmountOutstanding", sql.getAllTranAmount(1, 102)},
        {"AllTranAmountWithNulls", sql.getAllTranAmount(1, 103)},
        {"AllTranAmountOfTwoOfAKind", sql.getAllTranAmount(2, 104)},
        {"AllTranAmountOfNothing", sql.getAllTranAmount(1, 105)},
        {"AllDealers", sql.getDealerSQL("")},
        {"DealersByName", sql.getDealerSQL("한국")},
        {"Dealers", sql.getCmpnyMstrSQL()},
        {"TextsOfProducts", clsSQL::getProductTextsSQL()},
        {"TextsOfDealers", clsSQL::getDealerTextsSQL()},
        {"DealerName", sql.getCmpnyNameSQL(2)},
        {"Incoming", sql.getProdIncomingSQL(1)},
        {"SameNames", sql.getNumOfSameProdName("홍삼정")},
        {"UsesOfAProduct", sql.getNumOfUsedProdSQL(1)},
        {"UsesOfOneNotHandled", sql.getNumOfUsedProdSQL(4)},
        {"UsesOfADealer", sql.getNumOfUsedCmpnySQL(1)},
        {"StockIn", sql.getStockIncomingTotCountSQL(1)},
        {"StockInOfNone", sql.getStockIncomingTotCountSQL(3)},
        {"StockOut", sql.getStockSaleTotCountSQL(1)},
        {"StockOutOfNone", sql.getStockSaleTotCountSQL(3)},
        {"Properties", sql.getPropValues()},
        {"ReceiptLines", sql.getOrderDetailWithNameSQL(101)},
        {"ReceiptLinesOfAllKinds", sql.getOrderDetailWithNameSQL(102)},
        {"ReceiptTotals", sql.getTranAllEachTotalByOrdMPKSQL(101)},
        {"ReceiptTotalsOutstanding", sql.getTranAllEachTotalByOrdMPKSQL(102)},
        {"ReceiptTotalsOfTwoOfAKind", sql.getTranAllEachTotalByOrdMPKSQL(104)},
        {"ReceiptTotalsWithNulls", sql.getTranAllEachTotalByOrdMPKSQL(103)},
        {"PeriodTotals", sql.getTranAllEachTotalByPeriodSQL(Day, Day.addDays(23))},
        {"PeriodTotalsOfNoDay", sql.getTranAllEachTotalByPeriodSQL(Day.addDays(1), Day)},
    };
}

/// Those that panes and dialogs build themselves.
std::vector<StatementCase> readsOfTheirOwn()
{
    const QString misuHead = "SELECT Customer.sn, Customer.name, tPSOrderMaster.* FROM tPSOrderMaster "
                             "INNER JOIN Customer  ON tPSOrderMaster.Cust_PK = Customer.Customer_PK ";
    const QString misuTail = "ORDER BY Customer.name, tPSOrderMaster.OrdM_Date DESC";
    return {
        {"ProductName", "SELECT PM_Catagory, PM_Name FROM tPSProductMaster WHERE PM_PK = 1"},
        {"ProductNameOfOneGone", "SELECT PM_Catagory, PM_Name FROM tPSProductMaster WHERE PM_PK = 999"},
        {"OrderByDate", "SELECT OrdM_PK FROM tPSORderMaster WHERE Cust_PK = 1 AND OrdM_Date = '2026-11-01'"},
        {"MisuOfAll", misuHead + "WHERE tPSOrderMaster.OrdM_Misugum <> 0 " + misuTail},
        {"MisuOfOne", misuHead + "WHERE Cust_PK=1 AND OrdM_Misugum <> 0 " + misuTail},
        {"Property", "SELECT tpsps_Key, tpsps_Value FROM tPSProperties WHERE tpsps_Key = '지점명'"},
        {"PropertyOfNull", "SELECT tpsps_Key, tpsps_Value FROM tPSProperties WHERE tpsps_Key = '홈페이지주소'"},
        {"Setting", "SELECT * FROM t_HospSetup WHERE HS_KEY='대행청구단체코드'"},
    };
}

} // namespace

std::vector<StatementCase> statementCases()
{
    std::vector<StatementCase> cases = writingCases();
    for (const std::vector<StatementCase> &more : {catalogueReads(), readsOfTheirOwn()})
        cases.insert(cases.end(), more.begin(), more.end());
    return cases;
}
