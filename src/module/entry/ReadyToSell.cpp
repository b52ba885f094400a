#include "entry/ReadyToSell.h"

#include "clinic/Examination.h"
#include "platform/controls/MessageBox.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Operation.h"

namespace {

constexpr qsizetype shownFaults = 12;

QString textOf(const QStringList &faults)
{
    QString text = QStringLiteral("판매에 필요한 테이블이나 항목이 없거나 맞지 않아 판매할 수 없습니다.\n"
                                  "개발사로 문의하십시오.\n\n")
                   + faults.mid(0, shownFaults).join(u'\n');
    if (faults.size() > shownFaults)
        text += QStringLiteral("\n그 밖에 %1건").arg(faults.size() - shownFaults);
    return text;
}

} // namespace

bool isReadyToSell(const ado::ConnectionPtr &connection, ado::Foresight &next)
{
    static std::weak_ptr<ado::Connection> ready;
    if (!connection || ready.lock() == connection)
        return true;
    const runtime::Operation operation("examine schema");
    QStringList faults;
    runtime::Attempt attempt; // a server that can't be asked is told by the first list
    attempt([&] {
        faults =
            clinic::textsOf(clinic::examine(*connection, clinic::Depth::ToSell, next), clinic::Finding::Weight::Fault);
    });
    if (attempt.failed())
        return true;
    if (faults.isEmpty())
        ready = connection;
    else
        controls::MsgBox(textOf(faults), controls::InformationIcon, QStringLiteral("판매관리"));
    return faults.isEmpty();
}
