#include "components/central/clsZelvoCentral.h"

#include "components/central/List.h"
#include "components/central/LocalList.h"
#include "components/central/ProgressWindow.h"
#include "components/central/Steps.h"
#include "platform/ado/ShownAddress.h"
#include "platform/runtime/Log.h"
#include "platform/runtime/Operation.h"
#include "platform/runtime/RuntimeError.h"

#include <QLocale>

#include <memory>

namespace {

using runtime::ErrorNumber;
using runtime::RuntimeError;

/// Objects come and go with each call of the module; the clinic stays.
std::weak_ptr<ado::Connection> &used()
{
    static std::weak_ptr<ado::Connection> connection;
    return connection;
}

/// On MariaDB nothing counts a list's changes up with the commits, nor is a list brought into step.
void requireKind(const ado::Connection &connection)
{
    if (connection.engine() == ado::Engine::MariaDB)
        throw RuntimeError(ErrorNumber::Database,
                           QStringLiteral("MariaDB 데이터베이스는 체인의 물품 목록과 연동할 수 없습니다."));
}

ado::ConnectionPtr clinicInUse()
{
    if (ado::ConnectionPtr connection = used().lock()) {
        requireKind(*connection);
        return connection;
    }
    throw RuntimeError(
        ErrorNumber::ObjectClosed,
        QStringLiteral("중앙 물품 서버가 한의원의 데이터베이스를 알지 못합니다. 개발사로 문의하십시오."));
}

/// Where the clinic's settings say that the head office is.
QString addressFor(const ado::Connection &clinic)
{
    const ado::CellTable row =
        clinic.read(QStringLiteral("SELECT HS_Value FROM t_HospSetup WHERE HS_KEY = '물품판매중앙주소'"));
    const QString address = row.rowCount() == 0 ? QString() : row.raw(0, 0).toString();
    if (address.isEmpty())
        throw RuntimeError(ErrorNumber::Database,
                           QStringLiteral("본부의 주소가 없습니다. desk --central을 실행하십시오."));
    return address;
}

QString counted(qsizetype number)
{
    return QLocale(QLocale::Korean, QLocale::SouthKorea).toString(number);
}

} // namespace

void clsZelvoCentral::UseClinic(ado::ConnectionPtr &connection)
{
    used() = connection;
}

int clsZelvoCentral::CheckSync()
{
    const runtime::Operation operation("check central products");
    const ado::ConnectionPtr clinic = clinicInUse();
    central::ProgressWindow progress;
    const central::HeadOffice headOffice(addressFor(*clinic), [&] { progress.breathe(); });
    try {
        return central::isInStep(*clinic, headOffice) ? 1 : 0;
    } catch (const central::Unreachable &) {
        runtime::trapped();
        return -1;
    }
}

bool clsZelvoCentral::ResyncFromServer()
{
    const runtime::Operation operation("bring products into step");
    const ado::ConnectionPtr clinic = clinicInUse();
    central::ProgressWindow progress;
    try {
        const central::HeadOffice headOffice(addressFor(*clinic), [&] { progress.breathe(); });
        central::bringIntoStep(*clinic, headOffice, [&](qint64 done, qint64 total) { progress.show(done, total); });
        return true;
    } catch (const RuntimeError &) {
        runtime::trapped();
        return false;
    }
}

QString clsZelvoCentral::LinkClinic(ado::ConnectionPtr &connection, const QString &address)
{
    requireKind(*connection);
    if (central::isHeadOffice(*connection))
        throw RuntimeError(
            ErrorNumber::Database,
            QStringLiteral("본부의 데이터베이스입니다. 한의원의 데이터베이스를 --database로 지정하십시오."));
    if (address.startsWith(QLatin1String("odbc:"))) // whose waiting nobody can bound
        throw RuntimeError(ErrorNumber::Database,
                           QStringLiteral("본부의 주소를 postgresql:// 또는 sqlite: 주소로 입력하십시오."));
    const central::HeadOffice headOffice(address, {});
    headOffice.mark(); // nothing is left behind where it cannot be had
    const central::Brought brought = central::bringIntoStep(*connection, headOffice, {});
    return QStringLiteral("본부의 물품 목록과 연동했습니다: %1\n  새 물품 %2건, 바뀐 물품 %3건, 취급하지 않게 된 물품 "
                          "%4건, 이 한의원만의 물품 %5건")
        .arg(ado::addressToShow(address), counted(brought.added), counted(brought.changed), counted(brought.withdrawn),
             counted(central::ownProducts(*connection)));
}

QString clsZelvoCentral::MakeHeadOffice(ado::ConnectionPtr &connection)
{
    requireKind(*connection);
    if (central::isHeadOffice(*connection))
        return QStringLiteral("이미 체인의 물품 목록입니다. 바뀐 것은 없습니다.");
    central::makeHeadOffice(*connection);
    return QStringLiteral("이 데이터베이스의 물품 목록을 체인의 물품 목록으로 만들었습니다.");
}
