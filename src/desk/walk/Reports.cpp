#include "desk/walk/Reports.h"

#include "desk/walk/Receipts.h"
#include "platform/automation/Automation.h"

#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QVariant>

#include <utility>

namespace walk {

namespace {

constexpr int patience = 20'000; // ms

/// What lies in it on the walk's evening.
constexpr std::pair<const char *, const char *> drawer[] = {
    {"txtOpening", "100000"}, {"txtPieces_0", "1"}, {"txtPieces_1", "6"}, {"txtPieces_2", "2"}, {"txtPieces_3", "5"}};

/// The window that a component has put into the right pane: it tells whether it is still reading.
QWidget *reportOnShow(QWidget *sale)
{
    const QList<QWidget *> all = sale->findChildren<QWidget *>();
    for (QWidget *widget : all) {
        if (widget->property("reading").isValid() && widget->isVisible())
            return widget;
    }
    throw Astray(QStringLiteral("no report shows"));
}

void waitUntilRead(QWidget *report)
{
    QElapsedTimer waited;
    waited.start();
    while (report->property("reading").toBool()) {
        if (waited.elapsed() > patience)
            throw Astray(QStringLiteral("a report does not come to its end"));
        settle();
    }
}

void lookAt(Actor &actor, QWidget *sale, const QString &caption, int number)
{
    QWidget *report = reportOnShow(sale);
    waitUntilRead(report);
    if (auto *wholeYear = report->findChild<QAbstractButton *>(QStringLiteral("cmdThisYear"))) {
        actor.click(wholeYear);
        waitUntilRead(report);
    }
    for (const auto &[field, typed] : drawer) {
        if (auto *box = report->findChild<QLineEdit *>(QLatin1String(field)); box && box->isVisible())
            actor.typeInto(box, QLatin1String(typed));
    }
    actor.say(QStringLiteral("%1: %2").arg(caption, actor.control<QLabel>(report, QStringLiteral("lblState"))->text()));
    const QString name = QStringLiteral("report-%1").arg(number);
    actor.picture(name, sale);
    savePreview(actor, report, QStringLiteral("cmdPrint"), name);
}

} // namespace

void needReports()
{
    for (const char *programId :
         {"VantoSalesPeriod.clsVantoSalesPeriod", "VantoSalesItem.clsVantoSalesItem",
          "VantoPayPeriod.clsVantoPayPeriod", "VantoOneDay.clsVantoOneDay", "VantoStock.clsVantoStock"})
        automation::createObject(QLatin1String(programId));
}

void lookAtReports(Actor &actor, QWidget *sale)
{
    auto *tree = actor.control<QTreeWidget>(sale, QStringLiteral("treeStatItem"));
    int number = 0;
    for (QTreeWidgetItemIterator node(tree); *node; ++node) {
        if ((*node)->childCount() > 0)
            continue;
        actor.clickItem(tree, tree->indexFromItem(*node));
        lookAt(actor, sale, (*node)->text(0), ++number);
    }
}

} // namespace walk
