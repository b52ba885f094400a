#include "platform/ado/ColumnValue.h"

#include "platform/runtime/Conversions.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/RuntimeError.h"

#include <QDate>
#include <QDateTime>

#include <charconv>
#include <cmath>
#include <optional>

namespace ado {

namespace {

using runtime::Currency;
using runtime::ErrorNumber;
using runtime::RuntimeError;

[[noreturn]] void mismatch(QStringView text)
{
    throw RuntimeError(ErrorNumber::TypeMismatch,
                       QStringLiteral("데이터베이스의 값을 가져올 수 없습니다: %1").arg(text));
}

Currency exactMoney(QByteArrayView text)
{
    if (text == "t" || text == "f") // a boolean of the server's
        return Currency::fromWon(text == "t");
    if (const std::optional<Currency> exact = Currency::fromPlainText(text))
        return *exact;
    bool ok = false; // an exponent, of a double precision sum
    const double number = text.toDouble(&ok);
    if (!ok || !std::isfinite(number))
        mismatch(QString::fromUtf8(text));
    return Currency::fromDouble(number);
}

double number(const CellTable &table, const CellTable::Cell &cell)
{
    switch (cell.kind) {
    case CellTable::Kind::Integer:
        return static_cast<double>(cell.integer);
    case CellTable::Kind::Real:
        return cell.real;
    default:
        break;
    }
    const QByteArrayView text = table.text(cell);
    bool ok = false;
    const double value = QByteArray(text.data(), text.size()).toDouble(&ok);
    if (!ok)
        mismatch(QString::fromUtf8(text));
    return value;
}

std::int64_t wholeNumber(const CellTable &table, const CellTable::Cell &cell)
{
    if (cell.kind == CellTable::Kind::Integer)
        return cell.integer;
    if (cell.kind == CellTable::Kind::Text) {
        const QByteArrayView text = table.text(cell);
        std::int64_t value = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
        if (error == std::errc() && end == text.data() + text.size())
            return value;
    }
    return moneyOf(table, cell).toWon();
}

QDate dateOf(QStringView text)
{
    // The engine may add a time of day; the system's dates have none.
    const QDate date = QDate::fromString(text.first(qMin<qsizetype>(text.size(), 10)).toString(), Qt::ISODate);
    if (!date.isValid())
        mismatch(text);
    return date;
}

QDate assignedDate(const QVariant &value)
{
    if (value.typeId() == QMetaType::QDate && value.toDate().isValid())
        return value.toDate();
    if (value.typeId() == QMetaType::QDateTime && value.toDateTime().isValid())
        return value.toDateTime().date();
    return dateOf(runtime::text(value));
}

/// One engine would keep a NUL, another cut the text there without a word.
QString assignedText(const QVariant &value)
{
    const QString text = runtime::text(value);
    if (text.contains(QChar(u'\0')))
        throw RuntimeError(ErrorNumber::TypeMismatch,
                           QStringLiteral("저장할 수 없는 문자가 있습니다. 지우고 다시 입력하십시오."));
    return text;
}

} // namespace

Currency moneyOf(const CellTable &table, const CellTable::Cell &cell)
{
    switch (cell.kind) {
    case CellTable::Kind::Integer:
        return Currency::fromWon(cell.integer);
    case CellTable::Kind::Real:
        return Currency::fromDouble(cell.real);
    default:
        return exactMoney(table.text(cell));
    }
}

QVariant typedValue(const CellTable &table, const CellTable::Cell &cell, ColumnType type)
{
    switch (type) {
    case ColumnType::Key:
    case ColumnType::Long:
    case ColumnType::Integer:
        return runtime::toLong(wholeNumber(table, cell));
    case ColumnType::Flag:
        return moneyOf(table, cell) != Currency();
    case ColumnType::Money:
        return QVariant::fromValue(moneyOf(table, cell));
    case ColumnType::Number:
        return number(table, cell);
    case ColumnType::Date:
        if (cell.kind == CellTable::Kind::Text)
            return dateOf(QString::fromUtf8(table.text(cell)));
        mismatch(QString::number(number(table, cell)));
    case ColumnType::Text:
        if (cell.kind == CellTable::Kind::Text)
            return QString::fromUtf8(table.text(cell));
        return cell.kind == CellTable::Kind::Integer ? QString::number(cell.integer) : runtime::text(cell.real);
    }
    Q_UNREACHABLE();
}

QVariant keyValue(const CellTable &table, int row, int column)
{
    const bool known = table.columns()[static_cast<std::size_t>(column)].registered;
    const CellTable::Cell cell = table.cell(row, column);
    if (known || cell.kind == CellTable::Kind::Null)
        return table.value(row, column);
    return typedValue(table, cell, ColumnType::Key);
}

QVariant assigned(const QVariant &value, ColumnType type)
{
    if (!value.isValid())
        return {};
    switch (type) {
    case ColumnType::Key:
    case ColumnType::Long:
        return int{runtime::CLng(value)};
    case ColumnType::Integer:
        return int{runtime::CInt(value)};
    case ColumnType::Flag:
        return value.typeId() == QMetaType::Bool ? value.toBool() : runtime::CCur(value) != Currency();
    case ColumnType::Money:
        return QVariant::fromValue(runtime::CCur(value));
    case ColumnType::Number:
        return runtime::CDbl(value);
    case ColumnType::Date:
        return assignedDate(value);
    case ColumnType::Text:
        return assignedText(value);
    }
    Q_UNREACHABLE();
}

QVariant parameter(const QVariant &value)
{
    if (value.metaType() == QMetaType::fromType<Currency>()) {
        const Currency money = value.value<Currency>();
        if (money.scaled() % Currency::Scale == 0)
            return QVariant::fromValue<qlonglong>(money.scaled() / Currency::Scale);
        return money.toText();
    }
    switch (value.typeId()) {
    case QMetaType::UnknownType:
        return {};
    case QMetaType::Bool:
        return QVariant::fromValue<qlonglong>(value.toBool() ? 1 : 0);
    case QMetaType::Int:
    case QMetaType::LongLong:
        return QVariant::fromValue<qlonglong>(value.toLongLong());
    case QMetaType::Double:
        return value.toDouble();
    case QMetaType::QDate:
        return runtime::dateText(value.toDate());
    default:
        return runtime::text(value);
    }
}

} // namespace ado
