#include "tests/entry/EntryDesk.h"

#include "forms/PaneContract.h"
#include "platform/controls/Appearance.h"

#include <QPlainTextEdit>

namespace {

using controls::SystemColor;

// Every pane, every button pair and every control of a group, by name.
const QStringList containers =
    QStringLiteral("c1elaList_0 c1elaList_1 c1elaList_2 c1elaList_3 c1elaProductInfo c1elaCustSaleInfo "
                   "c1elaSaleDetailMemo c1elaTransInfo sspPMProductList sspPMProductInfo "
                   "sspProductIncoming_0 sspProductIncoming_1 sspCompanyMaster_0 sspCompanyMaster_1 "
                   "elTranMnu_0 elTranMnu_1 elTranMnu_2 elTranMnu_3 elTranMnu_4")
        .split(u' ');
const QStringList commands =
    QStringLiteral("chkCmdOrderMasterED_0 chkCmdOrderMasterED_1 chkcmdAddEditDelTran_0 chkcmdAddEditDelTran_1 "
                   "chkcmdAddEditDelTran_2 chkCmdProdSaleAddEdiDel_0 chkCmdProdSaleAddEdiDel_1 "
                   "chkCmdProdSaleAddEdiDel_2 chkcmdIncomingAED_0 chkcmdIncomingAED_1 chkcmdIncomingAED_2 "
                   "chkcmdCmpnyMstrAED_0 chkcmdCmpnyMstrAED_1 chkcmdCmpnyMstrAED_2")
        .split(u' ');
const QStringList saveButtons =
    QStringLiteral("chkcmdCSSaveInfo_0 chkcmdCSSaveInfo_1 chkCmdSaveTrans_0 chkCmdSaveTrans_1 "
                   "chkCmdSaveProduct_0 chkCmdSaveProduct_1 chkcmdIncomingSave_0 chkcmdIncomingSave_1 "
                   "chkcmdCmpnyMstrSave_0 chkcmdCmpnyMstrSave_1")
        .split(u' ');
const QString saleEntry =
    QStringLiteral("txtSaleProductLists_4 txtSaleProductLists_5 udNoOfProdPlusMinus cmdCSAppendDetail");
const QString orderGroup =
    QStringLiteral("dtpOrderMasterDate optTakBae_0 optTakBae_1 txtOrderMaster_2 txtOrderMaster_3 txtOrderMaster_4 "
                   "txtOrderMaster_5 txtOrderMaster_6 txtOrderMaster_7 chkcmdCSSaveInfo_0 chkcmdCSSaveInfo_1");
const QString ledgerGroup =
    QStringLiteral("dtpTransReceiveDate optTransOperator_0 optTransOperator_1 optTransOperator_2 "
                   "optTransOperator_3 txtTransMoney cboPayMethod chkTransMisuMoneyRecalculate "
                   "chkCmdSaveTrans_0 chkCmdSaveTrans_1");
const QString productGroup =
    QStringLiteral("txtProSaleInfo_0 txtProSaleInfo_1 txtProSaleInfo_2 txtProSaleInfo_3 dtpProdListAddedDate "
                   "optIsTaxed_0 optIsTaxed_1 optIsValid_0 optIsValid_1 chkCmdSaveProduct_0 chkCmdSaveProduct_1");
// The total and the dealer's name belong to the purchase's group and stay read-only: they are figured and chosen.
const QString incomingGroup =
    QStringLiteral("txtIncCount udIincomingCount txtIncPricePerUnit txtIncHalinTotal dtpIncDate "
                   "chkCmdIncSelectCompany txtIncMemo chkcmdIncomingSave_0 chkcmdIncomingSave_1");
const QString dealerGroup = QStringLiteral("txtCmCompanyName chkCmIsValid txtCmTel txtCmRegNum txtCmAddress txtCmMemo");
const QString neverOpen =
    QStringLiteral("txtOrderMaster_1 txtIncPriceTotal txtIncCompanyName txtSaleProductLists_0 "
                   "txtSaleProductLists_1 txtSaleProductLists_2 txtSaleProductLists_3 chkSaleProductLists_0 "
                   "chkSaleProductLists_1 txtCustDetail_0 txtCustDetail_8");
const QStringList members = (saleEntry + u' ' + orderGroup + u' ' + ledgerGroup + u' ' + productGroup + u' '
                             + incomingGroup + u' ' + dealerGroup + u' ' + neverOpen)
                                .split(u' ');

class EditModes : public EntryDesk
{
protected:
    EditModes() { sell(); }

    static PaneShell &shell() { return dynamic_cast<PaneShell &>(*window()); }

    /// Names of the list for which the question is answered with yes, in the list's order.
    static std::string those(const QStringList &names, bool (*question)(const QWidget *))
    {
        QStringList found;
        for (const QString &name : names) {
            if (question(at(name)))
                found << name;
        }
        return found.join(u' ').toStdString();
    }
    static std::string within(const QString &part, const QStringList &order)
    {
        const QStringList wanted = part.split(u' ');
        QStringList found;
        for (const QString &name : order) {
            if (wanted.contains(name))
                found << name;
        }
        return found.join(u' ').toStdString();
    }

    static bool isEnabled(const QWidget *pane) { return pane->isEnabled(); }
    static bool isHidden(const QWidget *button) { return button->isHidden(); }
    static bool isShown(const QWidget *button) { return !button->isHidden(); }
    /// Opened by its group, whatever its pane.
    static bool isOpen(const QWidget *control)
    {
        if (auto *line = qobject_cast<const QLineEdit *>(control))
            return !line->isReadOnly();
        if (auto *memo = qobject_cast<const QPlainTextEdit *>(control))
            return !memo->isReadOnly();
        return control->isEnabledTo(control->parentWidget());
    }

    static void expectBrowsing(const QString &open)
    {
        EXPECT_EQ(those(containers, isEnabled), containers.join(u' ').toStdString());
        EXPECT_EQ(those(members, isOpen), within(open, members));
        EXPECT_EQ(those(commands, isHidden), "");
        EXPECT_EQ(those(saveButtons, isShown), "");
    }
};

} // namespace

TEST_F(EditModes, OpenOnePaneAndLockItAgain)
{
    const struct
    {
        const char *code;
        QString panes, group, hidden, shown;
    } cases[] = {
        {"00", "c1elaCustSaleInfo", orderGroup, "chkCmdOrderMasterED_0 chkCmdOrderMasterED_1",
         "chkcmdCSSaveInfo_0 chkcmdCSSaveInfo_1"},
        {"02", "c1elaTransInfo", ledgerGroup, "chkcmdAddEditDelTran_0 chkcmdAddEditDelTran_1 chkcmdAddEditDelTran_2",
         "chkCmdSaveTrans_0 chkCmdSaveTrans_1"},
        {"10", "sspPMProductInfo elTranMnu_2", productGroup,
         "chkCmdProdSaleAddEdiDel_0 chkCmdProdSaleAddEdiDel_1 chkCmdProdSaleAddEdiDel_2",
         "chkCmdSaveProduct_0 chkCmdSaveProduct_1"},
        {"11", "sspProductIncoming_1 elTranMnu_3", incomingGroup,
         "chkcmdIncomingAED_0 chkcmdIncomingAED_1 chkcmdIncomingAED_2", "chkcmdIncomingSave_0 chkcmdIncomingSave_1"},
        {"12", "sspCompanyMaster_1 elTranMnu_4", dealerGroup,
         "chkcmdCmpnyMstrAED_0 chkcmdCmpnyMstrAED_1 chkcmdCmpnyMstrAED_2",
         "chkcmdCmpnyMstrSave_0 chkcmdCmpnyMstrSave_1"},
    };
    expectBrowsing(saleEntry);
    QString open = saleEntry;
    for (const auto &c : cases) {
        SCOPED_TRACE(c.code);
        shell().enterEditMode(QLatin1String(c.code));
        EXPECT_EQ(those(containers, isEnabled), within(c.panes, containers));
        EXPECT_EQ(those(members, isOpen), within(open + u' ' + c.group, members));
        EXPECT_EQ(those(commands, isHidden), within(c.hidden, commands));
        EXPECT_EQ(those(saveButtons, isShown), within(c.shown, saveButtons));
        shell().leaveEditMode(QLatin1String(c.code));
        // The unit discount stays locked from the first edit on.
        open = QStringLiteral("txtSaleProductLists_5 udNoOfProdPlusMinus cmdCSAppendDetail");
        expectBrowsing(open);
    }
    shell().enterEditMode(QStringLiteral("01"));
    EXPECT_EQ(those(containers, isEnabled), "") << "a code that opens nothing";
    EXPECT_EQ(those(members, isOpen), within(open, members));
    shell().leaveEditMode(QStringLiteral("01"));
    expectBrowsing(open);
}

TEST_F(EditModes, TellOpenPanesFromLockedOnesByColour)
{
    const QColor window = controls::systemColor(SystemColor::Window);
    const QColor needed = controls::systemColor(SystemColor::InfoBackground);
    const QColor out = controls::systemColor(SystemColor::InactiveBorder);
    const QColor locked = controls::LockedColor;
    const struct
    {
        const char *control, *code;
        QColor browsing, inEdit;
    } cases[] = {
        {"txtOrderMaster_2", "00", locked, window},   {"txtOrderMaster_0", "00", locked, out},
        {"txtSaleProductLists_5", "00", window, out}, {"txtSaleProductLists_0", "00", locked, out},
        {"txtProSaleInfo_1", "10", needed, needed},   {"txtProSaleInfo_1", "00", needed, out},
        {"txtCmCompanyName", "12", needed, needed},   {"txtTransMoney", "00", locked, out},
        {"txtCustOrderRfndMemo", "02", locked, out},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(std::string(c.control) + " " + c.code);
        const auto color = [&c] { return controls::backColor(at(c.control)).name().toStdString(); };
        shell().enterEditMode(QLatin1String(c.code));
        EXPECT_EQ(color(), c.inEdit.name().toStdString());
        shell().leaveEditMode(QLatin1String(c.code));
        shell().paintEntryColors();
        EXPECT_EQ(color(), c.browsing.name().toStdString());
    }
}
