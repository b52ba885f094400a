#include "entry/TabOrder.h"

#include "forms/ControlsByName.h"
#include "forms/FormRow.h"

namespace {

constexpr const char *tabOrder[] = {
    // a sale
    "txtFindProduct",
    "tdbSaleProductLists",
    "ssoptSellType_0",
    "ssoptSellType_1",
    "ssoptSellType_2",
    "txtSaleProductLists_5",
    "txtSaleProductLists_4",
    "txtSaleProductLists_6",
    "txtSaleProductLists_7",
    "cmdCSAppendDetail",
    "chkCmdAutomateReceipt",
    "tdbCustSaleMaster",
    "tdbCustSaleDetails",
    "tdbCustTranManage",
    // the order
    "chkCmdOrderMasterED_0",
    "chkCmdPrintReceipt_0",
    "chkCmdPrintReceiptRollPrinter",
    "uxStartDateDTP",
    "uxEndDateDTP",
    "chkCmdPrintReceipt_1",
    "chkCmdOrderMasterED_1",
    "dtpOrderMasterDate",
    "optTakBae_0",
    "optTakBae_1",
    "txtOrderMaster_0",
    "txtOrderMaster_8",
    "txtOrderMaster_1",
    "txtOrderMaster_9",
    "txtOrderMaster_7",
    "txtOrderMaster_2",
    "txtOrderMaster_3",
    "txtOrderMaster_4",
    "txtOrderMaster_6",
    "txtOrderMaster_5",
    "chkcmdCSSaveInfo_0",
    "chkcmdCSSaveInfo_1",
    // its lines
    "chkCmdRefund",
    "chkCmdDelOrderDetail",
    "txtCustOrderRfndMemo",
    // its ledger
    "chkCmdRunMisuMoneyManger",
    "chkcmdAddEditDelTran_0",
    "chkcmdAddEditDelTran_1",
    "chkCmdMnuCustTrans",
    "chkcmdAddEditDelTran_2",
    "dtpTransReceiveDate",
    "optTransOperator_0",
    "optTransOperator_1",
    "optTransOperator_2",
    "optTransOperator_3",
    "cboPayMethod",
    "txtTransMoney",
    "chkTransMisuMoneyRecalculate",
    "chkTranMisuRecord",
    "txtTransMemo",
    "chkCmdSaveMemo",
    "chkCmdSaveTrans_0",
    "chkCmdSaveTrans_1",
};

} // namespace

void orderTabs(QWidget &window)
{
    const QMultiHash<QString, QWidget *> controls = controlsByName(window);
    QList<QWidget *> chain;
    for (const char *name : tabOrder) {
        if (QWidget *control = controls.value(QLatin1String(name)))
            chain += control;
    }
    setTabChain(chain);
}
