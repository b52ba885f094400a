#include "desk/window/Component.h"

#include "platform/runtime/Attempt.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

namespace desk {

namespace {

/// Beside the program as it was built, else where the package puts them.
QString pathOf(const char *name)
{
    const QString file = QStringLiteral("lib%1.so").arg(QLatin1String(name));
    const QString beside = QDir(QCoreApplication::applicationDirPath()).filePath(file);
    return QFile::exists(beside) ? beside : QDir(automation::classRegister::installedFolder()).filePath(file);
}

/// Installed ones, too: an earlier copy of the program may have entered its own.
void registerLibraries(std::initializer_list<const char *> names)
{
    for (const char *name : names) {
        runtime::Attempt attempt; // what cannot be registered is told when it is asked for
        attempt([&] { automation::classRegister::registerLibrary(pathOf(name)); });
    }
}

} // namespace

void SaleComponent::registerSale()
{
    registerLibraries({"prjZelvoProductSale"});
}

void SaleComponent::registerReports()
{
    registerLibraries({"VantoSalesPeriod", "VantoSalesItem", "VantoPayPeriod", "VantoOneDay", "VantoStock"});
}

void SaleComponent::registerBesideProgram()
{
    registerSale();
    registerReports();
}

SaleComponent::SaleComponent(ado::ConnectionPtr connection)
    : connection_(std::move(connection))
{
}

void SaleComponent::showProductSale(const Patient &patient)
{
    show(QStringLiteral("showProductSale"), patient);
}

void SaleComponent::showProductSaleManage(const Patient &patient)
{
    show(QStringLiteral("showProductSaleManage"), patient);
}

void SaleComponent::show(const QString &entry, const Patient &patient)
{
    if (!object_)
        object_ = automation::createObject(ProgramId);
    QVariantList arguments{QVariant::fromValue(connection_),
                           patient.key,
                           patient.name,
                           patient.chartNumber,
                           patient.male,
                           patient.birth,
                           patient.zipCode,
                           patient.address,
                           patient.phone,
                           patient.cell,
                           patient.vip};
    automation::call(*object_, entry, arguments);
}

} // namespace desk
