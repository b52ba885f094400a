#include "data/clsUserSettingDB.h"

#include "data/StatementText.h"
#include "data/Vocabulary.h"
#include "data/modGeneralSQL.h"
#include "platform/ado/Recordset.h"
#include "platform/controls/MessageBox.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Log.h"
#include "platform/runtime/RuntimeError.h"

namespace {

using Kind = clsUserSettingDB::Kind;

constexpr clsUserSettingDB::Property vocabulary[] = {
    {u"IsWelfare", u"사회복지법인여부", Kind::Flag, nullptr},
    {u"IsUseDaeHaeng", u"대행청구사용여부", Kind::Flag, nullptr},
    {u"DaeHaengCode", u"대행청구단체코드", Kind::Text, nullptr},
    {u"KTCashServerIP", u"KT현영서버IP", Kind::Text, nullptr},
    {u"KTCashServerPort", u"KT현영서버PORT", Kind::Text, nullptr},
    {u"KTCashBusinessCode", u"KT현영사업자번호", Kind::Text, nullptr},
    {u"KTCashBusinessName", u"KT현영사업자이름", Kind::Text, nullptr},
    {u"KTCashPrintTitle", u"KT현영출력타이틀", Kind::Text, nullptr},
    {u"KTCashPrintARS", u"KT현영출력ARS", Kind::Text, nullptr},
    {u"KTCashPrintURL", u"KT현영출력URL", Kind::Text, nullptr},
    {u"POSSumUse", u"숨쉬는POS사용여부", Kind::Flag, nullptr},
    {u"POSSumServer", u"숨쉬는POS서버명", Kind::Text, nullptr},
    {u"ProductSaleUse", u"물품판매관리사용여부", Kind::Flag, nullptr},
    {u"ProductServerCallSign", u"물품판매중앙콜사인", Kind::Text, u"물품판매 중앙서버연동 호출기호 확인"},
    {u"WaitTreatTimeRemain", u"대기실치료실시간연계", Kind::Flag, nullptr},
    {u"DefaultJeolsa", u"절사방식기본값", Kind::Text, nullptr},
    {u"NotAutoDeleteAfterTreatDone", u"치료완료후제거안함", Kind::Flag, nullptr},
    {u"MSCardDLLSign", u"MSC_콜사인", Kind::Text, nullptr},
    {u"MSCardLocalCode", u"MSC_가맹점코드", Kind::Text, nullptr},
    {u"처방지CallSign", u"처방지_콜사인", Kind::Text, nullptr},
    {u"EDISendTime", u"EDI집계기간설정", Kind::Text, nullptr},
    {u"ShareUseYangdorak", u"양도락공동사용정보", Kind::Text, nullptr},
    {u"ShareUseMacjundo", u"맥전도공동사용정보", Kind::Text, nullptr},
    {u"ShareUseKyungrak", u"경락기능공동사용정보", Kind::Text, nullptr},
    {u"SetBoninZeroVisible", u"본인부담0으로지정", Kind::Flag, nullptr},
    {u"TOSYoyangID", u"TOS요양기관ID", Kind::Text, nullptr},
    {u"TOSSunapID", u"TOS수납자ID", Kind::Text, nullptr},
    {u"RegistHideNote", u"접수실프리노트숨기기", Kind::Flag, nullptr},
    {u"ManageFourImage", u"화상자료4개관리", Kind::Flag, nullptr},
    {u"DefaultEDISusin", u"EDI기본수신처", Kind::Text, nullptr},
    {u"ShowBokyakOverflow", u"복용법길이제한표시", Kind::Flag, nullptr},
};

QString keyOf(const clsUserSettingDB::Property &property)
{
    return QString::fromUtf16(property.key);
}

QString selectOf(const QString &key)
{
    return statement::fill(u"SELECT * FROM t_HospSetup WHERE HS_KEY='[KEY]'", {{u"[KEY]", sqlEscapeQuotes(key)}});
}

QString titleOf(const clsUserSettingDB::Property &property)
{
    return QString::fromUtf16(property.title ? property.title : property.key);
}

} // namespace

std::span<const clsUserSettingDB::Property> clsUserSettingDB::properties()
{
    return vocabulary;
}

QVariant clsUserSettingDB::value(const ado::ConnectionPtr &connection, QStringView name) const
{
    const Property &property = findProperty(vocabulary, name);
    const bool isFlag = property.kind == Kind::Flag;

    Status status;
    const QString stored =
        readValueWithDefault(connection, keyOf(property), isFlag ? QStringLiteral("0") : QStringLiteral(""), status);
    if (status == Status::Failed)
        reportFailure(titleOf(property));
    return isFlag ? QVariant(stored == u"1") : QVariant(stored);
}

void clsUserSettingDB::setValue(const ado::ConnectionPtr &connection, QStringView name, const QVariant &value) const
{
    const Property &property = findProperty(vocabulary, name);
    const QString stored = property.kind == Kind::Text ? runtime::text(value)
                           : runtime::isTrue(value)    ? QStringLiteral("1")
                                                       : QStringLiteral("0");
    Status status;
    writeValue(connection, keyOf(property), stored, status);
    if (status == Status::Failed)
        reportFailure(titleOf(property));
}

QString clsUserSettingDB::ProductServerCallSign(const ado::ConnectionPtr &connection) const
{
    return value(connection, u"ProductServerCallSign").toString();
}

void clsUserSettingDB::tellProductServerCallSign(ado::Foresight &next)
{
    next.open(selectOf(keyOf(findProperty(vocabulary, u"ProductServerCallSign"))), ado::CursorType::ForwardOnly);
}

void clsUserSettingDB::setProductServerCallSign(const ado::ConnectionPtr &connection, const QString &callSign) const
{
    setValue(connection, u"ProductServerCallSign", callSign);
}

clsUserSettingDB::Status clsUserSettingDB::readValue(const ado::ConnectionPtr &connection, const QString &key,
                                                     QString &value)
{
    try {
        ado::Recordset rows;
        rows.Open(selectOf(key), connection, ado::CursorType::ForwardOnly, ado::LockType::ReadOnly);
        if (!rows.hasCurrent())
            return Status::NotFound;
        value = runtime::text(rows[QStringLiteral("HS_Value")]);
        return Status::Found;
    } catch (const runtime::RuntimeError &) {
        runtime::trapped();
        return Status::Failed;
    }
}

QString clsUserSettingDB::readValueWithDefault(const ado::ConnectionPtr &connection, const QString &key,
                                               const QString &defaultText, Status &status)
{
    QString value;
    status = readValue(connection, key, value);
    return status == Status::Found ? value : defaultText;
}

void clsUserSettingDB::writeValue(const ado::ConnectionPtr &connection, const QString &key, const QString &value,
                                  Status &status)
{
    QString stored;
    status = readValue(connection, key, stored);
    if (status == Status::Failed || (status == Status::Found && stored == value))
        return;

    const QStringView text =
        status == Status::NotFound
            ? QStringView(u"INSERT INTO t_HospSetup (HS_KEY, HS_Value) VALUES ('[KEY]', '[VALUE]')")
            : QStringView(u"UPDATE t_HospSetup set HS_Value='[VALUE]' WHERE HS_KEY='[KEY]'");
    try {
        connection->Execute(
            statement::fill(text, {{u"[KEY]", sqlEscapeQuotes(key)}, {u"[VALUE]", sqlEscapeQuotes(value)}}));
    } catch (const runtime::RuntimeError &) {
        runtime::trapped();
        status = Status::Failed;
    }
}

void clsUserSettingDB::reportFailure(const QString &title)
{
    controls::MsgBox(QStringLiteral("데이터베이스 접속에 오류가 발생했습니다. 데이터베이스"
                                    "\r"
                                    "접속을 확인하시고 다시 시도해 주십시오. 오류가 지속되면"
                                    "\r"
                                    "개발사로 문의하시기 바랍니다."),
                     controls::ConfirmOnly | controls::WarningIcon, title);
}
