#pragma once

#include "products/ProductOperations.h"
#include "sales/OrderSave.h"
#include "sales/RefundOperations.h"
#include "session/SaleSession.h"
#include "trials/desk/Journal.h"

#include <functional>
#include <random>

namespace trial {

/// A clerk at a desk without a screen: visits patients and sells, takes money, edits, takes back and deletes by the
/// operations that the panes call, on gcnnMasterDB, as fast as the desk allows.
///
/// Each row that is added carries a number used once in the whole trial: a line in its discount, a return row in its
/// price, a ledger row in its money, a new order in its address, an edit in its memo, a product in its own memo. Only rows
/// of the trial are touched.
class Clerk
{
public:
    struct Task
    {
        unsigned seed = 1;
        qint64 firstToken = 1;
        qint32 ordersBefore = 0; ///< highest order key from before the trial
        qint32 productsBefore = 0;
        int patients = 0; ///< keys 1 to this
        int crowding = 0; ///< percent of the visits that all desks pay to the same patient
    };

    Clerk(const Task &task, Journal &journal);
    ~Clerk();

    /// One patient, a few operations.
    void visit();

private:
    using Work = std::function<Outcome()>;

    void openPatient(int key);
    void openOrder(qint32 key);
    void openProducts();
    /// Those that the trial added, as this desk's list knows them.
    std::vector<qint32> trialProducts() const;
    std::vector<qint32> ordersOfTrial() const;
    void act();

    void sellOnNewOrder();
    void sell();
    void takeBack();
    void deleteLine();
    void editOrder();
    void deleteOrder();
    void takeMoney();
    void payFirst();
    void payFurther();
    void addEntry();
    void changeEntry();
    void deleteEntry();
    void collect();
    void addProduct();
    void deleteProduct();
    void owe(qint64 won);

    /// Runs an operation between two lines of the journal; true when it was acknowledged.
    bool perform(const char *kind, Numbers numbers, const Work &work);
    void noteOrderOf(qint64 token);
    EntryLine lineFor(qint64 token);
    ShownOrder shown() const { return {OrderKey(order_), session_.customer.key(), {}}; }
    bool standOn(SaleSession::RecordsetPtr &rows, const QString &source,
                 const std::function<bool(const ado::Recordset &)> &fits);

    int roll(int below) { return int(random_() % unsigned(below)); }
    qint64 next() { return token_++; }
    QDate day() { return QDate(2026, 11, 1).addDays(roll(20)); }

    const Task task_;
    Journal &journal_;
    std::mt19937 random_;
    qint64 token_;
    SaleSession session_;
    OrderOperations sales_{session_};
    OrderSave save_{session_};
    RefundOperations returns_{session_};
    ProductOperations products_{session_};
    qint32 order_ = 0; ///< stood on; 0 none
    qint64 seen_ = 0;  ///< when the first of the rows in hand was read
};

} // namespace trial
