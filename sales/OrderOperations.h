#pragma once

#include "platform/runtime/Currency.h"
#include "session/SaleSession.h"

#include <QDate>
#include <QString>

#include <functional>
#include <utility>

/// How a flow ended; the numbers are those of the system's private routines.
enum class Outcome : std::int16_t {
    Failed = -1, ///< a trapped error; the caller shows its failure text
    Stopped = 0, ///< stopped early, nothing to tell
    Done = 1,
};

/// Told instead of adding a line, where foundChangedAfterLoss().
inline const QString changedAfterLoss =
    QStringLiteral("서버와 연결이 끊어진 동안 목록이 바뀌었습니다.\n목록을 확인한 뒤 다시 하십시오.");

/// What the entry pane holds when a line is added. The texts are converted where the line is written.
struct EntryLine
{
    std::int16_t intSellType = 0; ///< 0 normal sale, 1 service, 2 loss; the code of OrdD_OrderType
    QString unitDiscount;         ///< money text
    QString quantity;
};

/// What the order pane holds when its edit is saved.
struct OrderEdit
{
    QString address;
    QString cell;
    QString telephone;
    QString takbaeMemo;
    QString memo;
    QString discountTotal; ///< money text
    QString outstanding;   ///< money text
    bool takbae = false;
    QDate date;
};

/// The flows of a sale that write to the database, without a screen. They work on the session's recordsets and on
/// gcnnMasterDB, show nothing and raise nothing. A step fails as a whole; the steps of one flow are not one transaction:
/// an order can stay behind without the line that was to follow.
class OrderOperations
{
public:
    using Clock = std::function<QDate()>;

    /// The session outlives the operations. `today` tells the date of new orders.
    explicit OrderOperations(
        SaleSession &session, Clock today = [] { return QDate::currentDate(); });
    void setToday(Clock today) { today_ = std::move(today); }

    /// To be asked before a line is added. After a lost server that could not be asked since: reads the lists again, and
    /// tells whether there are other rows than those on view. The last line may be among them.
    bool foundChangedAfterLoss();

    /// Creates today's order for the session's customer and puts the line of the current product on it: on the first
    /// order of that date that the server gives.
    Outcome addDetailToNewOrder(const EntryLine &line);
    /// Puts the line on the current order of rsCustSaleMaster, whatever its date.
    Outcome addDetailToSelectedOrder(const EntryLine &line);
    /// Orders of the customer on the date, at most 32,767; -1 when they could not be counted.
    std::int16_t countTodayOrders(std::int32_t lngCustPK, const QDate &date);
    std::int16_t countTodayOrders() { return countTodayOrders(session_.customer.lngCustPK, today_()); }

    /// A return row on the order: price and negative quantity as given, the remark goes out as it is.
    Outcome addRefundOrderDetail(std::int32_t lngOrdMPK, std::int32_t lngPMPK, runtime::Currency curPrice,
                                 std::int16_t intCount, const QString &strMemo);
    /// The same on a new order of the return date.
    Outcome addToNewRefundOrder(const QDate &dtRefund, std::int32_t lngPMPK, runtime::Currency curPrice,
                                std::int16_t intCount, const QString &strMemo);
    /// Key of the customer's first order of the date, -1 when there is none or it could not be looked up.
    std::int32_t findOrderByDate(std::int32_t lngCustPK, const QDate &date);

    /// Writes the edit to the current order.
    Outcome saveOrder(const OrderEdit &edit);
    /// Deletes the current order with its details and ledger rows; after a failure all of them stand as before.
    Outcome deleteOrder();
    /// Deletes the current detail and sums the current order anew. The ledger is left alone, so a paid order can end up
    /// with money beyond its total.
    Outcome deleteDetail();

private:
    /// Creates an order and adds a line to the first order of its date.
    Outcome onNewOrder(const QDate &date, const std::function<Outcome(std::int32_t lngOrdMPK)> &addLine);
    void createOrder(const QDate &date);
    std::int32_t orderKeyOf(const QDate &date) const;
    QString insertStatement(std::int32_t lngOrdMPK, const EntryLine &line, const QString &unitDiscount) const;
    Outcome recalculate(std::int32_t lngOrdMPK);

    SaleSession &session_;
    Clock today_;
};
