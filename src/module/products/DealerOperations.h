#pragma once

#include "products/RecordSave.h"
#include "session/Keys.h"
#include "session/SaleSession.h"

#include <QString>

/// What the dealer panel holds when it is saved.
struct DealerEdit
{
    QString name;
    QString regNum;
    QString address;
    QString tel;
    QString memo;
    bool noDealings = false; ///< stored the other way round, as CM_IsValid
};

/// The flows that write to the list of dealers, without a screen: on rsCompanyMaster and on gcnnMasterDB. They show
/// nothing.
class DealerOperations
{
public:
    enum class Deletion {
        Deleted,
        InUse,   ///< purchases name the dealer
        Unknown, ///< the purchases could not be counted; nothing was deleted
    };

    /// The session outlives the operations.
    explicit DealerOperations(SaleSession &session);

    /// Saves a new dealer. Refused without a name, before anything is begun; a blank is a name.
    SaveOutcome add(const DealerEdit &edit);
    /// The same for a dealer of the list, wherever the list stands.
    SaveOutcome change(DealerKey dealer, const DealerEdit &edit);
    /// Deletes the dealer unless a purchase names it. Raises RuntimeError; a failed deletion leaves the row.
    Deletion remove(DealerKey dealer);

private:
    /// Saves the dealer of that key; without a key a new one.
    SaveOutcome save(DealerKey dealer, const DealerEdit &edit);

    SaleSession &session_;
};
