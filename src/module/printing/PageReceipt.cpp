#include "printing/PageReceipt.h"

#include "platform/print/Lengths.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/Format.h"

#include <QDateTime>

using print::Align;
using print::length;

namespace {

constexpr int headRows = 9;
/// Holds one line in a row of 8 mm.
constexpr double bodyPoints = 11.25;
constexpr double datePoints = 9;

} // namespace

PageReceipt::PageReceipt(const Shape &shape)
    : shape_(shape)
    , table_(headRows, int(shape.columnWidths.size()), length(QStringLiteral("0.8cm")))
{
}

void PageReceipt::put(int row, int column, int span, const QString &text, Align align)
{
    table_.setSpan(row, column, span);
    table_.setAlign(row, column, align);
    table_.setText(row, column, text);
}

int PageReceipt::insertRow()
{
    intRow_ = runtime::toInteger(table_.appendRow());
    return intRow_;
}

void PageReceipt::addHead(const QString &customerLine)
{
    addShop();
    put(5, 1, shape_.customerSpan, customerLine);
    put(6, 1, shape_.customerSpan, QStringLiteral("[발행일]") + runtime::dateTimeText(QDateTime::currentDateTime()));
    put(7, 1, lastColumn(), shape_.headDashes);
    addColumnTitles();
    put(9, 1, lastColumn(), shape_.headDashes);
    setSizes();
}

void PageReceipt::addShop()
{
    const auto shop = [this](const char16_t *key) { return properties_.PropValue(QString::fromUtf16(key)); };
    put(1, 1, 3, runtime::Trim(shop(u"지점명")));
    table_.setBold(1, 1, true);
    put(1, 4, 3, runtime::Trim(shop(u"지점사업자번호")));
    put(2, 1, 3, QStringLiteral("대표:") + shop(u"지점대표자"));
    put(3, 1, 6, shop(u"지점주소"));
    put(4, 1, 3, shop(u"지점전화번호"));
    put(4, 4, 3, shop(u"홈페이지주소"));
}

void PageReceipt::addColumnTitles()
{
    if (shape_.nameColumn > 1)
        put(8, 1, 1, QStringLiteral("날짜"));
    put(8, shape_.nameColumn, 2, QStringLiteral("상품명"));
    int column = shape_.nameColumn + 2;
    for (const char16_t *title : {u"단가", u"할인", u"수량", u"금액"})
        put(8, column++, 1, QString::fromUtf16(title), Align::Right);
}

void PageReceipt::setSizes()
{
    for (int row = 1; row < headRows; ++row)
        table_.setRowHeight(row, length(QStringLiteral("1cm")));
    for (int row : {7, 9})
        table_.setRowHeight(row, length(QStringLiteral("0.5cm")));
    for (int column = 1; column <= lastColumn(); ++column)
        table_.setColumnWidth(column, length(QString::fromUtf16(shape_.columnWidths[std::size_t(column) - 1])));
}

void PageReceipt::addLine(const receipt::Line &line, const QString &dateText)
{
    sums_.add(line);
    const int unitColumn = shape_.nameColumn + 2;

    int row = insertRow();
    if (shape_.nameColumn > 1) {
        put(row, 1, 1, dateText);
        table_.setPoints(row, 1, datePoints);
    }
    put(row, shape_.nameColumn, 2, line.number() + QLatin1Char(' ') + line.name);
    put(row, unitColumn, 1, line.kind, Align::Right);

    row = insertRow();
    put(row, shape_.nameColumn, 2, line.category);
    table_.setAlign(row, unitColumn, lastColumn(), Align::Right);
    table_.setText(row, unitColumn, receipt::money(line.curUnit));
    table_.setText(row, unitColumn + 1, receipt::money(line.curDisc));
    table_.setText(row, unitColumn + 2, QString::number(line.intCount));
    table_.setText(row, unitColumn + 3, receipt::money(line.amount()));
}

void PageReceipt::addDashes(bool right)
{
    const int row = insertRow();
    put(row, 1, lastColumn(), shape_.moneyDashes, right ? Align::Right : Align::Left);
    table_.setRowHeight(row, length(QStringLiteral("1cm")));
}

void PageReceipt::addMoney(const QString &label, runtime::Currency amount, bool bold)
{
    const int row = insertRow();
    put(row, shape_.moneyLabel, 3, label, Align::Right);
    put(row, shape_.moneyLabel + 3, 3, receipt::money(amount), Align::Right);
    for (int column : {shape_.moneyLabel, shape_.moneyLabel + 3})
        table_.setBold(row, column, bold);
    table_.setRowHeight(row, length(QStringLiteral("1cm")));
}

void PageReceipt::addMoneyRows(const receipt::LedgerTotals &totals)
{
    addDashes(false);
    // Quirk (docs/architecture.md): aims at the head's last row instead of the new one; the page does not change.
    table_.setAlign(headRows, 1, Align::Left);
    addMoney(QStringLiteral("부가세 과세 물품가액"), sums_.curTaxed, false);
    addMoney(QStringLiteral("부가세 면세 물품가액"), sums_.curFree, false);
    addMoney(QStringLiteral("물품가액 합계"), sums_.curTaxed + sums_.curFree, true);
    addDashes(true);
    addDashes(true);
    addMoney(QStringLiteral("물품가액 현금수납"), totals.curCash, true);
    addMoney(QStringLiteral("물품가액 카드수납"), totals.curCard, true);
    addMoney(QStringLiteral("할 인"), totals.curHalin, false);
    addMoney(QStringLiteral("절 사"), totals.curJeolsa, false);
    addMoney(QStringLiteral("환 불"), totals.curRefund, false);
    table_.setRowHeight(insertRow(), length(QStringLiteral("1.5cm")));
    put(insertRow(), 1, lastColumn(), properties_.PropValue(QStringLiteral("영수증고객안내문")));
}

print::Document PageReceipt::take()
{
    const double side = length(QStringLiteral("1.5cm"));
    const double end = length(QStringLiteral("2cm"));
    print::Document document(print::A4, {side, end, side, end});
    document.setFont({QStringLiteral("굴림"), bodyPoints, false});
    document.addTable(table_);
    return document;
}
