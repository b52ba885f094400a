#include "components/frame/OrderList.h"

#include "platform/runtime/Format.h"

#include <algorithm>
#include <set>

namespace statistics {

namespace {

constexpr qsizetype keysAtOnce = 100;

/// The statement for some of the keys at a time, in the place of [KEYS].
void addInPortions(std::vector<Figure> &figures, const QString &statement, const std::set<int> &keys,
                   const std::function<void(const Record &)> &take)
{
    QStringList portion;
    const auto finish = [&] {
        Figure figure{QString(statement).replace(QStringLiteral("[KEYS]"), portion.join(u','))};
        figure.take = take;
        figures.push_back(figure);
        portion.clear();
    };
    for (const int key : keys) {
        portion << QString::number(key);
        if (portion.size() == keysAtOnce)
            finish();
    }
    if (!portion.isEmpty())
        finish();
}

} // namespace

OrderList::OrderList(Behind behind)
    : behind_(std::move(behind))
{
}

std::vector<Figure> OrderList::orders()
{
    Figure orders = behind_.orders;
    orders.take = [this](const Record &row) {
        const Sum amount = behind_.amount(row);
        if (amount == Sum())
            return;
        Sum &sum = amounts_[{row.date(2), row.key(0), row.key(1)}];
        sum += amount;
    };
    return {orders};
}

std::vector<Figure> OrderList::details()
{
    std::erase_if(amounts_, [](const auto &entry) { return entry.second == Sum(); });
    std::set<int> orders, customers;
    std::size_t shown = 0;
    for (auto at = amounts_.begin(); at != amounts_.end() && shown < mostShown; ++at, ++shown) {
        orders.insert(at->first.order);
        customers.insert(at->first.customer);
    }
    std::vector<Figure> figures;
    addInPortions(figures, QStringLiteral("SELECT Customer_PK, sn, name FROM Customer WHERE Customer_PK IN ([KEYS])"),
                  customers, [this](const Record &row) {
                      customers_[row.key(0)] = {row.text(1), row.text(2)};
                  });
    addInPortions(figures,
                  QStringLiteral("SELECT OrdM_PK, PM_Name, OrdD_Count, tPSOrderDetail.PM_PK FROM tPSOrderDetail LEFT "
                                 "JOIN tPSProductMaster ON tPSOrderDetail.PM_PK = tPSProductMaster.PM_PK "
                                 "WHERE OrdM_PK IN ([KEYS]) ORDER BY OrdM_PK, OrdD_PK"),
                  orders, [this](const Record &row) {
                      const QString name =
                          row.isNull(1) ? QStringLiteral("(삭제된 물품 %1)").arg(row.key(3)) : row.text(1);
                      goods_[row.key(0)] << name + u' ' + shownText(row.amount(2));
                  });
    return figures;
}

bool OrderList::isWhole() const
{
    Sum sum;
    for (const auto &[key, amount] : amounts_)
        sum += amount;
    return Cell(sum) == behind_.figure;
}

Row OrderList::rowOf(const Key &key, const Sum &amount) const
{
    const auto customer = customers_.find(key.customer);
    const auto goods = goods_.find(key.order);
    const bool isKnown = customer != customers_.end();
    return {runtime::dateText(key.day), isKnown ? customer->second.chart : QString(),
            isKnown             ? customer->second.name
            : key.customer == 0 ? QStringLiteral("(고객 없음)")
                                : QStringLiteral("(삭제된 고객 %1)").arg(key.customer),
            key.order == 0          ? QStringLiteral("(거래가 아닌 수납)")
            : goods != goods_.end() ? goods->second.join(QStringLiteral(", "))
                                    : QString(),
            amount};
}

Sheet OrderList::sheet() const
{
    Sheet sheet;
    sheet.columns = {{QStringLiteral("날짜"), Column::Kind::Text, 90},
                     {QStringLiteral("챠트번호"), Column::Kind::Text, 70},
                     {QStringLiteral("이름"), Column::Kind::Text, 90},
                     {QStringLiteral("판매 내역"), Column::Kind::Text, 400},
                     behind_.column};
    Sum total, others;
    for (const auto &[key, amount] : amounts_) {
        total += amount;
        if (sheet.rows.size() < mostShown)
            sheet.rows.push_back(rowOf(key, amount));
        else
            others += amount;
    }
    if (const std::size_t left = amounts_.size() - sheet.rows.size(); left > 0)
        sheet.rows.push_back(
            {QStringLiteral("그 외 %1건").arg(shownText(runtime::Currency::fromWon(std::int64_t(left)))),
             {},
             {},
             {},
             others});
    sheet.totals = {QStringLiteral("합계"), {}, {}, {}, total};
    return sheet;
}

} // namespace statistics
