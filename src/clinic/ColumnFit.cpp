#include "clinic/ColumnFit.h"

#include <QRegularExpression>

namespace clinic {

namespace {

enum class TypeKind { Whole, Exact, Double, Single, Money, Boolean, Text, Date, Anything, Other };

struct SqlType
{
    TypeKind kind = TypeKind::Other;
    int size = 0; ///< bits of a whole number, digits before an exact one's point, signs of a text; 0: enough
};

SqlType embeddedType(const QString &declared)
{
    const auto has = [&](const char *word) { return declared.contains(QLatin1String(word), Qt::CaseInsensitive); };
    if (has("INT"))
        return {TypeKind::Whole};
    if (has("CHAR") || has("CLOB") || has("TEXT"))
        return {TypeKind::Text};
    if (declared.isEmpty() || has("BLOB") || has("ANY"))
        return {TypeKind::Anything};
    return {has("REAL") || has("FLOA") || has("DOUB") ? TypeKind::Double : TypeKind::Exact};
}

SqlType serverType(const QString &type)
{
    static const struct
    {
        const char *begins;
        SqlType type;
    } known[]{
        {"tinyint", {TypeKind::Whole, 16}}, {"smallint", {TypeKind::Whole, 16}}, {"integer", {TypeKind::Whole, 32}},
        {"bigint", {TypeKind::Whole, 64}},  {"int(", {TypeKind::Whole, 32}},     {"mediumint", {TypeKind::Whole, 32}},
        {"numeric", {TypeKind::Exact}},     {"decimal", {TypeKind::Exact}},      {"double", {TypeKind::Double}},
        {"float", {TypeKind::Single}},      {"real", {TypeKind::Single}},        {"money", {TypeKind::Money}},
        {"boolean", {TypeKind::Boolean}},   {"text", {TypeKind::Text}},          {"mediumtext", {TypeKind::Text}},
        {"longtext", {TypeKind::Text}},     {"varchar", {TypeKind::Text}},       {"char(", {TypeKind::Text}},
        {"citext", {TypeKind::Text}},       {"character", {TypeKind::Text}},     {"date", {TypeKind::Date}},
        {"timestamp", {TypeKind::Date}},
    };
    static const QRegularExpression sizes(QStringLiteral("\\((\\d+)(?:,(\\d+))?\\)"));
    const QRegularExpressionMatch size = sizes.match(type);
    for (const auto &one : known) {
        if (!type.startsWith(QLatin1String(one.begins)))
            continue;
        SqlType found = one.type;
        if (size.hasMatch() && (found.kind == TypeKind::Exact || found.kind == TypeKind::Text))
            found.size = size.captured(1).toInt() - size.captured(2).toInt();
        return found;
    }
    return {};
}

Misfit misfitOfMoney(SqlType type, bool embedded)
{
    constexpr int digits = 9; // of a day's takings
    switch (type.kind) {
    case TypeKind::Whole:
        return type.size == 16 ? Misfit{true, "금액을 담기에 작은 정수 형식입니다"} : Misfit{};
    case TypeKind::Exact:
        return type.size > 0 && type.size < digits ? Misfit{true, "금액의 자릿수가 모자란 형식입니다"} : Misfit{};
    case TypeKind::Anything:
        return {};
    case TypeKind::Double:
        return {false, "금액이 실수 형식이어서 원 미만이 정확하지 않습니다"};
    case TypeKind::Single:
        return {true, "큰 금액이 달라지는 실수 형식입니다"};
    case TypeKind::Text:
        return {!embedded, "금액이 글자 형식입니다"};
    default:
        return {true, "금액을 담을 수 없는 형식입니다"};
    }
}

/// Keys, codes and flags.
Misfit misfitOfWhole(SqlType type, bool embedded, bool large)
{
    switch (type.kind) {
    case TypeKind::Whole:
        return large && type.size == 16 ? Misfit{true, "번호나 금액을 담기에 작은 정수 형식입니다"} : Misfit{};
    case TypeKind::Exact:
    case TypeKind::Anything:
        return {};
    case TypeKind::Double:
        return {false, "정수여야 할 값이 실수 형식입니다"};
    case TypeKind::Text:
        return {!embedded, "숫자여야 할 값이 글자 형식입니다"};
    case TypeKind::Boolean:
        return {true, "0과 1이어야 할 값이 참·거짓 형식입니다"};
    default:
        return {true, "숫자를 담을 수 없는 형식입니다"};
    }
}

Misfit misfitOfNumber(SqlType type, bool embedded)
{
    switch (type.kind) {
    case TypeKind::Exact:
    case TypeKind::Anything:
    case TypeKind::Double:
    case TypeKind::Single:
        return {};
    case TypeKind::Whole:
        return embedded ? Misfit{} : Misfit{false, "정수 형식이어서 소수 수량을 저장할 수 없습니다"};
    case TypeKind::Text:
        return {!embedded, "숫자여야 할 값이 글자 형식입니다"};
    default:
        return {true, "숫자를 담을 수 없는 형식입니다"};
    }
}

Misfit misfitOfText(SqlType type, bool embedded, int longest)
{
    if (type.kind == TypeKind::Text)
        return type.size > 0 && type.size < longest ? Misfit{true, "글자 수가 모자란 형식입니다"} : Misfit{};
    if (type.kind == TypeKind::Anything)
        return {};
    return {true, embedded ? "앞의 0이 사라지는 숫자 형식입니다" : "글자를 담을 수 없는 형식입니다"};
}

} // namespace

Misfit misfitOf(const Column &column, const QString &typeName, bool embedded)
{
    using enum ado::ColumnType;
    constexpr int dateSigns = 10;
    const SqlType type = embedded ? embeddedType(typeName) : serverType(typeName);
    switch (column.holds) {
    case Key:
    case Long:
        return misfitOfWhole(type, embedded, true);
    case Integer:
    case Flag:
        return misfitOfWhole(type, embedded, false);
    case Money:
        return misfitOfMoney(type, embedded);
    case Number:
        return misfitOfNumber(type, embedded);
    case Date:
        if (embedded || type.kind == TypeKind::Date
            || (type.kind == TypeKind::Text && !(type.size > 0 && type.size < dateSigns)))
            return {};
        return {true, "날짜를 담을 수 없는 형식입니다"};
    case Text:
        return misfitOfText(type, embedded, column.longest);
    }
    Q_UNREACHABLE();
}

} // namespace clinic
