#pragma once

#include "components/frame/CustomerTable.h"
#include "components/frame/DayTable.h"
#include "components/frame/Report.h"

namespace statistics {

/// Amounts of a period, a row a day, week, month or customer.
class TradeReport : public Report
{
public:
    QStringList views() const override { return DayTable::grains() << QStringLiteral("고객별"); }
    int readingOf(int view) const override { return view == customerView ? 1 : 0; }
    std::vector<Figure> figures(const Period &period) override;
    std::vector<Figure> figuresOf(int view, const Period &period) override;
    bool hasCustomers(int view) const override { return view == customerView; }
    runtime::SearchTexts customers() const override { return customers_.searchTexts(); }
    int setOut(int place) override { return customers_.setOut(place); }
    bool tellsOrders() const override { return true; }
    std::optional<Behind> behind(int view, int row, int column) const override;

protected:
    static constexpr int customerView = 3; ///< behind those of the days

    enum class By { Day, Customer };
    /// Amounts of one row of a statement, whose first column is the day or the customer's key.
    using Add = std::function<void(const Record &row, std::span<const Sum> amounts)>;

    /// `result` is the amount that a row is read for.
    TradeReport(std::size_t amounts, std::size_t result)
        : result_(result)
        , days_(amounts)
        , customers_(amounts, result)
    {
    }

private:
    virtual std::vector<Figure> figuresBy(By by, const Add &add) const = 0;
    /// Those that are on show; the last amounts may go without one.
    virtual std::vector<Column> amountColumns(const std::vector<Sum> &totals) const = 0;
    virtual QString remark() const = 0;
    /// Title and captions of the days' chart, and what stands in it for the amounts of a row: one a series.
    virtual Chart dayChart() const = 0;
    virtual std::vector<Sum> bars(const std::vector<Sum> &amounts) const = 0;
    /// Fills in the statement of the orders, and what of its rows belongs to that amount of these customers.
    virtual void tellOrders(Behind &behind, std::size_t amount, const CustomerScope &customers) const = 0;

    void forget(const Period &period);
    Sheet makeSheet(int view) const override;
    void fillDays(Sheet &sheet, Grain grain) const;

    std::size_t result_;
    Period period_;
    DayTable days_;
    CustomerTable customers_;
};

} // namespace statistics
