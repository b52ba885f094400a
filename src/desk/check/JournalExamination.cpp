#include "desk/check/JournalExamination.h"

#include "desk/journal/Chain.h"
#include "desk/schema/Journal.h"
#include "desk/schema/Schema.h"
#include "platform/runtime/RuntimeError.h"

#include <QLocale>

namespace check {

namespace {

const char *titleOf(const QString &table)
{
    return table == QLatin1String("tPSOrderMaster")   ? "변경 이력과 다른 거래"
           : table == QLatin1String("tPSOrderDetail") ? "변경 이력과 다른 판매 내역"
                                                      : "변경 이력과 다른 수납 내역";
}

} // namespace

JournalExamination::JournalExamination(ado::Connection &connection, std::chrono::milliseconds pause)
{
    if (!schema::hasJournal(connection))
        return;
    examineChain(connection);
    const QString remedy = QStringLiteral("변경 이력을 남기지 않고 바뀐 내역입니다. 데스크의 변경 이력(F9)과 비교하고 "
                                          "개발사로 문의하십시오.");
    for (const schema::JournalPlan &plan : schema::journalPlans()) {
        const QString table = QLatin1String(plan.table);
        findings_.push_back(examine(
            connection, {QString::fromUtf8(titleOf(table)), remedy, journal::differingRows(connection, table)}, pause));
    }
}

void JournalExamination::examineChain(ado::Connection &connection)
{
    Finding finding{{QStringLiteral("끊어진 변경 이력"),
                     QStringLiteral("변경 이력이 수정되거나 삭제된 흔적입니다. 백업의 변경 이력과 비교하고 개발사로 "
                                    "문의하십시오."),
                     QString()},
                    0,
                    {},
                    {}};
    try {
        const QLocale korean(QLocale::Korean, QLocale::SouthKorea);
        const journal::Chain chain = journal::walk(connection);
        if (chain.brokenAt > 0) {
            finding.violations = 1;
            finding.firstRows << QStringLiteral("이력번호 %1").arg(chain.brokenAt);
        }
        note_ = QStringLiteral("변경 이력: %1건 · 마지막 번호 %2 · 확인값 %3")
                    .arg(korean.toString(chain.rows), QString::number(chain.last), chain.hash);
        if (chain.open > 0)
            note_ += QStringLiteral(" · 번호를 기다리는 이력 %1건").arg(korean.toString(chain.open));
        note_ += u'\n';
    } catch (const runtime::RuntimeError &error) {
        finding.failure = error.description();
    }
    findings_.push_back(finding);
}

} // namespace check
