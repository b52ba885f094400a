#include "desk/window/Component.h"

#include "platform/runtime/Attempt.h"

#include <QCoreApplication>
#include <QDir>

namespace desk {

namespace {

void registerLibraries(std::initializer_list<const char *> names)
{
    const QDir folder(QCoreApplication::applicationDirPath());
    for (const char *name : names) {
        runtime::Attempt attempt; // what cannot be registered is told when it is asked for
        attempt([&] { automation::classRegister::registerLibrary(folder.filePath(QLatin1String(name))); });
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
