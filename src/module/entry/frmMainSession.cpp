#include "entry/frmMain.h"

#include "data/RestoreMark.h"
#include "data/ShownReadings.h"
#include "data/clsSQL.h"
#include "entry/CustomerPane.h"
#include "entry/SaleTab.h"
#include "entry/StatusLine.h"
#include "money/LedgerPane.h"
#include "platform/ado/Foresight.h"
#include "platform/ado/Meanwhile.h"
#include "platform/controls/EventEdge.h"
#include "platform/controls/Layouts.h"
#include "platform/controls/MessageBox.h"
#include "platform/controls/Named.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Operation.h"
#include "platform/runtime/ProgramFolder.h"
#include "products/DealerPane.h"
#include "products/IncomingPane.h"
#include "products/ProductPane.h"
#include "products/SaleListPane.h"
#include "sales/DetailPane.h"
#include "sales/OrderPane.h"
#include "sales/SaleEntryPane.h"
#include "session/ShownOrder.h"
#include "session/modGlobalVars.h"
#include "settings/PropertiesPane.h"
#include "settings/clsFormPosition.h"
#include "settings/modFormLocate.h"
#include "statistics/StatisticsPane.h"

#include <QHash>
#include <QPointer>
#include <QScopeGuard>

#include <utility>

// One customer's session in the window: the two entries, what they load, what each tab loads, and the end of it all.

namespace {

QString saleCaption(const QString &name)
{
    return QStringLiteral("[") + name + QStringLiteral("]") + QStringLiteral("님의 판매관리");
}

} // namespace

qint16 frmMain::showProductSaleForm(const ado::ConnectionPtr &cnnMasterDB, const Customer &customer)
{
    const runtime::Operation operation("enter sale", {{"customer", customer.lngCustPK}});
    const auto comeUp = [this] {
        showStatus();
        bringUp();
        entryPane_->focusQuantity();
        restoreMainWindowLayout(*this, *saleTab_->columns());
        controls::endLayouts();
        repaint();
    };
    const auto begin = [&] {
        stepByStep({[&] { beginSession(cnnMasterDB, customer); }, [this] { c1tabMain_->setCurrentIndex(SaleTabIndex); },
                    [this] { openSaleRecordsets(); }, comeUp});
    };
    controls::runEvent(begin, this);
    return 0;
}

qint16 frmMain::showProductSaleManageForm(const ado::ConnectionPtr &cnnMasterDB, const Customer &customer)
{
    const runtime::Operation operation("enter management", {{"customer", customer.lngCustPK}});
    // Quirk (docs/architecture.md): both lists are made twice here. The grids are bound to the second ones; bound to the
    // first, deleting would take the wrong order.
    const auto makeListsAnew = [this] {
        saleListPane_->createSaleProductLists();
        orderPane_->createCustSaleMaster();
    };
    const auto comeUp = [this] {
        showStatus();
        centerFormOnScreen();
        bringUp();
        productPane_->grid()->setFocus();
    };
    const auto begin = [&] {
        stepByStep({[&] { beginSession(cnnMasterDB, customer); }, [this] { openSaleRecordsets(); }, makeListsAnew,
                    [this] { saleListPane_->loadSaleProductLists(); }, [this] { orderPane_->loadCustSaleMaster(); },
                    [this] { showNoOrder(); }, [this] { c1tabMain_->setCurrentIndex(ManageTabIndex); },
                    [this] { visitManagement(); }, comeUp});
    };
    controls::runEvent(begin, this);
    return 0;
}

void frmMain::bringUp()
{
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    watchNormalPlace(*this);
    raise();
    activateWindow();
}

void frmMain::beginSession(const ado::ConnectionPtr &cnnMasterDB, const Customer &customer)
{
    if (!stepByStep({[this] { abandonEdits(); }})) // texts typed for one customer must not be saved to another's order
        return;
    if (gcnnMasterDB != cnnMasterDB)
        forgetManagement();
    gcnnMasterDB = cnnMasterDB;
    gstrAppPath = runtime::programFolder();
    session_.customer = customer;
    statusLine_->tell({});
    c1tabMain_->setTabText(SaleTabIndex, controls::literalCaption(saleCaption(customer.name)));
    customerPane_->show(customer);
}

void frmMain::abandonEdits()
{
    const QString code = editModes_.current();
    const bool alive = stepByStep({[this] { orderPane_->abandonEdit(); }, [this] { productPane_->abandonEdit(); },
                                   [this] { incomingPane_->abandonEdit(); }, [this] { dealerPane_->abandonEdit(); }});
    if (!alive || code.isEmpty())
        return;
    if (!editModes_.current().isEmpty()) {
        leaveEditMode(code);
        paintEntryColors();
    }
    tellAbandonedEdit(code, session_.customer.name);
}

void frmMain::tellAbandonedEdit(const QString &code, const QString &customer)
{
    static const QHash<QString, QString> edited = {
        {editCode::Order, QStringLiteral("거래")},        {editCode::Ledger, QStringLiteral("수납 내역")},
        {editCode::Product, QStringLiteral("판매 물품")}, {editCode::Purchase, QStringLiteral("물품 구매 내역")},
        {editCode::Dealer, QStringLiteral("거래처")},
    };
    QString what = edited.value(code);
    if (code.startsWith(u'0')) // a customer's own
        what += QStringLiteral(" (%1)").arg(customer);
    const QString text =
        QStringLiteral("새로 요청한 화면을 여느라 수정을 끝냈습니다. 입력하던 내용은 저장하지 않았습니다.\n"
                       "필요하면 다시 수정하십시오: ")
        + what;
    whenFree([text, self = QPointer<frmMain>(this)] {
        controls::MsgBox(text, controls::InformationIcon, QStringLiteral("수정 취소"), self);
    });
}

void frmMain::readAnew()
{
    runtime::Attempt attempt; // the box of the conflict follows
    attempt([this] {
        const LineKey line = detailPane_->currentLine();
        stepByStep({[this] { orderPane_->readAnew(); }, [&] { detailPane_->choose(line); }});
    });
}

/// A restore of a backup under the open window is told, and everything is read anew, when what met it has ended.
void frmMain::watchForRestore()
{
    restoreMark::remember(gcnnMasterDB, [self = QPointer<frmMain>(this)] {
        whenFree([self] {
            if (self)
                controls::runEvent([self] { self->readAllAnew(); }, self);
        });
    });
}

void frmMain::readAllAnew()
{
    const QString code = editModes_.current();
    if (code.isEmpty() || code.startsWith(u'0')) // an edit of the management compares what it saves
        forgetManagement();
    const bool alive = stepByStep(
        {[this] { watchForRestore(); }, [this] { saleListPane_->requerySaleProductLists(); }, [this] { readAnew(); }});
    if (alive)
        controls::MsgBox(QStringLiteral("데이터베이스가 백업으로 복원되어 목록을 모두 새로 가져왔습니다.\n"
                                        "방금 한 작업은 저장하지 않았습니다. 확인한 뒤 다시 입력하십시오."),
                         controls::InformationIcon, QStringLiteral("복원된 데이터베이스"), this);
}

void frmMain::tellSale(ado::Foresight &next, qint32 lngCustPK)
{
    restoreMark::tell(next);
    tellSaleLists(next, lngCustPK);
}

void frmMain::tellSaleLists(ado::Foresight &next, qint32 lngCustPK)
{
    SaleListPane::tellSaleProductLists(next);
    next.open(clsSQL().getOrderMasterSQL(lngCustPK), ado::CursorType::Keyset);
}

/// It travels while the products are put in order.
void frmMain::sendFirstOrder() const
{
    ado::Foresight next(gcnnMasterDB);
    tellSaleLists(next, session_.customer.lngCustPK);
    shownReadings::sendFirstOrder(next, session_.customer.lngCustPK);
}

void frmMain::openSaleRecordsets()
{
    ado::Foresight next(gcnnMasterDB);
    tellSale(next, session_.customer.lngCustPK);
    opensSale_ = true;
    const auto opened = qScopeGuard([self = QPointer<frmMain>(this)] {
        if (self)
            self->opensSale_ = false;
    });
    watchForRestore();
    sendFirstOrder();
    // What a window's first painting makes ready stays, and where the server is far away there is time for one that is not seen.
    const ado::Meanwhile drawn([&next, self = QPointer<frmMain>(this)] {
        if (self && !self->isVisible() && next.isOfFarServer())
            self->grab();
    });
    const auto makeLines = [this] {
        detailPane_->createCustSaleDetails();
        ledgerPane_->createCustTranManage();
    };
    saleListPane_->createSaleProductLists();
    stepByStep({[this] { saleListPane_->loadSaleProductLists(); }, [this] { orderPane_->createCustSaleMaster(); },
                [this] { orderPane_->loadCustSaleMaster(); }, makeLines, [this] { showNoOrder(); }});
}

/// What the load of an order's lines and ledger reads, its balance included.
void frmMain::tellLinesAndLedger(ado::Foresight &next, qint32 lngCustPK, qint32 lngOrdMPK) const
{
    shownReadings::tellLines(next, lngOrdMPK);
    shownReadings::tellLedger(next, lngCustPK, lngOrdMPK);
    if (SaleSession::hasCurrent(session_.rsCustSaleMaster) && !session_.rsCustSaleMaster->isGone()) {
        const ShownOrder order = shownOrder(*session_.rsCustSaleMaster);
        shownReadings::tellBalance(next, order.customer.number(), order.number());
    }
}

void frmMain::showLinesAndLedger(qint32 lngOrdMPK)
{
    ado::Foresight next(gcnnMasterDB);
    tellLinesAndLedger(next, session_.customer.lngCustPK, lngOrdMPK);
    if (opensSale_)
        tellLinesAndLedger(next, -1, -1); // it is left again at once
    stepByStep({[&] { detailPane_->loadCustSaleDetails(lngOrdMPK); },
                [&] { ledgerPane_->loadCustTranManage(session_.customer.lngCustPK, lngOrdMPK); }});
}

/// Lines and ledger stay empty until an order is selected.
void frmMain::showNoOrder()
{
    orderPane_->leaveUnchosen();
    ado::Foresight next(gcnnMasterDB);
    tellLinesAndLedger(next, -1, -1);
    stepByStep({[this] { detailPane_->loadCustSaleDetails(-1); }, [this] { ledgerPane_->loadCustTranManage(-1, -1); }});
}

void frmMain::showStatus()
{
    statusLine_->showCustomer(session_.customer.name + QStringLiteral("님의 판매관리"));
}

void frmMain::centerFormOnScreen()
{
    clsFormPosition().CenterScreen(*this, 0);
}

void frmMain::tabChanged(int newTab)
{
    const int oldTab = std::exchange(currentTab_, newTab);
    if (newTab == ManageTabIndex && !stepByStep({[this] { visitManagement(); }}))
        return;
    // Product changes reach the sale tab, also over another tab on the way back.
    saleListIsStale_ |= oldTab == ManageTabIndex;
    if (newTab == SaleTabIndex && std::exchange(saleListIsStale_, false) && !showProductsAnew())
        return;
    if (newTab == StatisticsTabIndex)
        statisticsPane_->showStatisticsTab();
    if (newTab == PropertiesTabIndex)
        propertiesPane_->loadProperties();
}

bool frmMain::showProductsAnew()
{
    ado::Foresight next(gcnnMasterDB);
    if (next.isOfUse()) {
        saleListPane_->tellSaleProductLists(next);
        detailPane_->tellNamesInSight(next);
    }
    const auto showNames = [&] {
        detailPane_->rebind();
        if (next.isOfUse()) // painted only when what was told is forgotten
            detailPane_->readNamesInSight();
    };
    return stepByStep({[this] { saleListPane_->requerySaleProductLists(); }, showNames});
}

/// The first visit with a connection makes the lists. The product list may have been made before by the properties, but
/// nothing else.
void frmMain::visitManagement()
{
    if (!gcnnMasterDB)
        return;
    const ado::Foresight standing(gcnnMasterDB); // the dealers may come with the first product's
    const auto visitProducts = [this] {
        if (session_.rsProductIncoming)
            return;
        ado::Foresight next(gcnnMasterDB);
        productPane_->tellChoice(next);
        runtime::Attempt ahead; // a server that is gone is told by the list
        if (next.isOfUse())
            ahead([] { gcnnMasterDB->learnKey(QStringLiteral("tPSIncoming")); });
        session_.rsProductIncoming = std::make_unique<ado::Recordset>();
        productPane_->loadProductListsManager();
    };
    const auto visitDealers = [this] {
        if (session_.rsCompanyMaster)
            return;
        session_.rsCompanyMaster = std::make_unique<ado::Recordset>();
        dealerPane_->loadCompanyMaster();
    };
    // What could not be loaded then may be now.
    stepByStep({visitProducts, visitDealers, [this] { productPane_->loadIfClosed(); },
                [this] { incomingPane_->loadIfClosed(); }, [this] { dealerPane_->loadIfClosed(); }});
}

/// A host that comes with another connection sees that one's lists.
void frmMain::forgetManagement()
{
    for (controls::RecordsetGrid *grid : {productPane_->grid(), incomingPane_->grid(), dealerPane_->grid()})
        grid->setDataSource(nullptr);
    for (SaleSession::RecordsetPtr *recordset :
         {&session_.rsSaleProductListsManager, &session_.rsProductIncoming, &session_.rsCompanyMaster})
        recordset->reset();
    statisticsPane_->connectionChanged();
}

void frmMain::unload()
{
    if (std::exchange(unloaded_, true))
        return;
    // Also when the layout cannot be saved.
    const auto release = qScopeGuard([this] {
        for (controls::RecordsetGrid *grid : findChildren<controls::RecordsetGrid *>())
            grid->setDataSource(nullptr);
        session_.release();
        if (!existing() || existing() == this) // a window that came after it has the connection that it was given
            gcnnMasterDB.reset();
    });
    saveMainWindowLayout(*this, saleTab_->wasShown() ? saleTab_->columns() : nullptr);
}
