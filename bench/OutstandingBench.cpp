#include "bench/OutstandingBench.h"

#include "bench/BareStatement.h"
#include "bench/SaleWindow.h"
#include "bench/Work.h"
#include "money/OutstandingMoney.h"
#include "money/frmMisuMoneyManager.h"

#include <QElapsedTimer>
#include <QEvent>

namespace bench {

namespace {

/// Opens the list, watches it come up and closes it.
class Opening : public QObject
{
public:
    explicit Opening(const ado::ConnectionPtr &connection)
    {
        form_.findChild<QTableView *>(QStringLiteral("dgReceiptView"))->viewport()->installEventFilter(this);
        clock_.start();
        form_.MisuMoneyManager(connection, nullptr, outstanding::AllCustomers, 0, 0);
    }

    double secondsToPainted = 0; ///< from the call to the first screen
    double secondsToSums = 0;    ///< and to the sums below it, painted
    bool wholeAtOnce = true;     ///< no part of a sum was ever seen

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint && secondsToPainted == 0) {
            watched->removeEventFilter(this);
            QMetaObject::invokeMethod(
                this, [this] { painted(); }, Qt::QueuedConnection);
        }
        return false;
    }

private:
    double now() const { return double(clock_.nsecsElapsed()) / 1e9; }
    QString sums() const
    {
        return form_.findChild<QLineEdit *>(QStringLiteral("txtCount"))->text() + u'/'
               + form_.findChild<QLineEdit *>(QStringLiteral("txtTotal"))->text();
    }
    void painted()
    {
        secondsToPainted = now();
        QMetaObject::invokeMethod( // behind what the painting has set off
            this, [this, first = sums()] { summed(first); }, Qt::QueuedConnection);
    }
    void summed(const QString &first)
    {
        const QString none = QStringLiteral("/");
        untilPainted();
        secondsToSums = now();
        wholeAtOnce = sums() != none && (first == none || first == sums());
        form_.reject();
    }

    frmMisuMoneyManager form_;
    QElapsedTimer clock_;
};

void openings(benchmark::State &state, const ado::ConnectionPtr &connection, double Opening::*seconds)
{
    // Its patients owe more than the sum below the list can hold.
    runBare(bareHandle(*connection), "UPDATE tPSOrderMaster SET OrdM_Misugum = 1000 WHERE OrdM_Misugum > 1000");
    for (auto _ : state) {
        const Opening opening(connection);
        if (!opening.wholeAtOnce || opening.secondsToSums == 0)
            state.SkipWithError("the list did not come up as it must");
        state.SetIterationTime(opening.*seconds);
    }
}

} // namespace

void registerOutstanding(const OrderedClinic &clinic, Table &table)
{
    const struct
    {
        const char *name;
        std::string what;
        double Opening::*seconds;
        double limit;
    } rows[] = {{"outstanding/painted",
                 "everybody's outstanding money, " + grouped(clinic.orders) + " orders, until its window is painted",
                 &Opening::secondsToPainted, 50},
                {"outstanding/sums", "the same, until the sums are", &Opening::secondsToSums, 0}};
    for (const auto &row : rows) {
        const std::string name = row.name + std::string("/") + std::to_string(clinic.orders);
        benchmark::RegisterBenchmark(
            name.c_str(),
            [=, connection = clinic.connection](benchmark::State &state) { openings(state, connection, row.seconds); })
            ->Iterations(5)
            ->UseManualTime();
        table.add({row.what, name, {}, row.limit});
    }
}

} // namespace bench
