#include "desk/journal/Entries.h"

#include "platform/runtime/Format.h"

#include <map>

namespace journal {

namespace {

using Words = std::map<QString, QString>; ///< of a column's codes

struct Field
{
    const char *column;
    const char *caption;
    bool money = false;
    Words words = {};
};

QString word(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

const std::vector<Field> &fields()
{
    static const std::vector<Field> all{
        {"Cust_PK", "환자번호"},
        {"OrdM_Date", "거래일자"},
        {"OrdM_Gubun", "수령방법", false, {{word("1"), word("직접수령")}, {word("2"), word("택배")}}},
        {"OrdM_TaxTotal", "과세상품 총합", true},
        {"OrdM_TaxFreeTotal", "비과세상품 총합", true},
        {"OrdM_HalinTotal", "할인금액", true},
        {"OrdM_Total", "판매총액", true},
        {"OrdM_Misugum", "미수금", true},
        {"OrdM_Address", "고객주소"},
        {"OrdM_Tel", "고객 전화번호"},
        {"OrdM_Cel", "고객 핸드폰"},
        {"OrdM_TakbaeMemo", "택배메모"},
        {"OrdM_ETCMemo", "메모"},
        {"OrdM_PK", "거래번호"},
        {"PM_PK", "물품번호"},
        {"OrdD_Count", "수량"},
        {"OrdD_UnitPrice", "판매단가", true},
        {"OrdD_HalinUnit", "단가할인", true},
        {"OrdD_OrderType",
         "판매종류",
         false,
         {{word("0"), word("일반판매")}, {word("1"), word("서비스")}, {word("2"), word("망실")}}},
        {"OrdD_RfndMemo", "환불정보"},
        {"tpstrans_Customer_PK", "환자번호"},
        {"tpstrans_OrderM_PK", "거래번호"},
        {"tpstrans_Date", "일자"},
        {"tpstrans_Operator",
         "방법",
         false,
         {{word("1"), word("절사")}, {word("2"), word("할인")}, {word("3"), word("수납")}, {word("4"), word("환불")}}},
        {"tpstrans_Money", "금액", true},
        {"tpstrans_Method",
         "결재방법",
         false,
         {{word("00"), word("현금")},
          {word("01"), word("카드")},
          {word("10"), word("현금(미수)")},
          {word("11"), word("카드(미수)")},
          {word("12"), word("통장(미수)")}}},
        {"tpstrans_Memo", "메모"},
        {"trans_temp", "표시"},
        {"trans_NotSubmit", "제출 제외"},
    };
    return all;
}

/// Empty for a field without a value.
QString shown(const Field &field, const QJsonValue &value)
{
    if (value.isNull() || value.isUndefined())
        return {};
    const QString text = value.isString() ? value.toString() : QString::number(value.toInteger());
    if (field.money)
        return runtime::Format(text, runtime::strMoneyFormat);
    const auto known = field.words.find(text);
    return known == field.words.end() ? text : known->second;
}

/// Whose order it is stands in columns of its own, until it changes.
bool isKey(const Field &field)
{
    const QString column = QString::fromLatin1(field.column);
    return column.endsWith(QLatin1String("Cust_PK")) || column.endsWith(QLatin1String("Customer_PK"))
           || column.endsWith(QLatin1String("OrdM_PK")) || column.endsWith(QLatin1String("OrderM_PK"));
}

} // namespace

QString changesText(const Entry &entry)
{
    if (entry.action == 'R')
        return entry.after.value(QStringLiteral("file")).toString();
    const QString none = QStringLiteral("(없음)");
    QStringList changes;
    for (const Field &field : fields()) {
        const QString column = QString::fromLatin1(field.column);
        const QString before = shown(field, entry.before.value(column));
        const QString after = shown(field, entry.after.value(column));
        if (before == after || (entry.action != 'U' && isKey(field)))
            continue;
        const QString caption = QString::fromUtf8(field.caption) + u' ';
        changes << caption
                       + (entry.action == 'U' ? (before.isEmpty() ? none : before) + QStringLiteral(" → ")
                                                    + (after.isEmpty() ? none : after)
                                              : before + after);
    }
    return changes.join(QStringLiteral(" · "));
}

QString actionText(char action)
{
    switch (action) {
    case 'I':
        return QStringLiteral("추가");
    case 'U':
        return QStringLiteral("수정");
    case 'R':
        return QStringLiteral("복원");
    default:
        return QStringLiteral("삭제");
    }
}

QString tableText(const QString &table)
{
    return table.isEmpty()                            ? QStringLiteral("백업 파일")
           : table == QLatin1String("tPSOrderMaster") ? QStringLiteral("거래")
           : table == QLatin1String("tPSOrderDetail") ? QStringLiteral("물품")
                                                      : QStringLiteral("수납");
}

} // namespace journal
