#pragma once

#include "components/frame/DayTable.h"
#include "components/frame/Report.h"

#include <array>
#include <map>

namespace statistics {

/// Statements over what head-office.sql makes. [FROM] and [TO] are numbers of clinics.
namespace chain {
/// number, name.
QString clinics();
QString bounds();
/// clinic, day, the amounts as ChainReport::amountsOf reads them, trouble: a clinic without rows has one that tells why.
QString trade();
/// clinic, products, pieces, worth, short (products of which less than nothing is left), trouble.
QString stock();
} // namespace chain

/// All clinics of a chain side by side, or day by day together. One that cannot be reached is named, and in no sum.
class ChainReport : public Report
{
public:
    enum Amount {
        Orders,
        Sold,
        Discount,
        Returned,
        Net,
        Cash,
        Card,
        Bank,
        Refunded,
        Received,
        PaidDiscount,
        Cut,
        Outstanding,
        Amounts
    };
    using Sums = std::array<Sum, Amounts>;

    ChainReport()
        : days_(Amounts)
    {
    }

    QString title() const override { return QStringLiteral("체인 통계"); }
    QStringList views() const override;
    int readingOf(int view) const override { return view == stockView() ? 1 : 0; }
    QString lastDayStatement() const override;
    std::vector<Figure> figures(const Period &period) override;
    std::vector<Figure> figuresOf(int view, const Period &period) override;

    static Sums amountsOf(const Record &row);

private:
    enum Shelf { Products, Pieces, Worth, Short, Shelves };
    struct Clinic
    {
        QString name;
        QString trouble; ///< why there are no figures; empty where there are
        std::vector<Sum> sums = std::vector<Sum>(Amounts);
        std::array<Sum, Shelves> shelf{};
    };

    int stockView() const { return int(views().size()) - 1; }
    void forget(const Period &period);
    Figure clinics();
    /// Reads clinic by clinic; `take` gets the rows of those that answer.
    Figure byClinic(const QString &statement, int troubleColumn,
                    std::function<void(Clinic &clinic, const Record &row)> take);

    Sheet makeSheet(int view) const override;
    void fillClinics(Sheet &sheet) const;
    void fillDays(Sheet &sheet, Grain grain) const;
    void fillStock(Sheet &sheet) const;
    /// A row of each clinic in the order in which they were added, its state at the end; the totals of those that answered.
    void fillRows(Sheet &sheet, const std::function<std::vector<Sum>(const Clinic &)> &amountsOf) const;
    QString whoIsMissing() const;

    std::map<int, Clinic> clinics_; ///< by number
    DayTable days_;
};

} // namespace statistics
