#include "desk/upgrade/UpgradeOnTerminal.h"

#include "clinic/Examination.h"
#include "desk/backup/Backup.h"
#include "desk/journal/Seal.h"
#include "desk/schema/Schema.h"
#include "desk/schema/Version.h"
#include "desk/terminal/ProgressLine.h"
#include "platform/ado/ShownAddress.h"
#include "platform/runtime/RuntimeError.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTextStream>

#include <algorithm>

namespace upgrade {

namespace {

/// Beside a clinic's file; of a server's clinic in the user's own folder.
QString placeOfBackup(const QString &address)
{
    const QString prefix = QStringLiteral("sqlite:");
    const QString moment = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss-zzz"));
    QDir folder(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    QString name = QStringLiteral("clinic");
    if (address.startsWith(prefix)) {
        const QFileInfo clinic(address.mid(prefix.size()));
        folder = clinic.dir();
        name = clinic.completeBaseName();
    }
    folder.mkpath(QStringLiteral("."));
    return folder.filePath(QStringLiteral("%1-before-upgrade-%2.backup").arg(name, moment));
}

void tellStatements(QTextStream &terminal, const std::vector<schema::UpgradeStep> &steps)
{
    for (const schema::UpgradeStep &step : steps) {
        terminal << QStringLiteral("-- ") << step.what << Qt::endl;
        for (const QString &statement : step.statements)
            terminal << statement.trimmed() << QStringLiteral(";") << Qt::endl;
    }
}

/// A backup holds whole tables that every value of a sale fits; where another program's are otherwise, there is none yet.
bool isBackedUpWhole(ado::Connection &connection)
{
    using Kind = clinic::Finding::Kind;
    const auto hinders = [](const clinic::Finding &finding) {
        return finding.kind == Kind::NoTable || finding.kind == Kind::NoColumn
               || (finding.kind == Kind::Other && finding.weight == clinic::Finding::Weight::Fault);
    };
    const clinic::Catalogue catalogue = schema::foundTables(connection);
    return std::ranges::none_of(clinic::examine(connection, clinic::Depth::Whole), hinders)
           && std::ranges::none_of(catalogue.tables, &clinic::FoundTable::isView);
}

/// Rows that other programs left without a place in the journal's chain get theirs by who may give it.
void sealWaiting(ado::Connection &connection)
{
    if (schema::hasJournal(connection))
        journal::sealOpen(connection);
}

int carryOut(ado::Connection &connection, const QString &file, schema::Doors doors, QTextStream &terminal)
{
    terminal::ProgressLine line(QStringLiteral("업그레이드"));
    std::vector<schema::UpgradeStep> steps;
    try {
        if (connection.engine() == ado::Engine::MariaDB) {
            terminal << QStringLiteral("ODBC 주소라 먼저 백업하지 않았습니다. 없는 것만 더합니다.") << Qt::endl;
        } else if (isBackedUpWhole(connection)) {
            backup::backUp(connection.address(), file, [&](qint64, qint64) { return !line.stopAsked(); });
            terminal << QStringLiteral("업그레이드 전의 백업: ") << file << Qt::endl;
        } else {
            terminal << QStringLiteral(
                "다른 프로그램이 만든 테이블이어서 먼저 백업하지 않았습니다. 없는 것만 더합니다.")
                     << Qt::endl;
        }
        steps = schema::upgrade(
            connection, [&](qint64 done, qint64 total) { return line.show(done, total); }, doors);
        sealWaiting(connection);
    } catch (const runtime::RuntimeError &) {
        line.leave();
        if (!line.stopAsked())
            throw;
        QTextStream(stderr) << (connection.engine() == ado::Engine::MariaDB
                                    ? QStringLiteral(
                                        "중단했습니다. 그때까지 더한 것은 남습니다. 다시 실행하면 이어서 더합니다.")
                                    : QStringLiteral("중단했습니다. 데이터베이스는 바뀌지 않았습니다."))
                            << Qt::endl;
        return 1;
    }
    for (const schema::UpgradeStep &step : steps)
        terminal << QStringLiteral("  ") << step.what << Qt::endl;
    line.finish(QStringLiteral("업그레이드했습니다"), ado::addressToShow(connection.address()));
    return 0;
}

} // namespace

int upgradeOnTerminal(ado::Connection &connection, const Wish &wish)
{
    QTextStream terminal(stdout);
    if (connection.engine() == ado::Engine::Odbc)
        throw runtime::RuntimeError(runtime::ErrorNumber::Database,
                                    QStringLiteral("ODBC 주소로는 업그레이드할 수 없습니다. PostgreSQL 서버라면 "
                                                   "postgresql:// 주소를 입력하십시오."));
    const std::vector<schema::UpgradeStep> due = schema::upgradeSteps(connection, wish.doors);
    if (due.empty()) {
        if (!wish.dryRun)
            sealWaiting(connection);
        terminal << QStringLiteral("이미 이 데스크의 판(%1)입니다. 바뀐 것은 없습니다: ").arg(schema::CurrentVersion)
                 << ado::addressToShow(connection.address()) << Qt::endl;
        return 0;
    }
    if (wish.dryRun) {
        tellStatements(terminal, due);
        return 0;
    }
    const QString file = wish.backupFile.isEmpty() ? placeOfBackup(connection.address()) : wish.backupFile;
    return carryOut(connection, file, wish.doors, terminal);
}

} // namespace upgrade
