#include "bench/reports/ReportTimes.h"
#include "clinic/Tables.h"
#include "components/VantoChain/ChainReport.h"
#include "components/central/clsZelvoCentral.h"
#include "components/frame/PeriodBar.h"
#include "components/frame/ReportWindow.h"
#include "desk/preferences/Preferences.h"
#include "desk/window/Look.h"
#include "platform/runtime/RuntimeError.h"
#include "tests/support/SilentServer.h"

#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>

namespace {

using namespace statistics;
using namespace bench;

constexpr int repetitions = 5;
const Period month{QDate(2026, 6, 1), QDate(2026, 6, 30)};

void tell(const char *what, const ReportTimes &times)
{
    std::printf("| %s | %lld ms | %lld ms |\n", what, static_cast<long long>(times.whole),
                static_cast<long long>(times.longest));
    std::fflush(stdout);
}

void measureReport(const QString &address)
{
    ReportWindow window(std::make_unique<ChainReport>(), ado::Connection::open(address));
    window.resize(1320, 760);
    window.show();
    tell("the window, first time", untilRead(window));
    auto &bar = *window.findChild<PeriodBar *>();
    ReportTimes all;
    for (int time = 0; time < repetitions; ++time) {
        bar.choose(month);
        all = worst(all, untilRead(window));
    }
    tell("a month, the worst of 5", all);
    auto &views = *window.findChild<QComboBox *>(QStringLiteral("cboView"));
    views.setCurrentIndex(views.count() - 1);
    tell("the stock of all", untilRead(window));
}

/// What the page shows.
void takePicture(const QString &address, const QString &file)
{
    ReportWindow window(std::make_unique<ChainReport>(), ado::Connection::open(address));
    window.resize(1320, 760);
    window.show();
    untilRead(window);
    window.findChild<PeriodBar *>()->choose(month);
    untilRead(window);
    if (!window.grab().save(file))
        std::fprintf(stderr, "no picture: %s\n", qUtf8Printable(file));
}

/// A clinic's steps behind its head office; `change` is made there before each.
void measureList(const QString &officeAddress, const QString &clinicAddress)
{
    ado::ConnectionPtr clinic = ado::Connection::open(clinicAddress);
    const ado::ConnectionPtr office = ado::Connection::open(officeAddress);
    preferences::setValue(preferences::headOffice, officeAddress, clinic);
    clsZelvoCentral server;
    server.UseClinic(clinic);
    const struct
    {
        const char *what;
        const char *change;
    } steps[] = {{"20,000 new products", ""},
                 {"20,000 other prices", "UPDATE tPSProductMaster SET PM_UnitPrice = PM_UnitPrice + 1"},
                 {"one other price", "UPDATE tPSProductMaster SET PM_UnitPrice = PM_UnitPrice + 1 WHERE PM_PK = 77"}};
    for (const auto &step : steps) {
        if (*step.change)
            office->Execute(QString::fromLatin1(step.change));
        QElapsedTimer taken;
        taken.start();
        const bool done = server.CheckSync() == 0 && server.ResyncFromServer();
        std::printf("| %s | %s | %s%lld ms |\n", step.what, qUtf8Printable(clinicAddress.section(u':', 0, 0)),
                    done ? "" : "**failed** ", static_cast<long long>(taken.elapsed()));
    }
    std::vector<qint64> all;
    for (int time = 0; time < 21; ++time) {
        QElapsedTimer taken;
        taken.start();
        const bool inStep = server.CheckSync() == 1;
        all.push_back(inStep ? taken.elapsed() : 1'000'000);
    }
    std::ranges::sort(all);
    std::printf("| nothing to do, median and worst of 21 | %s | %lld ms, %lld ms |\n",
                qUtf8Printable(clinicAddress.section(u':', 0, 0)), static_cast<long long>(all[10]),
                static_cast<long long>(all.back()));
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    desk::dressUp(application);
    clinic::registerTables();
    const QStringList arguments = QApplication::arguments();
    try {
        if (arguments.value(1) == QLatin1String("silent")) {
            const SilentServer server;
            std::printf("%d\n", server.port());
            std::fflush(stdout);
            return QApplication::exec();
        }
        if (arguments.value(1) == QLatin1String("report"))
            measureReport(arguments.value(2));
        else if (arguments.value(1) == QLatin1String("picture"))
            takePicture(arguments.value(2), arguments.value(3));
        else
            measureList(arguments.value(2), arguments.value(3));
    } catch (const runtime::RuntimeError &error) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(error.description()));
        return 1;
    }
    return 0;
}
