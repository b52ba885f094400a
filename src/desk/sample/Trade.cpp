#include "desk/sample/Trade.h"

#include "platform/runtime/Format.h"

#include <QStringList>

#include <algorithm>

namespace sample {

namespace {

constexpr int GroupOrderEvery = 20'000;
constexpr int GroupOrderLines = 200;

const QString CashMethod = QStringLiteral("00");
const QString CardMethod = QStringLiteral("01");
const QString NoText = QStringLiteral(""); // an empty text, not NULL: cuts and discounts carry it as their method

/// Closed on Sundays and on the holidays that keep their date.
bool isOpenDay(QDate date)
{
    static const QStringList holidays{QStringLiteral("01-01"), QStringLiteral("03-01"), QStringLiteral("05-05"),
                                      QStringLiteral("06-06"), QStringLiteral("08-15"), QStringLiteral("10-03"),
                                      QStringLiteral("10-09"), QStringLiteral("12-25")};
    return date.dayOfWeek() != Qt::Sunday && !holidays.contains(date.toString(QStringLiteral("MM-dd")));
}

} // namespace

OrderTotals totalsOf(const Order &order, const std::vector<Product> &goods)
{
    OrderTotals totals;
    for (const Line &line : order.lines) {
        const qint64 amount = (line.price - line.discount) * line.count;
        (goods[std::size_t(line.product)].taxed ? totals.taxed : totals.taxFree) += amount;
        totals.discount += line.discount * line.count;
    }
    return totals;
}

Trade::Trade(const std::vector<Product> &goods, int patients, QDate first, QDate last, int orders)
    : goods_(goods)
    , patients_(patients)
    , first_(first)
    , last_(last)
    , orders_(orders)
    , random_(20'250'701)
    , day_(first.addDays(-1))
    , servedToday_(std::size_t(patients), 0)
{
}

std::optional<Order> Trade::next()
{
    if (made_ == orders_)
        return {};
    while (made_ >= dueToday_ && returns_[day_].empty())
        openDay();
    auto &returning = returns_[day_];
    Order order;
    if (!returning.empty()) {
        order = takeBack(returning.back());
        returning.pop_back();
    } else if (made_ % GroupOrderEvery == GroupOrderEvery - 1) {
        order = groupOrder();
    } else {
        order = sale();
    }
    ++made_;
    return order;
}

void Trade::openDay()
{
    returns_.erase(day_);
    for (int patient : served_)
        servedToday_[std::size_t(patient)] = 0;
    served_.clear();
    day_ = openDayFrom(day_.addDays(1));
    const qint64 elapsed = first_.daysTo(day_) + 1;
    const qint64 whole = first_.daysTo(last_) + 1;
    dueToday_ = day_ >= last_ ? orders_ : int(orders_ * elapsed / whole);
    // Who brings something back today has today's order by it.
    for (const Return &plan : returns_[day_]) {
        servedToday_[std::size_t(plan.patient)] = 1;
        served_.push_back(plan.patient);
    }
}

int Trade::choosePatient()
{
    // The lesser of two draws: some come often, some seldom.
    int patient = std::min(random_.below(patients_), random_.below(patients_));
    while (servedToday_[std::size_t(patient)])
        patient = (patient + 1) % patients_;
    servedToday_[std::size_t(patient)] = 1;
    served_.push_back(patient);
    return patient;
}

int Trade::chooseProduct()
{
    for (;;) {
        const int product = std::min(random_.below(int(goods_.size())), random_.below(int(goods_.size())));
        // What the shop gave up was still sold in its first months.
        if (goods_[std::size_t(product)].handled || day_ < first_.addMonths(4))
            return product;
    }
}

Line Trade::saleLine(qint64 &sum)
{
    Line line;
    line.product = chooseProduct();
    const Product &product = goods_[std::size_t(line.product)];
    // Prices went up in the new year; a line keeps the price of its day.
    line.price = day_ < QDate(last_.year(), 1, 1) ? product.price * 95 / 1'000 * 10 : product.price;
    line.count = line.price < 20'000 ? random_.between(1, 5) : random_.percent(80) ? 1 : 2;
    if (random_.percent(15))
        line.discount = line.price * random_.between(1, 3) * 5 / 100;
    if (!random_.percent(10))
        line.kind = 0;
    sum += (line.price - line.discount) * line.count;
    return line;
}

Order Trade::sale()
{
    Order order;
    order.patient = choosePatient();
    order.date = day_;
    if (!random_.percent(2))
        order.delivery = random_.percent(15) ? 2 : 1;
    static const QString courierMemos[]{QStringLiteral("경비실에 맡겨 주세요"), QStringLiteral("배송 전 전화 바랍니다"),
                                        QStringLiteral("문 앞에 놓아 주세요"), NoText};
    order.courierMemo = order.delivery == 2 ? random_.pick(courierMemos) : NoText;
    order.memo = random_.percent(5) ? QStringLiteral("명절 선물용 포장") : NoText;

    qint64 sum = 0;
    const int lines = random_.percent(55) ? 1 : random_.between(2, 4);
    for (int number = 0; number < lines; ++number)
        order.lines.push_back(saleLine(sum));
    if (random_.percent(5))
        order.lines.push_back({chooseProduct(), 0, 0, 1, 1, {}});
    if (random_.percent(2))
        order.lines.push_back({chooseProduct(), 0, 0, random_.between(1, 2), 2, {}});
    payFor(order, sum);
    if (order.outstanding == 0 && random_.percent(4))
        planReturn(order);
    return order;
}

Order Trade::groupOrder()
{
    Order order;
    order.patient = choosePatient();
    order.date = day_;
    order.delivery = 2;
    order.courierMemo = NoText;
    order.memo = QStringLiteral("단체 구매");
    qint64 sum = 0;
    for (int number = 0; number < GroupOrderLines; ++number)
        order.lines.push_back(saleLine(sum));
    order.ledger.push_back({day_, 3, sum, CardMethod, NoText});
    return order;
}

void Trade::payFor(Order &order, qint64 sum)
{
    qint64 rest = sum;
    const auto enter = [&](int operation, qint64 money, std::optional<QString> method, const QString &memo = NoText) {
        if (money == 0)
            return;
        order.ledger.push_back({order.date, operation, money, std::move(method), memo});
        rest -= money;
    };
    if (rest > 30'000 && random_.percent(12))
        enter(2, qint64(random_.between(1, 5)) * 1'000, NoText);
    enter(1, rest % 100, NoText);

    const int way = random_.below(100);
    if (way < 38) {
        enter(3, rest, random_.percent(92) ? std::optional(CashMethod) : std::nullopt);
    } else if (way < 82) {
        enter(3, rest, CardMethod, rest > 200'000 ? QStringLiteral("3개월 할부") : NoText);
    } else if (way < 90) {
        enter(3, rest / 2 / 1'000 * 1'000, CashMethod);
        enter(3, rest, CardMethod);
    } else {
        if (random_.percent(50))
            enter(3, rest / 3 / 1'000 * 1'000, random_.percent(50) ? CashMethod : CardMethod);
        order.outstanding = rest;
        if (random_.percent(65))
            payLater(order);
    }
}

void Trade::payLater(Order &order)
{
    static const QString methods[]{QStringLiteral("10"), QStringLiteral("11"), QStringLiteral("12")};
    const QDate date = openDayFrom(order.date.addDays(random_.between(3, 40)));
    if (date > last_)
        return;
    const qint64 money = random_.percent(70) ? order.outstanding : order.outstanding / 2 / 100 * 100;
    if (money == 0)
        return;
    order.ledger.push_back({date, 3, money, random_.pick(methods), NoText});
    order.outstanding -= money;
}

void Trade::planReturn(Order &order)
{
    Line &sold = order.lines.front();
    const QDate date = openDayFrom(order.date.addDays(random_.between(1, 14)));
    // The last day is full as it is.
    if (date >= last_)
        return;
    std::vector<Return> &planned = returns_[date];
    for (const Return &other : planned) {
        if (other.patient == order.patient)
            return;
    }
    Line line = sold;
    line.price = sold.price - sold.discount;
    line.discount = 0;
    line.count = -random_.between(1, sold.count);
    line.kind.reset();
    line.memo =
        QStringLiteral("▷판매날짜(%1), 물품이름(%2), 개당가격(%3), 갯수(%4), 할인가격(%5) 의(중) 반품. 메모: %6")
            .arg(runtime::dateText(order.date), goods_[std::size_t(sold.product)].name)
            .arg(sold.price)
            .arg(sold.count)
            .arg(sold.discount)
            .arg(random_.percent(50) ? QStringLiteral("단순 변심") : QStringLiteral("포장 불량"));
    sold.memo = QStringLiteral("▶%1일 (%2)개 반품").arg(runtime::dateText(date)).arg(line.count);
    const qint64 refund = -line.price * line.count;
    planned.push_back({order.patient, line, {date, 4, refund, random_.percent(50) ? CashMethod : CardMethod, NoText}});
}

Order Trade::takeBack(const Return &plan) const
{
    Order order;
    order.patient = plan.patient;
    order.date = day_;
    order.delivery = 1;
    order.courierMemo = NoText;
    order.memo = NoText;
    order.lines.push_back(plan.line);
    order.ledger.push_back(plan.refund);
    return order;
}

QDate Trade::openDayFrom(QDate date) const
{
    while (!isOpenDay(date))
        date = date.addDays(1);
    return date;
}

} // namespace sample
