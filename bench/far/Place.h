#pragma once

#include "bench/far/FarWire.h"
#include "desk/sample/Clinic.h"
#include "desk/window/Patient.h"
#include "tests/support/PostgresServer.h"

#include <memory>

namespace bench {

/// A server of this machine with a sample clinic and a copy of it, a long wire to it and a short one.
class Place
{
public:
    explicit Place(sample::Size size);

    FarWire &wire() { return *wire_; }
    QString far() const { return wire_->address(database_); }
    QString near() const { return server_.postgresAddress(database_); } ///< the same without the wire
    QString farCopy() const { return wire_->address(copy_); }
    static int waitMilliseconds(); ///< for the wire alone, there and back
    /// One of those with some orders.
    desk::Patient patient(int number) const;
    /// Changes with each order, line and ledger row.
    QString rows() const { return rowsOf(*beside_); }
    QString rowsOfCopy() const { return rowsOf(*besideCopy_); }

private:
    static QString rowsOf(ado::Connection &clinic);

    PostgresServer server_;
    QString database_;
    QString copy_;
    ado::ConnectionPtr beside_;
    ado::ConnectionPtr besideCopy_;
    std::unique_ptr<FarWire> wire_;
};

} // namespace bench
