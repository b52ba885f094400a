#include "clinic/Examination.h"
#include "clinic/Tables.h"
#include "desk/backup/Backup.h"
#include "desk/backup/Verify.h"
#include "desk/chain/ChainOnTerminal.h"
#include "desk/check/CheckOnTerminal.h"
#include "desk/copy/CopyClinic.h"
#include "desk/exchange/Exchange.h"
#include "desk/files/Writable.h"
#include "desk/journal/Seal.h"
#include "desk/journal/Sealing.h"
#include "desk/preferences/Preferences.h"
#include "desk/sample/FirstUse.h"
#include "desk/sample/MakeOnTerminal.h"
#include "desk/schema/Schema.h"
#include "desk/schema/Version.h"
#include "desk/undo/OrderBack.h"
#include "desk/upgrade/UpgradeOnTerminal.h"
#include "desk/window/CommandLine.h"
#include "desk/window/DeskWindow.h"
#include "desk/window/FirstPaint.h"
#include "desk/window/Look.h"
#include "platform/ado/Meanwhile.h"
#include "platform/ado/ShownAddress.h"
#include "platform/controls/WaitingLine.h"
#include "platform/runtime/Log.h"
#include "platform/runtime/Operation.h"
#include "platform/runtime/RuntimeError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTextStream>
#include <QTimer>

#include <algorithm>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace {

constexpr int CannotStart = 2;

int complain(const QString &why)
{
    QTextStream(stderr) << QStringLiteral("desk: ") << why << Qt::endl;
    return CannotStart;
}

const QString FilePrefix = QStringLiteral("sqlite:");

[[noreturn]] void refuse(const QString &what)
{
    throw runtime::RuntimeError(runtime::ErrorNumber::Database, what);
}

QString addressOf(const desk::Options &options)
{
    return options.database.isEmpty() ? desk::defaultDatabase() : options.database;
}

/// A file that is looked at only stays as it is, to the last byte.
QString toLookAt(const QString &address)
{
    const QString mark = QStringLiteral("?mode=ro");
    return address.startsWith(FilePrefix) && !address.endsWith(mark) ? address + mark : address;
}

/// What was found out on the way to one, so that a server far away is asked once.
struct Found
{
    clinic::Catalogue catalogue;
    std::optional<schema::Mark> mark;
    desk::DeskWindow::Head head;             ///< of a clinic that is sold in
    std::optional<ado::Foresight> next = {}; ///< told by openDatabase(): the mark, and what is read behind it
};

/// Tells what is read behind the mark of the schema.
using Telling = std::function<void(ado::Foresight &, const ado::Connection &)>;

const QString isReadOnly = QStringLiteral("SHOW transaction_read_only");

ado::ConnectionPtr openDatabase(const QString &address, Found &found, const Telling &tellNext)
{
    ado::ConnectionPtr connection;
    try {
        connection = ado::Connection::open(address);
    } catch (const runtime::RuntimeError &error) {
        throw error.toldAs(error.number(), ado::addressToShow(address) + QStringLiteral("\n") + error.description());
    }
    found.next.emplace(connection);
    schema::foreseeMark(*found.next, *connection);
    tellNext(*found.next, *connection);
    found.catalogue = schema::foundTables(*connection);
    if (found.catalogue.tables.isEmpty() && found.catalogue.outOfReach.isEmpty())
        refuse(
            QStringLiteral("필요한 테이블이 없는 데이터베이스입니다: ") + ado::addressToShow(address)
            + QStringLiteral("\n주소를 확인하십시오. 새로 만들려면 새 데이터베이스의 주소와 --make empty 또는 --make "
                             "small을 입력하십시오."));
    found.mark = schema::demandNoNewer(*connection);
    return connection;
}

ado::ConnectionPtr openDatabase(const QString &address)
{
    Found found;
    return openDatabase(address, found, [](ado::Foresight &, const ado::Connection &) {});
}

/// A second server that only follows the first reads like any other and takes no sale.
void demandWriter(const ado::Connection &connection)
{
    if (connection.engine() == ado::Engine::PostgreSQL
        && connection.read(isReadOnly).raw(0, 0).toString() == QLatin1String("on"))
        refuse(QStringLiteral("읽기 전용 서버라 판매할 수 없습니다: ") + ado::addressToShow(connection.address())
               + QStringLiteral("\n쓰기가 되는 서버의 주소로 다시 시작하십시오. 서버가 여럿이면 모두 적고 "
                                "?target_session_attrs=read-write를 붙이십시오."));
}

/// One in which everything is there that is worked with; to sell, it has to take what is written, too.
ado::ConnectionPtr openClinic(const QString &address, clinic::Depth depth, Found &found)
{
    const Telling tellNext = [depth](ado::Foresight &next, const ado::Connection &connection) {
        if (depth == clinic::Depth::ToSell)
            desk::DeskWindow::foreseeHead(next.read(isReadOnly));
        clinic::foreseeExamination(next, connection);
    };
    const ado::ConnectionPtr connection = openDatabase(address, found, tellNext);
    if (depth == clinic::Depth::ToSell) {
        demandWriter(*connection);
        // Now, for the examination's last statement calls what might change how a literal behind it is read.
        found.head = desk::DeskWindow::readHead(connection);
    }
    const QStringList faults =
        clinic::textsOf(clinic::examine(*connection, depth, found.catalogue), clinic::Finding::Weight::Fault);
    found.next.reset();
    if (!faults.isEmpty())
        refuse(QStringLiteral("이 데이터베이스로는 판매할 수 없습니다: ") + ado::addressToShow(address) + u'\n'
               + faults.join(u'\n') + QStringLiteral("\n없는 테이블과 항목은 desk --upgrade로 더할 수 있습니다."));
    return connection;
}

ado::ConnectionPtr openClinic(const QString &address)
{
    Found found;
    return openClinic(address, clinic::Depth::Whole, found);
}

QWidget *openWindow()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto shown =
        std::find_if(windows.begin(), windows.end(), [](const QWidget *window) { return window->isVisible(); });
    return shown == windows.end() ? nullptr : *shown;
}

int sellTo(int key, bool manage, const ado::ConnectionPtr &connection, QApplication &application)
{
    const std::optional<desk::Patient> patient = desk::readPatient(connection, key);
    if (!patient)
        return complain(QStringLiteral("그 번호의 환자가 없습니다: %1").arg(key));
    desk::SaleComponent component(connection);
    // Neither a message box on the way nor the window itself ends the program by being the last one closed.
    QApplication::setQuitOnLastWindowClosed(false);
    if (manage)
        component.showProductSaleManage(*patient);
    else
        component.showProductSale(*patient);
    QWidget *sale = openWindow();
    if (!sale)
        return complain(QStringLiteral("판매 창이 열리지 않았습니다."));
    QObject::connect(sale, &QObject::destroyed, &application, &QCoreApplication::quit);
    return application.exec();
}

/// The clinic that a desk is to work on all day: what it could not write is told now and not at the first sale.
ado::ConnectionPtr openForWork(const desk::Options &options, Found &found)
{
    const QString address = addressOf(options);
    if (address.startsWith(FilePrefix)) {
        const QString file = address.mid(FilePrefix.size());
        if (options.database.isEmpty())
            sample::makeOnFirstUse(file);
        if (const QString trouble = files::troubleWithDatabase(file); !trouble.isEmpty())
            refuse(trouble);
    }
    return openClinic(address, clinic::Depth::ToSell, found);
}

/// Settings lie there, and what registers the component of a desk that is not installed. Returns what stands in the way of
/// the settings only.
QString registerSale()
{
    desk::SaleComponent::registerSale();
    const QString trouble =
        files::troubleWithFolder(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation));
    if (!trouble.isEmpty() && automation::classRegister::libraryOf(desk::SaleComponent::ProgramId).isEmpty())
        refuse(trouble);
    return trouble;
}

/// What the first window need not wait for: its own lists, then the libraries of the statistics. A failure of the lists ends
/// the program, as one before the window does.
class AfterFirstPaint
{
public:
    AfterFirstPaint(const desk::Options &options, std::function<void()> fillWindow)
    {
        QObject::connect(&paint_, &desk::FirstPaint::happened, &paint_,
                         [this, untilShown = options.untilShown, fill = std::move(fillWindow)] {
                             // Whoever times the start reads the lines; the program's end is no part of it.
                             if (untilShown)
                                 QTextStream(stdout) << QStringLiteral("창이 그려졌습니다.") << Qt::endl;
                             try {
                                 fill();
                             } catch (...) {
                                 failure_ = std::current_exception();
                                 return QCoreApplication::quit();
                             }
                             // Behind the painting of what was filled in.
                             QTimer::singleShot(0, &paint_, [untilShown] {
                                 untilShown ? tellAndQuit() : desk::SaleComponent::registerReports();
                             });
                         });
    }

    void rethrow() const
    {
        if (failure_)
            std::rethrow_exception(failure_);
    }

private:
    static void tellAndQuit()
    {
        QTextStream(stdout) << QStringLiteral("목록이 그려졌습니다.") << Qt::endl;
        QCoreApplication::quit();
        // Painted while the window still waits for its server, the first call comes before the program's own loop, and is lost.
        auto *const again = new QTimer(QCoreApplication::instance());
        QObject::connect(again, &QTimer::timeout, QCoreApplication::instance(), &QCoreApplication::quit);
        again->start(100);
    }

    desk::FirstPaint paint_;
    std::exception_ptr failure_;
};

/// The program's look and its window come about while a server far away is dialled, and then asked.
ado::ConnectionPtr openDressing(const desk::Options &options, QApplication &application, Found &found,
                                std::unique_ptr<desk::DeskWindow> &window)
{
    bool isDressed = false;
    const auto dress = [&application, &isDressed] {
        if (!isDressed)
            desk::dressUp(application);
        isDressed = true;
    };
    const auto make = [&] {
        dress();
        if (!options.patient && !window)
            window = std::make_unique<desk::DeskWindow>();
    };
    const ado::Meanwhile dressing(dress);
    const ado::Meanwhile making(make);
    ado::ConnectionPtr connection = openForWork(options, found);
    make();
    return connection;
}

int start(const desk::Options &options, QApplication &application)
{
    controls::showWaitingLine();
    QStringList notices{registerSale()};
    Found found;
    std::unique_ptr<desk::DeskWindow> window;
    const ado::ConnectionPtr connection = openDressing(options, application, found, window);
    journal::attend(*connection);
    const journal::Sealing sealing(connection);
    notices << schema::upgradeNotice(found.mark);
    notices.removeAll(QString());
    for (const QString &notice : std::as_const(notices))
        QTextStream(stderr) << QStringLiteral("desk: ") << notice << Qt::endl;
    if (options.patient) {
        const AfterFirstPaint painted(options, [] {});
        return sellTo(*options.patient, options.manage, connection, application);
    }
    window->open(connection, found.head, desk::DeskWindow::Patients::WhenAsked);
    const AfterFirstPaint painted(options, [&window] { window->refresh(); });
    window->setNotice(notices.join(u'\n'));
    window->show();
    const int status = application.exec();
    window.reset(); // before what it works on
    painted.rethrow();
    return status;
}

int make(const desk::Options &options)
{
    if (options.database.isEmpty())
        QDir().mkpath(QFileInfo(desk::defaultDatabase().section(QLatin1Char(':'), 1)).path());
    return sample::makeOnTerminal(addressOf(options), *options.make);
}

/// The walk has a program of its own: it turns the keys and the mouse, which no desk carries.
int walkBesideProgram(const QString &folder)
{
    const QString program = QCoreApplication::applicationDirPath() + QStringLiteral("/desk-walk");
    if (!QFile::exists(program))
        return complain(QStringLiteral("--walk는 소스에서 빌드한 데스크에서만 쓸 수 있습니다."));
    const int status = QProcess::execute(program, {folder});
    return status >= 0 ? status : complain(QStringLiteral("프로그램을 실행하지 못했습니다: ") + program);
}

void keepLog(const desk::Options &options)
{
    runtime::keepLog({QCoreApplication::applicationName(), QCoreApplication::applicationVersion(),
                      ado::addressToShow(addressOf(options))});
}

QString versionText()
{
    return QStringLiteral("desk %1\n").arg(QCoreApplication::applicationVersion());
}

/// What works on a database and opens no window.
int tend(const desk::Options &options)
{
    if (options.set)
        return preferences::setOnTerminal(*options.set, addressOf(options));
    if (!options.central.isEmpty())
        return chain::linkOnTerminal(openClinic(addressOf(options)), options.central);
    if (options.headOffice)
        return chain::makeHeadOfficeOnTerminal(openClinic(addressOf(options)));
    if (options.make)
        return make(options);
    if (options.upgrade)
        return upgrade::upgradeOnTerminal(
            *openDatabase(addressOf(options)),
            {options.backupFile, options.dryRun, options.lockDown ? schema::Doors::Locked : schema::Doors::AsTheyAre});
    if (!options.verifyFile.isEmpty())
        return backup::verifyOnTerminal(options.database, options.verifyFile);
    if (!options.backupFile.isEmpty())
        return backup::backUpOnTerminal(addressOf(options), options.backupFile);
    if (options.order)
        return undo::orderOnTerminal(*openClinic(addressOf(options)), options.restoreFile, *options.order);
    if (!options.restoreFile.isEmpty())
        return backup::restoreOnTerminal(addressOf(options), options.restoreFile,
                                         options.all ? backup::Scope::All : backup::Scope::Sales);
    if (!options.copyTo.isEmpty())
        return copy::copyOnTerminal(*openClinic(addressOf(options)), options.copyTo);
    if (!options.importFile.isEmpty())
        return exchange::importOnTerminal(*openClinic(addressOf(options)), options.importFile, options.dryRun);
    if (!options.exportFile.isEmpty())
        return exchange::exportOnTerminal(*openClinic(addressOf(options)), options.exportFile);
    return check::checkOnTerminal(*openDatabase(toLookAt(addressOf(options))));
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication::setApplicationName(QStringLiteral("zelvo-desk"));
    QCoreApplication::setApplicationVersion(QStringLiteral(ZELVO_VERSION));
    clinic::registerTables();
    try {
        QStringList arguments;
        for (int index = 1; index < argc; ++index)
            arguments << QString::fromLocal8Bit(argv[index]);
        const desk::Options options = desk::readCommandLine(arguments);
        if (options.help || options.version) {
            QTextStream(stdout) << (options.help ? desk::usageText() : versionText());
            return 0;
        }
        if (!desk::taskOf(options).isEmpty()) {
            QCoreApplication application(argc, argv);
            keepLog(options);
            return tend(options);
        }
        if (!options.walkFolder.isEmpty()) {
            QCoreApplication application(argc, argv);
            return walkBesideProgram(options.walkFolder);
        }
        QApplication application(argc, argv);
        keepLog(options);
        return start(options, application);
    } catch (const desk::WrongUse &error) {
        return complain(QString::fromUtf8(error.what()) + QStringLiteral("\n\n") + desk::usageText());
    } catch (const runtime::RuntimeError &error) {
        runtime::trapped();
        return complain(error.description());
    } catch (const std::exception &error) {
        runtime::trapped();
        return complain(
            QStringLiteral("프로그램 오류입니다. 개발사로 문의하십시오. (%1)").arg(QString::fromUtf8(error.what())));
    }
}
