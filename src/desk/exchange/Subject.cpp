#include "desk/exchange/Subject.h"

#include "desk/schema/Statements.h"

#include <algorithm>

namespace exchange {

namespace {

QString utf8(const char *text)
{
    return QString::fromUtf8(text);
}

/// A heading without what people change about it.
QString plain(QString heading)
{
    heading.remove(u' ');
    return heading.trimmed().toLower();
}

bool isCalled(const Field &field, const QString &heading)
{
    const QString asked = plain(heading);
    const auto is = [&](const char *name) { return plain(utf8(name)) == asked; };
    return is(field.column) || is(field.caption) || std::ranges::any_of(field.names, is);
}

const Field *find(const Subject &subject, const QString &heading)
{
    const auto found =
        std::ranges::find_if(subject.fields, [&](const Field &field) { return isCalled(field, heading); });
    return found == subject.fields.end() ? nullptr : &*found;
}

const Subject &subjectOf(const Record &record)
{
    for (const Subject *subject : {&products(), &patients()}) {
        const Field *name = subject->field(subject->name);
        if (std::ranges::any_of(record.cells, [&](const QString &cell) { return isCalled(*name, cell); }))
            return *subject;
    }
    schema::refuse(
        QStringLiteral("%1번째 줄: 머리글에 '물품명'(물품) 또는 '챠트번호'(환자)가 있어야 합니다.").arg(record.line));
}

} // namespace

const Field *Subject::field(const char *column) const
{
    const auto found =
        std::ranges::find_if(fields, [&](const Field &field) { return qstrcmp(field.column, column) == 0; });
    return found == fields.end() ? nullptr : &*found;
}

const Subject &products()
{
    using enum Reads;
    static const Subject subject{
        "물품",
        "tPSProductMaster",
        "PM_PK",
        "PM_Name",
        "PM_Catagory",
        {"PM_Catagory", "PM_UnitPrice"},
        {{"PM_Catagory", "분류", {"카타고리"}, Text},
         {"PM_Name", "물품명", {"물품", "물품 이름"}, Text},
         {"PM_UnitPrice", "판매단가(원)", {"판매단가", "단가", "가격"}, Money},
         {"PM_IsTaxed", "과세", {"과세/비과세", "과세여부"}, Flag, "과세", "비과세", "과세"},
         {"PM_IsValid", "취급여부", {"취급", "취급/취급안함"}, Flag, "취급", "취급안함", "취급"},
         {"PM_IsHide", "숨기기", {"숨김"}, Flag, "숨기기", "보이기"},
         {"PM_EtcMemo", "메모", {"비고"}, Memo},
         {"PM_AddedDate", "등록 날짜", {"등록일", "등록일자"}, Date, "", "", "오늘"}}};
    return subject;
}

const Subject &patients()
{
    using enum Reads;
    static const Subject subject{"환자",
                                 "Customer",
                                 "Customer_PK",
                                 "sn",
                                 "",
                                 {"name"},
                                 {{"sn", "챠트번호", {"차트번호"}, Text},
                                  {"name", "이름", {"환자명", "성명"}, Text},
                                  {"ssn1", "주민번호 앞자리", {"주민등록번호 앞자리"}, Text},
                                  {"ssn2", "주민번호 뒷자리", {"주민등록번호 뒷자리"}, Text},
                                  {"sex", "성별", {}, Flag, "남", "여"},
                                  {"birth", "생년월일", {"생일"}, Date},
                                  {"phone", "전화번호", {"전화"}, Text},
                                  {"cell", "핸드폰", {"휴대전화", "휴대폰"}, Text},
                                  {"zipcode", "우편번호", {}, Text},
                                  {"address", "주소", {}, Text},
                                  {"Insu_Type", "보험종류", {}, Text},
                                  {"Insu_Symbol", "보험기호", {}, Text},
                                  {"Insu_No", "보험증번호", {}, Text},
                                  {"vip", "VIP", {}, Text}}};
    return subject;
}

bool Header::has(const char *column) const
{
    return placeOf(column) >= 0;
}

int Header::placeOf(const char *column) const
{
    const auto found =
        std::ranges::find_if(fields, [&](const Field *field) { return field && qstrcmp(field->column, column) == 0; });
    return found == fields.end() ? -1 : int(found - fields.begin());
}

Header readHeader(const Record &record)
{
    Header header{&subjectOf(record), {}};
    for (const QString &cell : record.cells) {
        if (cell.trimmed().isEmpty()) {
            header.fields.push_back(nullptr);
            continue;
        }
        const Field *field = find(*header.subject, cell);
        if (!field) {
            QStringList known;
            for (const Field &one : header.subject->fields)
                known << utf8(one.caption);
            schema::refuse(QStringLiteral("%1번째 줄: 모르는 머리글입니다: '%2'\n쓸 수 있는 머리글: %3")
                               .arg(record.line)
                               .arg(cell, known.join(QStringLiteral(", "))));
        }
        if (header.has(field->column))
            schema::refuse(QStringLiteral("%1번째 줄: 같은 머리글이 두 번 있습니다: '%2'").arg(record.line).arg(cell));
        header.fields.push_back(field);
    }
    return header;
}

} // namespace exchange
