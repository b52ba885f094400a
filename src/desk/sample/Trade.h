#pragma once

#include "desk/sample/Catalogue.h"
#include "desk/sample/Random.h"

#include <QDate>
#include <QString>

#include <map>
#include <optional>
#include <vector>

namespace sample {

/// A line of an order; amounts in won.
struct Line
{
    int product = 0; ///< index into the goods
    qint64 price = 0;
    qint64 discount = 0; ///< per unit
    int count = 0;       ///< negative in a return
    std::optional<int> kind;
    QString memo;
};

/// A row of the money ledger; the amount in won, positive.
struct LedgerRow
{
    QDate date;
    int operation = 0; ///< 1 cut, 2 discount, 3 payment, 4 refund
    qint64 money = 0;
    std::optional<QString> method;
    QString memo;
};

struct Order
{
    int patient = 0; ///< index into the patients
    QDate date;
    std::optional<int> delivery; ///< 1 direct, 2 courier
    QString courierMemo;
    QString memo;
    std::vector<Line> lines;
    std::vector<LedgerRow> ledger;
    qint64 outstanding = 0;
};

struct OrderTotals
{
    qint64 taxed = 0;
    qint64 taxFree = 0;
    qint64 discount = 0;
    qint64 total() const { return taxed + taxFree; }
};

OrderTotals totalsOf(const Order &order, const std::vector<Product> &goods);

/// The trade of a shop from its first to its last day: orders in the order of their dates, at most one a day and patient.
class Trade
{
public:
    /// `patients` is the number of those who ever buy.
    Trade(const std::vector<Product> &goods, int patients, QDate first, QDate last, int orders);

    /// The next order; nothing after the last.
    std::optional<Order> next();

private:
    /// A line that comes back later.
    struct Return
    {
        int patient;
        Line line;
        LedgerRow refund;
    };

    void openDay();
    int choosePatient();
    int chooseProduct();
    Line saleLine(qint64 &sum);
    Order sale();
    Order groupOrder();
    void payFor(Order &order, qint64 sum);
    void payLater(Order &order);
    void planReturn(Order &order);
    Order takeBack(const Return &plan) const;
    QDate openDayFrom(QDate date) const;

    const std::vector<Product> &goods_;
    const int patients_;
    const QDate first_;
    const QDate last_;
    const int orders_;
    Random random_;
    QDate day_;
    int made_ = 0;
    int dueToday_ = 0; ///< orders made when the day ends
    std::vector<char> servedToday_;
    std::vector<int> served_; ///< whose marks to clear
    std::map<QDate, std::vector<Return>> returns_;
};

} // namespace sample
