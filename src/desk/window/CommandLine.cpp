#include "desk/window/CommandLine.h"

#include "platform/ado/ShownAddress.h"
#include "platform/runtime/Log.h"

#include <QCoreApplication>
#include <QDir>
#include <QRegularExpression>
#include <QStandardPaths>

namespace desk {

namespace {

/// A word of the command line as a complaint shows it: one that stands at a wrong place may be an address with a password,
/// or an option with one behind it.
QString shown(const QString &word)
{
    static const QRegularExpression behind(QStringLiteral("[=:@].*"), QRegularExpression::DotMatchesEverythingOption);
    if (word.startsWith(QLatin1String("--")))
        return QString(word).replace(behind, QStringLiteral("…"));
    return word.contains(behind) ? ado::addressToShow(word) : word;
}

sample::Size sizeOf(const QString &word)
{
    if (word == QLatin1String("empty"))
        return sample::Size::Empty;
    if (word == QLatin1String("small"))
        return sample::Size::Small;
    if (word == QLatin1String("large"))
        return sample::Size::Large;
    throw WrongUse(QStringLiteral("--make 다음에는 empty, small, large 중 하나를 입력하십시오: %1").arg(shown(word)));
}

int numberOf(const QString &option, const QString &word, const char *whose)
{
    bool whole = false;
    const int key = word.toInt(&whole);
    if (!whole || key < 1)
        throw WrongUse(QStringLiteral("%1 다음에는 %2 번호를 입력하십시오: %3")
                           .arg(option, QString::fromUtf8(whose), shown(word)));
    return key;
}

void checkTogether(const Options &options)
{
    const QString task = taskOf(options);
    if (!options.walkFolder.isEmpty()
        && (!options.database.isEmpty() || !task.isEmpty() || options.patient || options.manage || options.untilShown))
        throw WrongUse(QStringLiteral("--walk는 자신의 데이터베이스로만 하므로 다른 옵션과 함께 쓸 수 없습니다."));
    if (!task.isEmpty() && (options.patient || options.manage || options.untilShown))
        throw WrongUse(
            QStringLiteral("%1 작업은 창을 열지 않으므로 --patient, --manage, --until-shown과 함께 쓸 수 없습니다.")
                .arg(task));
    if (options.manage && !options.patient)
        throw WrongUse(QStringLiteral("--manage는 --patient와 함께 사용하십시오."));
    if (options.dryRun && !options.upgrade && options.importFile.isEmpty())
        throw WrongUse(QStringLiteral("--dry-run은 --upgrade 또는 --import와 함께 사용하십시오."));
    if (options.lockDown && !options.upgrade)
        throw WrongUse(QStringLiteral("--lock-down은 --upgrade와 함께 사용하십시오."));
    if (options.order && options.restoreFile.isEmpty())
        throw WrongUse(QStringLiteral("--order는 --restore와 함께 사용하십시오."));
    if (options.all && (options.restoreFile.isEmpty() || options.order))
        throw WrongUse(QStringLiteral("--all은 --restore와 함께 사용하십시오. --order와는 함께 쓸 수 없습니다."));
}

} // namespace

QString taskOf(const Options &options)
{
    QStringList tasks;
    if (options.make)
        tasks << QStringLiteral("--make");
    if (options.check)
        tasks << QStringLiteral("--check");
    if (options.upgrade)
        tasks << QStringLiteral("--upgrade");
    else if (!options.backupFile.isEmpty())
        tasks << QStringLiteral("--backup");
    if (!options.restoreFile.isEmpty())
        tasks << QStringLiteral("--restore");
    if (!options.verifyFile.isEmpty())
        tasks << QStringLiteral("--verify");
    if (!options.copyTo.isEmpty())
        tasks << QStringLiteral("--copy-to");
    if (!options.importFile.isEmpty())
        tasks << QStringLiteral("--import");
    if (!options.exportFile.isEmpty())
        tasks << QStringLiteral("--export");
    if (!options.central.isEmpty())
        tasks << QStringLiteral("--central");
    if (options.headOffice)
        tasks << QStringLiteral("--head-office");
    if (options.set)
        tasks << QStringLiteral("--set");
    if (tasks.size() > 1)
        throw WrongUse(QStringLiteral("한 번에 하나만 할 수 있습니다: ") + tasks.join(QStringLiteral(", ")));
    return tasks.value(0);
}

Options readCommandLine(const QStringList &arguments)
{
    Options options;
    QStringList seen;
    for (qsizetype at = 0; at < arguments.size(); ++at) {
        const QString option = arguments[at];
        if (seen.contains(option))
            throw WrongUse(QStringLiteral("같은 옵션이 두 번 있습니다: %1").arg(shown(option)));
        seen << option;
        const auto value = [&] {
            if (at + 1 == arguments.size() || arguments[at + 1].isEmpty()
                || arguments[at + 1].startsWith(QLatin1String("--")))
                throw WrongUse(QStringLiteral("옵션에 값이 없습니다: %1").arg(option));
            return arguments[++at];
        };
        if (option == QLatin1String("--database"))
            options.database = value();
        else if (option == QLatin1String("--make"))
            options.make = sizeOf(value());
        else if (option == QLatin1String("--patient"))
            options.patient = numberOf(option, value(), "환자");
        else if (option == QLatin1String("--manage"))
            options.manage = true;
        else if (option == QLatin1String("--walk"))
            options.walkFolder = value();
        else if (option == QLatin1String("--check"))
            options.check = true;
        else if (option == QLatin1String("--backup"))
            options.backupFile = value();
        else if (option == QLatin1String("--restore"))
            options.restoreFile = value();
        else if (option == QLatin1String("--verify"))
            options.verifyFile = value();
        else if (option == QLatin1String("--copy-to"))
            options.copyTo = value();
        else if (option == QLatin1String("--import"))
            options.importFile = value();
        else if (option == QLatin1String("--export"))
            options.exportFile = value();
        else if (option == QLatin1String("--order"))
            options.order = numberOf(option, value(), "거래");
        else if (option == QLatin1String("--all"))
            options.all = true;
        else if (option == QLatin1String("--upgrade"))
            options.upgrade = true;
        else if (option == QLatin1String("--dry-run"))
            options.dryRun = true;
        else if (option == QLatin1String("--set"))
            options.set = at + 1 < arguments.size() && !arguments[at + 1].startsWith(QLatin1String("--"))
                              ? arguments[++at]
                              : QString();
        else if (option == QLatin1String("--central"))
            options.central = value();
        else if (option == QLatin1String("--head-office"))
            options.headOffice = true;
        else if (option == QLatin1String("--lock-down"))
            options.lockDown = true;
        else if (option == QLatin1String("--until-shown"))
            options.untilShown = true;
        else if (option == QLatin1String("--help"))
            options.help = true;
        else if (option == QLatin1String("--version"))
            options.version = true;
        else
            throw WrongUse(QStringLiteral("모르는 옵션입니다: %1").arg(shown(option)));
    }
    checkTogether(options);
    return options;
}

QString usageText()
{
    const QString options = QStringLiteral(
        "desk " ZELVO_VERSION ": 한의원 접수 데스크\n"
        "\n"
        "  --database 주소   sqlite:파일, postgresql://사용자@서버/이름, odbc:연결문자열\n"
        "                    (없으면 사용자 폴더의 작은 견본 한의원)\n"
        "  --make 크기       empty, small, large 중 하나로 데이터베이스를 만들고 끝냅니다\n"
        "  --check           데이터베이스를 검사하고 끝냅니다 (0 문제 없음, 1 문제 발견, 2 검사하지 못함)\n"
        "  --backup 파일     데스크가 일하는 동안 데이터베이스를 새 파일로 백업합니다\n"
        "  --restore 파일    물품판매의 테이블 7개를 백업 파일의 내용으로 복원합니다 (지금의 데이터베이스는 백업 파일\n"
        "                    옆에 남기며, 다른 프로그램의 테이블은 바꾸지 않습니다)\n"
        "  --all             --restore와 함께: 환자, 진료 영수증, 공용 설정도 복원합니다\n"
        "  --order 번호      --restore와 함께: 삭제한 거래 하나만 복원합니다. 파일 대신 journal을 쓰면 변경 이력에서\n"
        "                    복원합니다\n"
        "  --verify 파일     백업 파일을 임시 데이터베이스에 복원해 검사합니다 (데이터베이스는 바뀌지 않습니다)\n"
        "  --copy-to 주소    모든 내용을 빈 데이터베이스에 복사하고 비교합니다 (SQLite에서 PostgreSQL로 옮길 때 등)\n"
        "  --import 파일     CSV 파일의 물품이나 환자를 가져옵니다 (머리글로 구별합니다)\n"
        "  --export 파일     물품 목록을 CSV 파일로 저장합니다 (--import로 다시 가져올 수 있습니다)\n"
        "  --upgrade         데이터베이스에 없는 것을 더해 이 판으로 업그레이드합니다 (먼저 백업하며, 그 파일은\n"
        "                    --backup으로 정할 수 있습니다)\n"
        "  --central 주소    이 한의원의 물품 목록을 그 주소의 본부 물품 목록과 연동합니다\n"
        "  --head-office     이 데이터베이스의 물품 목록을 체인의 본부 물품 목록으로 만듭니다\n"
        "  --set 이름=값     이 데스크의 설정을 바꿉니다 (--set만 쓰면 모든 설정을 보여 줍니다)\n"
        "  --dry-run         --upgrade 또는 --import와 함께: 할 일을 보여 주기만 합니다\n"
        "  --lock-down       --upgrade와 함께: PostgreSQL에서 권한을 받지 않은 역할은 접속하지 못하게 합니다\n"
        "  --patient 번호    그 환자의 판매 창을 바로 엽니다\n"
        "  --manage          --patient와 함께: 물품 관리로 엽니다\n"
        "  --walk 폴더       판매 과정을 스스로 한 번 실행하고 화면을 그 폴더에 남깁니다\n"
        "  --until-shown     첫 창과 목록이 그려지면 끝냅니다 (시작 시간을 재는 데 씁니다)\n"
        "  --version         판 번호\n"
        "  --help            이 안내\n");
    const QString log =
        QStringLiteral("\n"
                       "오류는 사용자의 파일에 14일 동안 남깁니다. 환자의 이름, 메모, 암호는 남기지 않습니다.\n"
                       "  %1\n");
    return options + log.arg(runtime::logFile(QCoreApplication::applicationName()));
}

QString defaultDatabase()
{
    const QDir folder(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    return QStringLiteral("sqlite:") + folder.filePath(QStringLiteral("small.db"));
}

} // namespace desk
