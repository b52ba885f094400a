#include "desk/window/Component.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibrary>

namespace desk {

namespace {

bool registerIn(const QString &folder, const char *name)
{
    QLibrary library(QDir(folder).filePath(QLatin1String(name)));
    library.setLoadHints(QLibrary::PreventUnloadHint);
    const QFunctionPointer entry = library.resolve("DllRegisterServer");
    if (entry)
        reinterpret_cast<automation::DllRegisterServerFunction>(entry)();
    return entry != nullptr;
}

/// Installed ones, too: an earlier copy of the program may have entered its own.
void registerLibraries(std::initializer_list<const char *> names)
{
    for (const char *name : names) {
        if (!registerIn(QCoreApplication::applicationDirPath(), name))
            registerIn(automation::classRegister::installedFolder(), name);
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
