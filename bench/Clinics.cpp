#include "bench/Clinics.h"

#include "bench/BareStatement.h"
#include "host/sample/MakeOnTerminal.h"
#include "host/schema/Schema.h"

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

/// The large clinic's products five times, under names of their own.
void fillManyProducts(const ado::Connection &connection, const QString &largeClinic)
{
    sqlite3 *const handle = bareHandle(connection);
    runBare(handle, "ATTACH '" + largeClinic.toStdString() + "' AS large");
    for (int series = 0; series < 5; ++series) {
        const std::string mark = series == 0 ? "''" : "' (" + std::to_string(series) + ")'";
        runBare(handle,
                "INSERT INTO tPSProductMaster (PM_Catagory, PM_Name, PM_UnitPrice, PM_IsTaxed, PM_IsValid, PM_IsHide,"
                " PM_EtcMemo, PM_AddedDate) SELECT PM_Catagory, PM_Name || " + mark + ", PM_UnitPrice, PM_IsTaxed,"
                " PM_IsValid, PM_IsHide, PM_EtcMemo, PM_AddedDate FROM large.tPSProductMaster ORDER BY PM_PK");
    }
    runBare(handle, "DETACH large");
}

ado::ConnectionPtr openManyProducts(const QString &largeClinic)
{
    const QString file = fileOf("products.db");
    removeDatabase(file);
    ado::ConnectionPtr connection = ado::Connection::open(Engine + file, true);
    schema::createSchema(*connection);
    fillManyProducts(*connection, largeClinic);
    return connection;
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
    return {openCopy(large), openManyProducts(large)};
}

} // namespace bench
