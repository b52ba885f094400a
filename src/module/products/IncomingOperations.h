#pragma once

#include "products/RecordSave.h"
#include "session/Keys.h"
#include "session/SaleSession.h"

#include <QDate>
#include <QString>

/// What the panel of a purchase holds when it is saved.
struct IncomingEdit
{
    QString companyTag; ///< key of the dealer last chosen in the panel, empty for none
    QString count;      ///< read as far as it is a number
    QString unitPrice;  ///< money texts
    QString halinTotal;
    QString total;
    QString memo;
    QDate date;
};

/// The flows that write purchases, without a screen: on rsProductIncoming, which is open, and on gcnnMasterDB. They show
/// nothing.
///
/// Quirk (docs/architecture.md): unlike those of products and dealers they trap nothing. An error leaves them with the
/// transaction open, and the event's edge rolls it back.
class IncomingOperations
{
public:
    /// The session outlives the operations.
    explicit IncomingOperations(SaleSession &session);

    /// Saves a new purchase of the product. Refused without a dealer, TooMuch for a quantity of more than nine digits,
    /// before anything is begun. Raises RuntimeError, a Conflict when product or dealer are gone; saved again after that,
    /// the purchase is stored once.
    SaveOutcome add(ProductKey product, const IncomingEdit &edit);
    /// The same for a purchase of the list, wherever the list stands. It stays one of its product and takes the dealer of
    /// the edit, not the one it had.
    SaveOutcome change(IncomingKey purchase, const IncomingEdit &edit);
    /// Deletes the purchase. Raises RuntimeError; a failed deletion leaves the row.
    void remove(IncomingKey purchase);

private:
    void find(IncomingKey purchase);
    void save(const QVariant &product, DealerKey dealer, const IncomingEdit &edit);

    SaleSession &session_;
};

/// Whether a quantity has more than nine digits before its decimal point, as one has that was scanned from a package.
bool isCountTooLong(const QString &typed);

/// The dealer's name, empty when there is no such dealer.
QString getCompanyName(DealerKey dealer);
