#include "desk/preferences/Preferences.h"

#include "desk/schema/Statements.h"
#include "platform/ado/ShownAddress.h"
#include "platform/registry/AppSettings.h"
#include "platform/runtime/Log.h"
#include "platform/runtime/ProgramFolder.h"
#include "platform/runtime/RuntimeError.h"

#include <QCoreApplication>
#include <QTextStream>

namespace preferences {

namespace {

QString shown(const Preference &preference, const QString &value)
{
    return preference.isAddress && !value.isEmpty() ? ado::addressToShow(value) : value;
}

QString line(const Preference &preference, const QString &value)
{
    return QStringLiteral("  %1=%2\n      %3\n")
        .arg(QString::fromUtf16(preference.key), shown(preference, value), QString::fromUtf16(preference.what));
}

/// The desk's own can be told also where its clinic cannot be reached.
QString listOf(const QString &address)
{
    QString own = QStringLiteral("이 데스크: %1\n").arg(registry::storeFile(QStringLiteral("Zelvo Desk")));
    QString clinics = QStringLiteral("모든 데스크: %1\n").arg(ado::addressToShow(address));
    try {
        ado::ConnectionPtr clinic;
        for (const Preference &preference : all()) {
            if (preference.isOfClinic() && !clinic)
                clinic = ado::Connection::open(address);
            (preference.isOfClinic() ? clinics : own) += line(preference, value(preference, clinic));
        }
    } catch (const runtime::RuntimeError &error) {
        runtime::trapped();
        clinics += QStringLiteral("  가져오지 못했습니다. %1\n").arg(error.description());
    }
    return own + clinics
           + QStringLiteral("열 배치 파일: %1Grid.*.tdb\n오류 기록: %2\n")
                 .arg(runtime::programFolder(), runtime::logFolder(QCoreApplication::applicationName()));
}

} // namespace

int setOnTerminal(const QString &assignment, const QString &address)
{
    QTextStream out(stdout);
    if (assignment.isEmpty()) {
        out << listOf(address);
        return 0;
    }
    const QString name = assignment.section(u'=', 0, 0).trimmed();
    const Preference *preference = find(name);
    if (!assignment.contains(u'=') || !preference)
        schema::refuse(
            QStringLiteral("--set 다음에는 이름=값을 입력하십시오. desk --set으로 모든 설정을 볼 수 있습니다: ")
            + name);
    const QString typed = assignment.section(u'=', 1);
    const QString value = typed.isEmpty() ? QString::fromUtf16(preference->fallback) : typed;
    setValue(*preference, value, preference->isOfClinic() ? ado::Connection::open(address) : nullptr);
    out << QStringLiteral("저장했습니다: %1=%2\n").arg(QString::fromUtf16(preference->key), shown(*preference, value));
    return 0;
}

} // namespace preferences
