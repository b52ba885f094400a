#pragma once

#include "platform/ado/Foresight.h"
#include "platform/runtime/Currency.h"
#include "session/SaleSession.h"
#include "session/ShownOrder.h"

#include <QDate>
#include <QString>

#include <functional>
#include <utility>

/// How a flow ended; the numbers are those of the system's private routines.
enum class Outcome : qint16 {
    ProductGone = -3, ///< failed, since another desk deleted the product: the list of products is to be read anew
    Conflict = -2,    ///< failed, since another desk changed or deleted the row: the lists are to be read anew
    Failed = -1,      ///< a trapped error; the caller shows its failure text
    Stopped = 0,      ///< stopped early, nothing to tell
    Done = 1,
};

inline bool hasFailed(Outcome outcome)
{
    return outcome < Outcome::Stopped;
}

/// Shown instead of adding a line when foundChangedAfterLoss().
inline const QString changedAfterLoss =
    QStringLiteral("서버와 연결이 끊어진 동안 목록이 바뀌었습니다.\n목록을 확인한 뒤 다시 시도하십시오.");

/// What the entry pane holds when a line is added. The texts are converted where the line is written.
struct EntryLine
{
    qint16 intSellType = 0; ///< a sale::LineType
    QString unitDiscount;   ///< money text
    QString quantity;
    ProductKey product;
    QVariant unitPrice; ///< of the product's row; the line's price, whatever the pane shows
    QString name = {};  ///< of the product, to tell what was done
};

/// The flows of a sale that write to the database, without a screen. They work on the session's recordsets and on
/// gcnnMasterDB, show nothing and raise nothing. Each step is one transaction, a flow several: a new order can stay
/// behind without its line.
class OrderOperations
{
public:
    using Clock = std::function<QDate()>;

    /// The session outlives the operations. `today` tells the date of new orders.
    explicit OrderOperations(
        SaleSession &session, Clock today = [] { return QDate::currentDate(); });
    void setToday(Clock today) { today_ = std::move(today); }

    /// Call before a line is added. If the server was lost during the last change and not read since, reads the lists
    /// again; true when they differ from the screen, for the last line may have been saved after all.
    bool foundChangedAfterLoss();

    /// Copies key and price of the current product of the sale list, which must exist.
    void takeCurrentProduct(EntryLine &line) const;
    /// The current order of rsCustSaleMaster; no key when there is none or another desk deleted it.
    ShownOrder currentOrder() const;
    /// Creates today's order, then adds the line to the first order of today that the server gives, which need not be
    /// the new one. An empty unit discount counts as 0. Whoever shows the orders once more behind it, or behind the next, keeps
    /// a Foresight over both.
    Outcome addDetailToNewOrder(const EntryLine &line);
    /// Adds the line to the order, whatever its date. An empty unit discount fails.
    Outcome addDetailToSelectedOrder(const ShownOrder &order, const EntryLine &line);
    /// Orders of the customer on the date, at most 32,767; -1 when they could not be counted.
    qint16 countTodayOrders(CustomerKey customer, const QDate &date);
    qint16 countTodayOrders() { return countTodayOrders(session_.customer.key(), today_()); }

    /// Adds a return line: `intCount` is negative, and a ' in `strMemo` makes the statement fail.
    Outcome addRefundOrderDetail(const ShownOrder &order, ProductKey product, runtime::Currency curPrice,
                                 qint16 intCount, const QString &strMemo);
    /// The same on a new order of the return date.
    Outcome addToNewRefundOrder(const QDate &dtRefund, ProductKey product, runtime::Currency curPrice, qint16 intCount,
                                const QString &strMemo);
    /// The customer's first order of the date; no key when there is none or the look-up failed.
    OrderKey findOrderByDate(CustomerKey customer, const QDate &date);
    /// What that reads.
    static void tellOrderByDate(ado::Foresight &next, CustomerKey customer, const QDate &date);

    /// Deletes the order with its details and ledger rows; after a failure all of them stand as before. Conflict when they
    /// are not those that the lists of the order show.
    Outcome deleteOrder(const ShownOrder &order);
    /// Deletes the detail and sums its order anew. The ledger is left alone, so a paid order can end up with money beyond
    /// its total.
    Outcome deleteDetail(OrderKey order, LineKey line);

    /// The order that was summed last.
    OrderKey lastOrder() const { return lastOrder_; }
    /// Its total as the list of orders shows it, "₩415,000"; "-" where it is not there.
    QString totalShown(OrderKey order) const;

private:
    /// Whether the caller shows the orders once more behind the operation: then that is asked for with the commit, too.
    enum class Shown { Here, OnceMore };

    /// Creates an order and adds a line to the first order of its date.
    Outcome onNewOrder(const QDate &date, const std::function<Outcome(const ShownOrder &)> &addLine);
    void createOrder(const QDate &date);
    ShownOrder orderOf(const QDate &date) const;
    QString orderStatement(const QDate &date) const;
    void holdAsShown(ado::Connection &connection, const ShownOrder &order) const;
    QString insertStatement(OrderKey order, const EntryLine &line, const QString &unitDiscount) const;
    Outcome addLine(const ShownOrder &order, ProductKey product, const QString &statement, Shown shown);
    Outcome recalculate(OrderKey order, Shown shown);

    SaleSession &session_;
    Clock today_;
    OrderKey lastOrder_;
};
