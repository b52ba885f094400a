#pragma once

#include "money/LedgerEntry.h"
#include "products/DealerOperations.h"
#include "products/IncomingOperations.h"
#include "products/ProductOperations.h"
#include "sales/OrderSave.h"
#include "sales/RefundOperations.h"

#include <span>

/// A clinic of a few rows, closed and whole, at that place.
void makeClinic(const QString &file);
/// The same in an empty database.
void fillClinic(ado::Connection &clinic);

/// A desk without a screen on a clinic of makeClinic: gcnnMasterDB and the lists that the window opens.
class Desk
{
public:
    explicit Desk(const QString &file);
    explicit Desk(const ado::ConnectionPtr &clinic);
    ~Desk();
    Desk(const Desk &) = delete;
    Desk &operator=(const Desk &) = delete;

    /// As the panes do after a failure.
    void readAnew();

    SaleSession session;
    OrderOperations orders{session, [] { return QDate(2026, 11, 24); }};
    RefundOperations returns{session};
    ProductOperations products{session};
    IncomingOperations purchases{session};
    DealerOperations dealers{session};
};

/// One writing operation. False, or an error that it raises: what it wanted is told not to be saved.
struct Work
{
    const char *name;
    bool (*run)(Desk &desk);
    int steps = 1; ///< saved one after the other, as docs/architecture.md tells; the last makes it whole
    bool tells = true;
};

std::span<const Work> works();
