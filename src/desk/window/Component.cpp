#include "desk/window/Component.h"

#include "desk/chain/CentralServer.h"
#include "desk/chain/Libraries.h"

namespace desk {

void SaleComponent::registerSale()
{
    libraries::enter({"prjZelvoProductSale"});
}

void SaleComponent::registerReports()
{
    libraries::enter(
        {"VantoSalesPeriod", "VantoSalesItem", "VantoPayPeriod", "VantoOneDay", "VantoStock", "VantoChain"});
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
    chain::attend(connection_);
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
