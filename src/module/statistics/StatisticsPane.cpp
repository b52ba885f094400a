#include "statistics/StatisticsPane.h"

#include "platform/automation/Automation.h"
#include "platform/controls/Appearance.h"
#include "platform/controls/EventEdge.h"
#include "platform/controls/MessageBox.h"
#include "platform/controls/Named.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Log.h"
#include "platform/runtime/RuntimeError.h"
#include "session/modGlobalVars.h"
#include "statistics/ReportRegister.h"
#include "statistics/WindowHandles.h"

#include <QHash>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QTimer>
#include <QVBoxLayout>
#include <QWindow>

namespace {

struct ReportNode
{
    const char16_t *caption;
    const char *key;
    const char *parent; ///< key of the group, null at the root
    const char *tag;    ///< program identifier of the report's component, empty for a group
};

constexpr ReportNode reportNodes[] = {
    {u"매출 관련 통계", "TMnuProdSaleRelatedStat", nullptr, ""},
    {u"기간별 매출 통계", "TSMnuDailySaleStat", "TMnuProdSaleRelatedStat", "VantoSalesPeriod.clsVantoSalesPeriod"},
    {u"물품별 매출 통계", "TSMnuSaleByProd", "TMnuProdSaleRelatedStat", "VantoSalesItem.clsVantoSalesItem"},
    {u"수납 관련 통계", "TMnuProdTranRelatedStat", nullptr, ""},
    {u"기간별 수납 통계", "TSMnuProdTranStat", "TMnuProdTranRelatedStat", "VantoPayPeriod.clsVantoPayPeriod"},
    {u"통합 통계", "TMnuPSaleTranRelStat", nullptr, ""},
    {u"일일 통계", "TSMnuProdDaySale", "TMnuPSaleTranRelStat", "VantoOneDay.clsVantoOneDay"},
    {u"재고 통계", "TMnuPStockStat", "TMnuPSaleTranRelStat", "VantoStock.clsVantoStock"},
};

const QString firstReport = QStringLiteral("TSMnuDailySaleStat");

enum NodeRole { KeyRole = Qt::UserRole, TagRole };

QStringList toldReports()
{
    QStringList told;
    for (const ReportNode &row : reportNodes) {
        if (*row.tag)
            told << QLatin1String(row.tag);
    }
    return told;
}

} // namespace

StatisticsPane::StatisticsPane(QWidget *parent)
    : QWidget(parent)
    , splitStatMain_(controls::named(new QSplitter(Qt::Horizontal), QStringLiteral("splitStatMain")))
    , treeStatItem_(controls::named(new QTreeWidget, QStringLiteral("treeStatItem")))
    , remarks_(controls::named(new QLabel, QStringLiteral("lblReportRemarks")))
    , reportPane_(new QWidget)
{
    treeStatItem_->setHeaderHidden(true);
    controls::dressList(treeStatItem_);
    treeStatItem_->setAccessibleName(QStringLiteral("통계 목록"));
    auto *reportLayout = new QVBoxLayout(reportPane_);
    reportLayout->setContentsMargins(0, 0, 0, 0);
    splitStatMain_->setChildrenCollapsible(false);
    splitStatMain_->addWidget(makeLeftPane());
    splitStatMain_->addWidget(reportPane_);
    splitStatMain_->setStretchFactor(1, 1);
    splitStatMain_->setSizes({150, 870});
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(splitStatMain_);

    // Enter starts a report as a click does. The tree's own activation is not used: some desktops raise it with every
    // click, and a failed start would be told twice.
    controls::onEvent(treeStatItem_, &QTreeWidget::itemClicked, this,
                      [this](QTreeWidgetItem *node, int) { nodeClicked(node); });
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto *enter = new QShortcut(key, treeStatItem_);
        enter->setContext(Qt::WidgetShortcut);
        controls::onEvent(enter, &QShortcut::activated, this, [this] {
            if (treeStatItem_->currentItem())
                nodeClicked(treeStatItem_->currentItem());
        });
    }
}

QWidget *StatisticsPane::makeLeftPane()
{
    remarks_->setWordWrap(true);
    remarks_->setTextFormat(Qt::PlainText);
    remarks_->hide();
    auto *left = new QWidget;
    auto *column = new QVBoxLayout(left);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(treeStatItem_, 1);
    column->addWidget(remarks_);
    return left;
}

void StatisticsPane::buildStatisticsTree()
{
    const QSignalBlocker blocker(treeStatItem_);
    treeStatItem_->clear();
    QHash<QString, QTreeWidgetItem *> nodes;
    for (const ReportNode &row : reportNodes) {
        auto *node = row.parent ? new QTreeWidgetItem(nodes.value(QLatin1String(row.parent)))
                                : new QTreeWidgetItem(treeStatItem_);
        node->setText(0, QString::fromUtf16(row.caption));
        node->setData(0, KeyRole, QLatin1String(row.key));
        node->setData(0, TagRole, QLatin1String(row.tag));
        nodes.insert(QLatin1String(row.key), node);
    }
    for (const char *group : {"TMnuProdSaleRelatedStat", "TMnuProdTranRelatedStat", "TMnuPSaleTranRelStat"})
        nodes.value(QLatin1String(group))->setExpanded(true);
    addOwnReports();
    treeStatItem_->setCurrentItem(nodes.value(firstReport));
}

/// The clinic's own, behind the told ones; a group that is not among those follows them.
void StatisticsPane::addOwnReports()
{
    const ReportRegister own = ReportRegister::read(ReportRegister::files(), toldReports());
    for (const ReportRegister::Report &report : own.reports) {
        const QList<QTreeWidgetItem *> groups = treeStatItem_->findItems(report.group, Qt::MatchExactly);
        QTreeWidgetItem *group = groups.value(0);
        if (!group) {
            group = new QTreeWidgetItem(treeStatItem_, {report.group});
            group->setExpanded(true);
        }
        auto *node = new QTreeWidgetItem(group, {report.caption});
        node->setData(0, TagRole, report.programId);
    }
    showRemarks(own.remarks);
}

void StatisticsPane::showRemarks(const QStringList &remarks)
{
    const QString all = remarks.join(QLatin1Char('\n'));
    if (all != remarks_->toolTip() && !all.isEmpty())
        qCWarning(runtime::programLog).noquote() << "report register:" << remarks.join(QStringLiteral("; "));
    remarks_->setText(QStringLiteral("확인할 통계 등록: %1건").arg(remarks.size()));
    remarks_->setToolTip(all);
    remarks_->setAccessibleDescription(all);
    remarks_->setVisible(!remarks.isEmpty());
}

void StatisticsPane::showStatisticsTab()
{
    buildStatisticsTree();
    nodeClicked(treeStatItem_->currentItem());
}

void StatisticsPane::connectionChanged()
{
    destroyReportWindow();
    lngStatWindow_ = 0;
    strCurrentStatTag_.clear();
    // The caller is about to change the connection, and perhaps the tab.
    QTimer::singleShot(0, this, [this] {
        controls::runEvent([this] {
            if (isVisible() && strCurrentStatTag_.isEmpty() && treeStatItem_->currentItem())
                nodeClicked(treeStatItem_->currentItem());
        });
    });
}

void StatisticsPane::nodeClicked(QTreeWidgetItem *node)
{
    const QString tag = node->data(0, TagRole).toString();
    if (tag.isEmpty() || tag == strCurrentStatTag_)
        return; // a group, or the report on show
    if (starting_)
        return; // a component that runs events while it starts must not be started over itself
    bool started = false;
    try {
        const QScopedValueRollback starting(starting_, true);
        if (lngStatWindow_ != 0)
            destroyReportWindow();
        startReport(tag);
        started = true;
    } catch (...) { // a component of another maker may throw anything
        runtime::trapped();
    }
    if (!started) {
        // The handle stays, though its window is gone: it is simply not found the next time.
        controls::MsgBox(QStringLiteral("통계 패키지 구성요소가 제대로 설치되어 있지 않습니다.") + QLatin1Char('\r')
                             + QStringLiteral("다시 시도해 보시고 오류가 지속되면 개발사로 문의하십시오."),
                         controls::InformationIcon, QStringLiteral("통계 실행 오류"));
        return;
    }
    repaint();
    strCurrentStatTag_ = tag;
}

void StatisticsPane::destroyReportWindow()
{
    // The component may have destroyed it by itself; its number may by now be another window's.
    delete reportWindow_;
}

void StatisticsPane::startReport(const QString &programId)
{
    const automation::ObjectPtr report = automation::createObject(programId);
    QVariantList arguments{QVariant::fromValue(gcnnMasterDB)};
    const QVariant handle = automation::call(*report, QStringLiteral("StatStart"), arguments);
    gcnnMasterDB = arguments.first().value<ado::ConnectionPtr>(); // the call may have replaced it
    lngStatWindow_ = runtime::CLng(handle);
    hostWindow(lngStatWindow_);
}

void StatisticsPane::hostWindow(qint32 handle)
{
    QWidget *shown = QWidget::find(WId(handle));
    if (shown && shown->window() == window())
        shown = nullptr; // a window of our own cannot be shown inside itself
    else if (!shown && namesAWindow(WId(handle))) {
        if (QWindow *foreign = QWindow::fromWinId(WId(handle)))
            shown = QWidget::createWindowContainer(foreign, reportPane_);
    }
    if (!shown)
        throw runtime::RuntimeError(runtime::ErrorNumber::InvalidCall, QStringLiteral("통계 창을 표시할 수 없습니다."));
    reportWindow_ = shown;
    reportPane_->layout()->addWidget(shown);
    shown->show();
}
