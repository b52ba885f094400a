#pragma once

#include "desk/window/Patient.h"
#include "session/SaleSession.h"

#include <string>

namespace bench {

/// A patient's sale without its window: orders, lines and ledger rows of the newest order, and the product list. The order
/// is remembered and can be brought back.
class OpenSale
{
public:
    OpenSale(const ado::ConnectionPtr &connection, const desk::Patient &patient);

    SaleSession &session() { return session_; }
    ado::Connection &connection() const { return *connection_; }
    int lngCustPK() const { return session_.customer.lngCustPK; }
    int lngOrdMPK() const { return lngOrdMPK_; }

    /// The order with its lines and ledger rows as at first, in the database and in the lists; new keys go on from where
    /// they did then.
    void restore();
    /// Leaves the order without ledger rows.
    void removeLedger() const;
    /// The order's rows as they stand in the database.
    std::string rows() const;

private:
    void remember() const;

    ado::ConnectionPtr connection_;
    SaleSession session_;
    int lngOrdMPK_ = 0;
};

} // namespace bench
