#pragma once

#include "products/RecordSave.h"
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
/// Unlike those of products and dealers they trap nothing: an error leaves the flow with the transaction open, and the
/// event that it ends rolls back. It is meant to stay so.
class IncomingOperations
{
public:
    /// The session outlives the operations.
    explicit IncomingOperations(SaleSession &session);

    /// Saves a new purchase of the product. Refused without a dealer, before anything is begun. Raises RuntimeError; saved
    /// again after that, the purchase is stored once.
    SaveOutcome add(std::int32_t lngPMPK, const IncomingEdit &edit);
    /// The same for the current purchase, which takes the dealer of the edit, not the one it had.
    SaveOutcome change(std::int32_t lngPMPK, const IncomingEdit &edit);

private:
    SaveOutcome save(std::int32_t lngPMPK, const IncomingEdit &edit, bool isNew);

    SaleSession &session_;
};

/// The dealer's name, empty when there is no such dealer.
QString getCompanyName(std::int32_t lngCMPK);
