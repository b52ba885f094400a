#pragma once

#include "bench/far/FarWire.h"
#include "desk/sample/Clinic.h"
#include "desk/window/Patient.h"
#include "tests/support/PostgresServer.h"

#include <memory>

namespace bench {

/// A server of this machine with a sample clinic, a long wire to it and a short one.
class Place
{
public:
    explicit Place(sample::Size size);

    FarWire &wire() { return *wire_; }
    QString far() const { return wire_->address(database_); }
    /// One of those with some orders.
    desk::Patient patient(int number) const;
    /// Changes with each order, line and ledger row.
    QString rows() const;

private:
    PostgresServer server_;
    QString database_;
    ado::ConnectionPtr beside_;
    std::unique_ptr<FarWire> wire_;
};

} // namespace bench
