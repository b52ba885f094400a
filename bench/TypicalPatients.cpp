#include "bench/TypicalPatients.h"

#include "bench/BareStatement.h"

#include <stdexcept>

namespace bench {

namespace {

/// The patients whose keys the statement gives, in that order.
std::vector<desk::Patient> patientsOf(ado::Connection &connection, const std::string &keys)
{
    std::vector<desk::Patient> chosen;
    const ado::CellTable rows = connection.read(QString::fromStdString(keys));
    for (int row = 0; row < rows.rowCount(); ++row) {
        if (const auto patient = desk::readPatient(connection.shared_from_this(), rows.raw(row, 0).toInt()))
            chosen.push_back(*patient);
    }
    if (chosen.empty())
        throw std::runtime_error("the clinic has no such patient");
    return chosen;
}

} // namespace

std::vector<desk::Patient> typicalPatients(ado::Connection &connection)
{
    // The same people in the clinic of ten million orders, which has everybody ten times: those that came last.
    return patientsOf(connection,
                      "SELECT Cust_PK FROM tPSOrderMaster"
                      " WHERE Cust_PK > (SELECT MAX(Customer_PK) FROM Customer) - 50021 GROUP BY Cust_PK"
                      " HAVING COUNT(*) BETWEEN 18 AND 24 ORDER BY Cust_PK % 50021 * 7919 % 50021 LIMIT 15");
}

desk::Patient busiestPatient(ado::Connection &connection)
{
    return patientsOf(connection, "SELECT Cust_PK FROM tPSOrderMaster GROUP BY Cust_PK ORDER BY COUNT(*) DESC LIMIT 1")
        .front();
}

LongOrder longOrder(ado::Connection &connection)
{
    const std::string from = " FROM tPSOrderMaster WHERE OrdM_PK = (SELECT OrdM_PK FROM tPSOrderDetail GROUP BY OrdM_PK"
                             " HAVING COUNT(*) = 200 ORDER BY OrdM_PK LIMIT 1)";
    BareStatement row(bareHandle(connection), "SELECT OrdM_PK" + from);
    if (!row.step())
        throw std::runtime_error("the clinic has no order of 200 lines");
    return {patientsOf(connection, "SELECT Cust_PK" + from).front(), static_cast<int>(row.integer(0))};
}

} // namespace bench
