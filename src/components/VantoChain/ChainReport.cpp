#include "components/VantoChain/ChainReport.h"

#include <algorithm>

namespace statistics {

namespace {

using Kind = Column::Kind;

struct ChainColumn
{
    const char16_t *caption;
    Kind kind;
    int width;
};

/// In the order of ChainReport::Amount.
constexpr ChainColumn tradeColumns[] = {
    {u"거래건수", Kind::Number, 60}, {u"판매금액", Kind::Money, 90}, {u"할인", Kind::Money, 76},
    {u"반품금액", Kind::Money, 84},  {u"순매출", Kind::Money, 92},   {u"현금", Kind::Money, 88},
    {u"카드", Kind::Money, 88},      {u"통장", Kind::Money, 80},     {u"환불", Kind::Money, 74},
    {u"순수납", Kind::Money, 92},    {u"수납할인", Kind::Money, 72}, {u"절사", Kind::Money, 56},
    {u"미수금", Kind::Money, 84},
};
static_assert(std::size(tradeColumns) == ChainReport::Amounts);

/// In the order of ChainReport::Shelf.
constexpr ChainColumn stockColumns[] = {{u"재고품목", Kind::Number, 80},
                                        {u"재고수량", Kind::Number, 90},
                                        {u"재고금액", Kind::Money, 120},
                                        {u"마이너스 품목", Kind::Number, 100}};

const ChainColumn clinicColumn{u"지점", Kind::Text, 130};
const ChainColumn stateColumn{u"상태", Kind::Text, 84};

Column shown(const ChainColumn &column)
{
    return {QString::fromUtf16(column.caption), column.kind, column.width};
}

/// A server's class of errors about the way to it, and its own words at its end.
bool isAway(const QString &trouble)
{
    return trouble.startsWith(QLatin1String("08")) || trouble.startsWith(QLatin1String("57P"));
}

} // namespace

QString chain::clinics()
{
    return QStringLiteral("SELECT number, name FROM chain.clinic");
}

QString chain::bounds()
{
    return QStringLiteral("SELECT MIN(number) AS Lowest, MAX(number) AS Highest FROM chain.clinic");
}

QString chain::trade()
{
    return QStringLiteral(
        "SELECT clinic, day, orders, outstanding, sold, discount, returned, returned_discount, taken, "
        "card, bank, refunded, discounts, cuts, trouble FROM chain.trade([FROM], [TO], '[FIRST]', "
        "'[LAST]')");
}

QString chain::stock()
{
    return QStringLiteral("SELECT clinic, products, pieces, worth, short, trouble FROM chain.stock([FROM], [TO])");
}

ChainReport::Sums ChainReport::amountsOf(const Record &row)
{
    enum At {
        OrdersAt = 2,
        OutstandingAt,
        SoldAt,
        DiscountAt,
        ReturnedAt,
        ReturnedDiscountAt,
        TakenAt,
        CardAt,
        BankAt,
        RefundedAt,
        DiscountsAt,
        CutsAt
    };
    Sums sums{};
    sums[Orders] = row.amount(OrdersAt);
    sums[Outstanding] = row.amount(OutstandingAt);
    sums[Sold] = row.amount(SoldAt);
    sums[Discount] = row.amount(DiscountAt);
    sums[Returned] = row.amount(ReturnedAt) - row.amount(ReturnedDiscountAt);
    sums[Net] = sums[Sold] - sums[Discount] + sums[Returned];
    sums[Card] = row.amount(CardAt);
    sums[Bank] = row.amount(BankAt);
    sums[Cash] = row.amount(TakenAt) - sums[Card] - sums[Bank];
    sums[Refunded] = -row.amount(RefundedAt);
    sums[Received] = row.amount(TakenAt) + sums[Refunded];
    sums[PaidDiscount] = row.amount(DiscountsAt);
    sums[Cut] = row.amount(CutsAt);
    return sums;
}

QStringList ChainReport::views() const
{
    return QStringList(QStringLiteral("지점별")) + DayTable::grains() + QStringList(QStringLiteral("재고"));
}

/// The head office need not sell anything itself.
QString ChainReport::lastDayStatement() const
{
    return QStringLiteral("SELECT CAST('[TO]' AS date) AS LastDay");
}

void ChainReport::forget(const Period &period)
{
    clinics_.clear();
    days_.clear(period);
}

Figure ChainReport::clinics()
{
    Figure figure{chain::clinics()};
    figure.take = [this](const Record &row) { clinics_[row.key(0)].name = row.text(1); };
    return figure;
}

Figure ChainReport::byClinic(const QString &statement, int troubleColumn,
                             std::function<void(Clinic &clinic, const Record &row)> take)
{
    Figure figure{statement, Figure::Slices::Keys, chain::bounds()};
    figure.firstKeys = 1; // who is waited for holds the window
    figure.take = [this, troubleColumn, take = std::move(take)](const Record &row) {
        Clinic &clinic = clinics_[row.key(0)];
        if (row.isNull(troubleColumn))
            take(clinic, row);
        else
            clinic.trouble =
                isAway(row.text(troubleColumn)) ? QStringLiteral("연결 안 됨") : QStringLiteral("확인 필요");
    };
    return figure;
}

std::vector<Figure> ChainReport::figures(const Period &period)
{
    constexpr int trouble = 14;
    forget(period);
    return {clinics(), byClinic(chain::trade(), trouble, [this](Clinic &clinic, const Record &row) {
                const Sums sums = amountsOf(row);
                for (std::size_t amount = 0; amount < Amounts; ++amount)
                    clinic.sums[amount] += sums[amount];
                days_.add(row.date(1), sums);
            })};
}

std::vector<Figure> ChainReport::figuresOf(int view, const Period &period)
{
    constexpr int trouble = 5;
    if (view != stockView())
        return figures(period);
    forget(period);
    return {clinics(), byClinic(chain::stock(), trouble, [](Clinic &clinic, const Record &row) {
                for (int amount = 0; amount < Shelves; ++amount)
                    clinic.shelf[std::size_t(amount)] = row.amount(amount + 1);
            })};
}

Sheet ChainReport::makeSheet(int view) const
{
    Sheet sheet;
    if (view == 0)
        fillClinics(sheet);
    else if (view == stockView())
        fillStock(sheet);
    else
        fillDays(sheet, Grain(view - 1));
    sheet.remark = whoIsMissing() + sheet.remark;
    return sheet;
}

void ChainReport::fillRows(Sheet &sheet, const std::function<std::vector<Sum>(const Clinic &)> &amountsOf) const
{
    sheet.columns.insert(sheet.columns.begin(), shown(clinicColumn));
    sheet.columns.push_back(shown(stateColumn));
    std::vector<Sum> totals(sheet.columns.size() - 2);
    for (const auto &[number, clinic] : clinics_) {
        Row row{clinic.name};
        if (clinic.trouble.isEmpty()) {
            const std::vector<Sum> amounts = amountsOf(clinic);
            row = rowOfAmounts(clinic.name, amounts);
            for (std::size_t column = 0; column < totals.size(); ++column)
                totals[column] += amounts[column];
        }
        row.resize(sheet.columns.size());
        row.back() = clinic.trouble;
        sheet.rows.push_back(std::move(row));
        sheet.chart.categories << clinic.name;
    }
    sheet.totals = rowOfAmounts(QStringLiteral("합계"), totals);
    sheet.totals.resize(sheet.columns.size());
    sheet.chart.lying = true;
    const auto result = std::ranges::find(sheet.columns, sheet.chart.series.front().caption, &Column::caption);
    for (const Row &row : sheet.rows)
        sheet.chart.series.front().values.push_back(Sum::of(row[std::size_t(result - sheet.columns.begin())]).orZero());
}

void ChainReport::fillClinics(Sheet &sheet) const
{
    std::ranges::transform(tradeColumns, std::back_inserter(sheet.columns), shown);
    sheet.chart.title = QStringLiteral("지점별 순매출");
    sheet.chart.series = {{QStringLiteral("순매출"), {}}};
    fillRows(sheet, [](const Clinic &clinic) { return clinic.sums; });
    sheet.remark = QStringLiteral("순매출 = 판매금액 − 할인 + 반품금액. 미수금은 기간의 거래에 남은 금액입니다.");
}

void ChainReport::fillDays(Sheet &sheet, Grain grain) const
{
    sheet.columns = {{QStringLiteral("날짜"), Kind::Text, 128}};
    std::ranges::transform(tradeColumns, std::back_inserter(sheet.columns), shown);
    sheet.chart.title = QStringLiteral("체인 순매출");
    sheet.chart.series = {{QStringLiteral("순매출"), {}}};
    const std::vector<DayTable::Line> lines = days_.lines(grain);
    for (const DayTable::Line &line : lines) {
        sheet.rows.push_back(rowOfAmounts(rowCaption(line.period, grain), line.amounts));
        sheet.chart.categories << barCaption(line.period, grain);
        sheet.chart.places.push_back(calendarPlace(line.period, grain));
        sheet.chart.series.front().values.push_back(line.amounts[Net].orZero());
    }
    sheet.totals = rowOfAmounts(QStringLiteral("합계"), days_.totals());
    sheet.remark = QStringLiteral("순매출 = 판매금액 − 할인 + 반품금액. 미수금은 그날의 거래에 남은 금액입니다.");
}

void ChainReport::fillStock(Sheet &sheet) const
{
    std::ranges::transform(stockColumns, std::back_inserter(sheet.columns), shown);
    sheet.chart.title = QStringLiteral("지점별 재고금액");
    sheet.chart.series = {{QStringLiteral("재고금액"), {}}};
    fillRows(sheet, [](const Clinic &clinic) { return std::vector<Sum>(clinic.shelf.begin(), clinic.shelf.end()); });
    sheet.remark = QStringLiteral("기간에 관계없이 현재 재고입니다. 재고금액은 최근 구매단가로 계산합니다.");
}

QString ChainReport::whoIsMissing() const
{
    QStringList missing;
    for (const auto &[number, clinic] : clinics_) {
        if (!clinic.trouble.isEmpty())
            missing << clinic.name;
    }
    if (missing.isEmpty())
        return {};
    return QStringLiteral("합계에 없는 지점: %1.   ").arg(missing.join(QStringLiteral(", ")));
}

} // namespace statistics
