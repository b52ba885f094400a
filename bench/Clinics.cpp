#include "bench/Clinics.h"

#include "bench/BareStatement.h"
#include "desk/journal/Seal.h"
#include "desk/sample/MakeOnTerminal.h"
#include "desk/schema/Schema.h"
#include "platform/ado/Transaction.h"

#include <QDir>
#include <QFile>

#include <stdexcept>

namespace bench {

namespace {

const QString Engine = QStringLiteral("sqlite:");

QString fileOf(const char *name)
{
    return QDir(QStringLiteral(ZELVO_BENCH_DATA)).filePath(QLatin1String(name));
}

void removeDatabase(const QString &file)
{
    for (const char *suffix : {"", "-wal", "-shm"})
        QFile::remove(file + QLatin1String(suffix));
}

QString largeClinic()
{
    const QString file = fileOf("large.db");
    if (!QFile::exists(file) && sample::makeOnTerminal(Engine + file, sample::Size::Large) != 0)
        throw std::runtime_error("the large clinic was not made");
    return file;
}

enum class Journal { Kept, None };

/// An empty clinic filled from the large one, which its statements call "large".
ado::ConnectionPtr openFilled(const char *name, const QString &largeClinic, const std::vector<std::string> &statements,
                              Journal journal = Journal::Kept)
{
    const QString file = fileOf(name);
    removeDatabase(file);
    ado::ConnectionPtr connection = ado::Connection::open(Engine + file, true);
    schema::createTables(*connection);
    sqlite3 *const handle = bareHandle(*connection);
    runBare(handle, "ATTACH '" + largeClinic.toStdString() + "' AS large");
    runBare(handle, "BEGIN");
    for (const std::string &statement : statements)
        runBare(handle, statement);
    runBare(handle, "COMMIT");
    runBare(handle, "DETACH large");
    schema::createIndexes(*connection);
    if (journal == Journal::Kept) {
        ado::Transaction scope(*connection);
        connection->holdRow(QStringLiteral("t_DeskSchema"), QStringLiteral("DS_Key"), 1); // begins it
        schema::createJournal(*connection);
        scope.commit();
        journal::attend(*connection);
    }
    return connection;
}

/// The large clinic's products five times, under names of their own.
std::vector<std::string> manyProducts()
{
    std::vector<std::string> statements;
    for (int series = 0; series < 5; ++series) {
        const std::string mark = series == 0 ? "''" : "' (" + std::to_string(series) + ")'";
        statements.push_back(
            "INSERT INTO tPSProductMaster (PM_Catagory, PM_Name, PM_UnitPrice, PM_IsTaxed, PM_IsValid, PM_IsHide,"
            " PM_EtcMemo, PM_AddedDate) SELECT PM_Catagory, PM_Name || "
            + mark
            + ", PM_UnitPrice, PM_IsTaxed,"
              " PM_IsValid, PM_IsHide, PM_EtcMemo, PM_AddedDate FROM large.tPSProductMaster ORDER BY PM_PK");
    }
    return statements;
}

/// One of so many patients with all that is theirs, and the shop as it is.
std::vector<std::string> partOfPatients(int every)
{
    std::vector<std::string> statements;
    for (const char *table : {"tPSProductMaster", "tPSCompanyMaster", "tPSIncoming", "tPSProperties", "t_HospSetup"})
        statements.push_back(std::string("INSERT INTO main.") + table + " SELECT * FROM large." + table);
    const std::pair<const char *, const char *> tables[] = {{"Customer", "Customer_PK"},
                                                            {"Receipt", "Customer_PK"},
                                                            {"tPSOrderMaster", "Cust_PK"},
                                                            {"tPSTransaction", "tpstrans_Customer_PK"}};
    for (const auto &[table, patient] : tables)
        statements.push_back(std::string("INSERT INTO main.") + table + " SELECT * FROM large." + table + " WHERE "
                             + patient + " % " + std::to_string(every) + " = 1");
    statements.push_back("INSERT INTO main.tPSOrderDetail SELECT * FROM large.tPSOrderDetail"
                         " WHERE OrdM_PK IN (SELECT OrdM_PK FROM main.tPSOrderMaster)");
    return statements;
}

ado::ConnectionPtr openCopy(const QString &original)
{
    const QString copy = fileOf("copy.db");
    removeDatabase(copy);
    if (!QFile::copy(original, copy))
        throw std::runtime_error("the large clinic could not be copied");
    return ado::Connection::open(Engine + copy);
}

} // namespace

Clinics openClinics()
{
    QDir().mkpath(QStringLiteral(ZELVO_BENCH_DATA));
    const QString large = largeClinic();
    return {openCopy(large),
            openFilled("products.db", large, manyProducts()),
            openFilled(
                "few-products.db", large,
                {"INSERT INTO main.tPSProductMaster SELECT * FROM large.tPSProductMaster ORDER BY PM_PK LIMIT 1000"}),
            openFilled("tenth.db", large, partOfPatients(10)),
            openFilled("hundredth.db", large, partOfPatients(100)),
            openFilled("unjournalled.db", large, partOfPatients(100), Journal::None)};
}

} // namespace bench
