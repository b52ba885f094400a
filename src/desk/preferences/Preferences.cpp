#include "desk/preferences/Preferences.h"

#include "desk/schema/Statements.h"
#include "platform/registry/AppSettings.h"
#include "platform/runtime/ProgramFolder.h"
#include "platform/runtime/RuntimeError.h"

#include <QDir>

#include <algorithm>

namespace preferences {

namespace {

const QString application = QStringLiteral("Zelvo Desk");

constexpr const char16_t *general = u"젤보 데스크";
constexpr const char16_t *windows = u"물품판매관리";
constexpr const char16_t *ofClinic = u"";

constexpr Preference table[] = {
    {u"영수증프린터디바이스", u"ReceiptPrinter", general, u"<자동설정>", u"롤 영수증을 출력하는 프린터"},
    {u"미리보기프린터", u"", windows, u"", u"미리보기에서 마지막에 사용한 프린터"},
    {u"FormPos_x", u"", windows, u"", u"판매 창의 왼쪽", true},
    {u"FormPos_y", u"", windows, u"", u"판매 창의 위쪽", true},
    {u"FormWidth", u"", windows, u"", u"판매 창의 너비", true},
    {u"FormHeight", u"", windows, u"", u"판매 창의 높이", true},
    {u"IsFormMaximized", u"FormIsMaximized", windows, u"", u"판매 창의 상태 (0 보통, 2 최대화)", true},
    {u"ColWidth_0", u"FirstColWidth", windows, u"", u"판매 탭 첫째 칸의 너비", true},
    {u"ColWidth_1", u"SecondColWidth", windows, u"", u"판매 탭 둘째 칸의 너비", true},
    {u"ColWidth_2", u"ThirdColWidth", windows, u"", u"판매 탭 셋째 칸의 너비", true},
    {u"물품판매중앙콜사인", u"ProductServerCallSign", ofClinic, u"", u"중앙 물품 서버의 콜사인"},
    {u"물품판매중앙주소", u"ProductServerAddress", ofClinic, u"", u"본부 데이터베이스의 주소 (desk --central)", false,
     true},
};

QString text(const char16_t *of)
{
    return QString::fromUtf16(of);
}

QString literal(QString value)
{
    return u'\'' + value.replace(u'\'', QStringLiteral("''")) + u'\'';
}

/// No row is no value; an empty one is.
std::optional<QString> storedInClinic(const Preference &preference, ado::Connection &connection)
{
    const QList<QVariantList> rows = schema::rowsOf(
        connection, QStringLiteral("SELECT HS_Value FROM t_HospSetup WHERE HS_KEY = ") + literal(text(preference.key)));
    return rows.isEmpty() ? std::nullopt : std::optional(rows[0][0].toString());
}

void storeInClinic(const Preference &preference, const QString &value, ado::Connection &connection)
{
    const bool there = storedInClinic(preference, connection).has_value();
    const QString key = literal(text(preference.key));
    schema::run(
        connection,
        there ? QStringLiteral("UPDATE t_HospSetup SET HS_Value = %1 WHERE HS_KEY = %2").arg(literal(value), key)
              : QStringLiteral("INSERT INTO t_HospSetup (HS_KEY, HS_Value) VALUES (%1, %2)").arg(key, literal(value)));
}

} // namespace

const Preference &receiptPrinter = table[0];
const Preference &callSign = table[std::size(table) - 2];
const Preference &headOffice = table[std::size(table) - 1];

std::span<const Preference> all()
{
    return table;
}

const Preference *find(QStringView name)
{
    const auto found = std::ranges::find_if(table, [&](const Preference &preference) {
        return name.compare(text(preference.key), Qt::CaseInsensitive) == 0
               || (*preference.also && name.compare(text(preference.also), Qt::CaseInsensitive) == 0);
    });
    return found == std::end(table) ? nullptr : found;
}

QString value(const Preference &preference, const ado::ConnectionPtr &clinic)
{
    if (preference.isOfClinic())
        return storedInClinic(preference, *clinic).value_or(text(preference.fallback));
    return registry::GetSetting(application, text(preference.section), text(preference.key), text(preference.fallback));
}

void setValue(const Preference &preference, const QString &value, const ado::ConnectionPtr &clinic)
{
    bool whole = value.isEmpty() || !preference.isNumber;
    if (!whole)
        value.toInt(&whole);
    if (!whole)
        schema::refuse(QStringLiteral("숫자로 입력하십시오: %1=%2").arg(text(preference.key), value));
    if (value == preferences::value(preference, clinic))
        return;
    if (preference.isOfClinic())
        storeInClinic(preference, value, *clinic);
    else
        registry::SaveSetting(application, text(preference.section), text(preference.key), value);
}

void resetWindows()
{
    for (const Preference &preference : table) {
        if (preference.isNumber)
            setValue(preference, {}, nullptr);
    }
    QDir folder(runtime::programFolder());
    const QStringList layouts = folder.entryList({QStringLiteral("Grid.*.tdb")}, QDir::Files);
    for (const QString &layout : layouts) {
        if (!folder.remove(layout))
            schema::refuse(QStringLiteral("파일을 삭제할 수 없습니다: ") + folder.filePath(layout));
    }
}

} // namespace preferences
