#include "entry/frmMain.h"

#include "entry/CustomerPane.h"
#include "entry/SaleTab.h"
#include "entry/Shortcuts.h"
#include "entry/StatusLine.h"
#include "entry/TabOrder.h"
#include "forms/FormRow.h"
#include "forms/SpokenNames.h"
#include "money/LedgerPane.h"
#include "money/OutstandingFlow.h"
#include "money/ReceiptFlow.h"
#include "platform/ado/Foresight.h"
#include "platform/ado/Meanwhile.h"
#include "platform/controls/Activity.h"
#include "platform/controls/Appearance.h"
#include "platform/controls/EventEdge.h"
#include "platform/controls/Layouts.h"
#include "platform/controls/Named.h"
#include "platform/controls/WaitingLine.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Conversions.h"
#include "printing/PageReceipts.h"
#include "printing/RollReceipt.h"
#include "products/DealerPane.h"
#include "products/IncomingPane.h"
#include "products/ProductPane.h"
#include "products/SaleListPane.h"
#include "products/StockBox.h"
#include "sales/DetailPane.h"
#include "sales/OrderPane.h"
#include "sales/RefundFlow.h"
#include "sales/SaleEntryPane.h"
#include "session/modGlobalVars.h"
#include "settings/GridLayouts.h"
#include "settings/PropertiesPane.h"
#include "statistics/StatisticsPane.h"

#include <QApplication>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QPointer>
#include <QScreen>
#include <QShortcut>
#include <QStatusBar>

#include <utility>

namespace {

QPointer<frmMain> defaultInstance;

constexpr QSize designedSize{1280, 720};

/// A host may end while the window is open. The database layer ends with the program, so the window and the lent
/// connection go before it.
void leaveWithProgram()
{
    delete defaultInstance.data();
    gcnnMasterDB.reset();
}

} // namespace

std::unique_ptr<frmMain> frmMain::made()
{
    return std::unique_ptr<frmMain>(new frmMain);
}

frmMain &frmMain::instance(std::unique_ptr<frmMain> one)
{
    if (!defaultInstance) {
        defaultInstance = (one ? std::move(one) : made()).release();
        qRemovePostRoutine(leaveWithProgram); // one window after another: it runs once
        qAddPostRoutine(leaveWithProgram);
        controls::runEvent([] { defaultInstance->load(); });
    }
    return *defaultInstance;
}

frmMain *frmMain::existing()
{
    return defaultInstance;
}

frmMain::frmMain()
{
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(QStringLiteral("물품판매관리"));
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_QuitOnClose, false); // the host decides when the program ends
    controls::showWaitingLine();
    controls::installKoreanFonts();
    setFont(controls::deskFont());
    createPanes();
    placePanes();
    connectPanes();
    fillEditModes();
    giveSpokenNames(this);
    orderTabs(*this);
    installShortcuts(*this);
    resize(
        designedSize.boundedTo(screen()->availableSize() - QSize(0, style()->pixelMetric(QStyle::PM_TitleBarHeight))));
}

frmMain::~frmMain()
{
    runtime::Attempt attempt; // nobody is left to read a box
    attempt([this] { unload(); });
}

void frmMain::createPanes()
{
    customerPane_ = new CustomerPane(this);
    saleListPane_ = new SaleListPane(session_, this);
    entryPane_ = new SaleEntryPane(session_, this);
    orderPane_ = new OrderPane(session_, *this, this);
    detailPane_ = new DetailPane(session_, this);
    refundFlow_ = new RefundFlow(session_, *detailPane_, this);
    ledgerPane_ = new LedgerPane(session_, *this, this);
    receiptFlow_ = new ReceiptFlow(session_, *ledgerPane_, this);
    new OutstandingFlow(session_, *ledgerPane_, this);
    productPane_ = new ProductPane(session_, *this, this);
    incomingPane_ = new IncomingPane(session_, *this, this);
    dealerPane_ = new DealerPane(session_, *this, this);
    statisticsPane_ = new StatisticsPane(this);
    propertiesPane_ = new PropertiesPane(this);
}

void frmMain::placePanes()
{
    saleTab_ = new SaleTab(customerPane_, saleListPane_->c1elaList(), entryPane_->c1elaProductInfo(),
                           {{{orderPane_->elTranMnu(), orderPane_->c1elaList(), orderPane_->c1elaCustSaleInfo(), 3},
                             {nullptr, detailPane_->c1elaList(), detailPane_->c1elaSaleDetailMemo(), 3},
                             {ledgerPane_->elTranMnu(), ledgerPane_->c1elaList(), ledgerPane_->c1elaTransInfo(), 3}}});

    alignCaptions({incomingPane_, dealerPane_});
    auto *purchases = new QSplitter(Qt::Vertical);
    purchases->setChildrenCollapsible(false);
    purchases->addWidget(incomingPane_);
    purchases->addWidget(dealerPane_);
    auto *splitPMMain = controls::named(new QSplitter(Qt::Horizontal), QStringLiteral("splitPMMain"));
    splitPMMain->setChildrenCollapsible(false);
    splitPMMain->addWidget(productPane_);
    splitPMMain->addWidget(purchases);
    splitPMMain->setSizes({590, 690}); // the date of a purchase shows without scrolling, in a narrow window too

    c1tabMain_ = controls::named(new controls::TabWidget(this), QStringLiteral("c1tabMain"));
    c1tabMain_->addTab(saleTab_, QStringLiteral("[]님의 판매관리"));
    c1tabMain_->addTab(splitPMMain, QStringLiteral("판매물품관리"));
    c1tabMain_->addTab(statisticsPane_, QStringLiteral("통계"));
    c1tabMain_->addTab(propertiesPane_, QStringLiteral("환경설정"));
    c1tabMain_->setDocumentMode(true);
    setCentralWidget(c1tabMain_);
    statusLine_ = new StatusLine(controls::named(statusBar(), QStringLiteral("MainStatusBar")));
}

void frmMain::connectPanes()
{
    using controls::onEvent;
    connect(saleTab_, &SaleTab::roomIsShort, customerPane_, &CustomerPane::fold);
    onEvent(c1tabMain_, &controls::TabWidget::turnedTo, this, [this](int tab) { tabChanged(tab); });
    onEvent(new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_F), this), &QShortcut::activated, this,
            [this] { focusSearch(); });

    // The road of a sale: product, line, order, its lines and its ledger.
    connect(saleListPane_, &SaleListPane::productRowChanged, entryPane_, &SaleEntryPane::showProduct);
    connect(saleListPane_, &SaleListPane::productCodeEntered, entryPane_, &SaleEntryPane::focusQuantity);
    connect(entryPane_, &SaleEntryPane::lineAdded, orderPane_, &OrderPane::loadCustSaleMaster);
    connect(orderPane_, &OrderPane::orderRowChanged, this, [this](int lngOrdMPK) { showLinesAndLedger(lngOrdMPK); });
    connect(orderPane_, &OrderPane::noOrderSelected, this, [this] { showNoOrder(); });
    connect(orderPane_, &OrderPane::ordersNotRead, this, [this] {
        detailPane_->clear();
        ledgerPane_->clear();
    });
    connect(detailPane_, &DetailPane::receiptAsked, ledgerPane_, &LedgerPane::pressAutomateReceipt);
    connect(receiptFlow_, &ReceiptFlow::orderGridMustRefresh, orderPane_->tdbCustSaleMaster(),
            &controls::RecordsetGrid::Refresh);
    connect(receiptFlow_, &ReceiptFlow::orderGridMustRebind, orderPane_->tdbCustSaleMaster(),
            &controls::RecordsetGrid::Rebind);
    connect(&session_, &SaleSession::orderTotalsChanged, orderPane_, &OrderPane::showOrderTotals);
    connect(&session_, &SaleSession::orderTaken, orderPane_, &OrderPane::chooseOrder);
    connect(&session_, &SaleSession::done, statusLine_, &StatusLine::tell);
    connect(orderPane_, &OrderPane::ordersChanged, statusLine_,
            [this] { statusLine_->showOwed(session_.rsCustSaleMaster); });
    connect(&session_, &SaleSession::changedElsewhere, this, [this] { readAnew(); });
    connect(&session_, &SaleSession::productGone, saleListPane_, &SaleListPane::requerySaleProductLists);

    onEvent(orderPane_, &OrderPane::orderReceiptAsked, this,
            [this] { PageReceipts(session_, this).printOrderReceipt(); });
    onEvent(orderPane_, &OrderPane::periodReceiptAsked, this, [this](const QDate &dtStart, const QDate &dtEnd) {
        PageReceipts(session_, this).printPeriodReceipt(dtStart, dtEnd);
    });
    onEvent(orderPane_, &OrderPane::rollReceiptAsked, this, [this] { printRollReceipt(); });

    connect(productPane_, &ProductPane::currentProductChanged, this, [this](ProductKey product) {
        incomingPane_->loadProductIncoming(product, [this, product](ado::Foresight &next) {
            StockBox::tell(next, product);
            if (!session_.rsCompanyMaster) // the first visit
                DealerPane::tell(next);
        });
    });
    connect(propertiesPane_, &PropertiesPane::propertiesSaved, this,
            [this] { productPane_->loadProductListsManager(!editModes_.current().isEmpty()); });
    connect(propertiesPane_, &PropertiesPane::gridResetRequested, this, [this] { resetGridLayouts(layoutGrids()); });
}

/// Of the two on the management tab the dealers' own where the focus is among the dealers.
void frmMain::focusSearch()
{
    const bool amongDealers = dealerPane_->isAncestorOf(focusWidget());
    if (currentTab_ == SaleTabIndex)
        saleListPane_->search()->takeFocus();
    else if (currentTab_ == ManageTabIndex)
        (amongDealers ? dealerPane_->search() : productPane_->search())->takeFocus();
}

void frmMain::printRollReceipt()
{
    const ado::Recordset &order = *session_.rsCustSaleMaster;
    PrintRollPrintReceipt(this, {.connection = gcnnMasterDB,
                                 .lngCustPK = session_.customer.lngCustPK,
                                 .customerName = session_.customer.name,
                                 .lngOrdMPK = runtime::CLng(order[QStringLiteral("OrdM_PK")]),
                                 .orderDate = order[QStringLiteral("OrdM_Date")]});
}

void frmMain::fillEditModes()
{
    editModes_.addContainers({saleListPane_->c1elaList(), orderPane_->c1elaList(), detailPane_->c1elaList(),
                              ledgerPane_->c1elaList(), entryPane_->c1elaProductInfo(), orderPane_->c1elaCustSaleInfo(),
                              detailPane_->c1elaSaleDetailMemo(), ledgerPane_->c1elaTransInfo(),
                              orderPane_->elTranMnu(), ledgerPane_->elTranMnu()});
    editModes_.addContainers(productPane_->containers());
    editModes_.addContainers(incomingPane_->containers());
    editModes_.addContainers(dealerPane_->containers());

    for (const EditModeTable &table :
         {orderPane_->editMode(), ledgerPane_->editMode(), productPane_->editMode(), incomingPane_->editMode(),
          dealerPane_->editMode(), entryPane_->colors(), detailPane_->colors()})
        editModes_.addTable(table);
    editModes_.addGroup(customerPane_->colCustDetail(), false);
    editModes_.addGroup(entryPane_->colProductInfo(), false);
    editModes_.addGroup(entryPane_->colSaleEntry(), true);
}

void frmMain::load()
{
    unloaded_ = false;
    entryPane_->resetPane();
    lockAllPanes();
    paintEntryColors();
    if (gbProductServerLinked)
        productPane_->disableCommands();
    for (controls::RecordsetGrid *grid : layoutGrids())
        keepGridLayout(*grid);
    orderPane_->strip()->uxEndDateDTP()->setDate(QDate::currentDate());
    orderPane_->strip()->uxStartDateDTP()->setDate(QDate::currentDate().addDays(-7));
}

QList<controls::RecordsetGrid *> frmMain::layoutGrids() const
{
    return {saleListPane_->tdbSaleProductLists(), orderPane_->tdbCustSaleMaster(), detailPane_->tdbCustSaleDetails(),
            ledgerPane_->tdbCustTranManage()};
}

void frmMain::lockAllPanes()
{
    editModes_.lockAllPanes();
}

void frmMain::enterEditMode(const QString &code)
{
    editModes_.enterEditMode(code);
}

void frmMain::leaveEditMode(const QString &code)
{
    editModes_.leaveEditMode(code);
    // Quirk (docs/architecture.md): after any edit they stay locked until the window is opened anew.
    entryPane_->lockPrices();
}

void frmMain::paintEntryColors()
{
    editModes_.paintEntryColors();
    entryPane_->paintKind();
}

bool frmMain::event(QEvent *event)
{
    if (event->type() == QEvent::UpdateRequest) {
        controls::endLayouts();
        // The names of the lines may take a way to the server and back, which nothing else waits for.
        const ado::Meanwhile painted([&] { QMainWindow::event(event); });
        detailPane_->tdbCustSaleDetails()->fetchInSight();
        for (controls::RecordsetGrid *grid : layoutGrids())
            grid->paintLeftOut();
    }
    return controls::handOnActivity(*this, *event, statisticsPane_) || QMainWindow::event(event);
}

void frmMain::closeEvent(QCloseEvent *event)
{
    // A flow waits in a box or dialog of ours: it must end in the window in which it began, so closing waits for it.
    if (!closesNow_ && controls::eventRunsIn(*this) && QApplication::activeModalWidget()) {
        if (!std::exchange(closingWaits_, true))
            whenFree([self = QPointer<frmMain>(this)] {
                if (self)
                    self->closeNow();
            });
        event->ignore();
        return;
    }
    // When the program quits, dialogs close first and their flows still unwind: then the destructor unloads.
    if (closesNow_ || !controls::eventRunsIn(*this))
        controls::runEvent([this] { unload(); });
    // A later entry in the same event-loop turn must not meet the window that is going.
    defaultInstance.clear();
    QMainWindow::closeEvent(event);
}

bool frmMain::stepByStep(std::initializer_list<std::function<void()>> steps)
{
    const QPointer<frmMain> alive(this);
    for (const std::function<void()> &step : steps) {
        if (alive)
            step();
    }
    return !alive.isNull();
}

bool frmMain::isAtWork()
{
    return defaultInstance && controls::eventRunsIn(*defaultInstance);
}

void frmMain::whenFree(std::function<void()> work)
{
    controls::runWhenFree(&frmMain::isAtWork, std::move(work));
}

void frmMain::closeNow()
{
    closesNow_ = true;
    close();
}
