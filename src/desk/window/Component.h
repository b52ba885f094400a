#pragma once

#include "desk/window/Patient.h"
#include "platform/ado/Connection.h"
#include "platform/automation/Automation.h"

namespace desk {

/// The product-sale component as the desk sees it: an object created by name and called by name.
class SaleComponent
{
public:
    inline static const QString ProgramId = QStringLiteral("prjZelvoProductSale.clsZelvoProductSale");

    /// Lets the component libraries, the sale's and the statistics', register themselves for this user: those that lie beside
    /// the program, or else the installed ones. Those that lie nowhere are passed over.
    static void registerBesideProgram();
    // Its two halves: a window can be shown before the statistics are there.
    static void registerSale();
    static void registerReports();

    explicit SaleComponent(ado::ConnectionPtr connection);

    /// Open the sale window for a patient and return at once. Raise RuntimeError when the component cannot be had.
    void showProductSale(const Patient &patient);
    void showProductSaleManage(const Patient &patient);

private:
    void show(const QString &entry, const Patient &patient);

    ado::ConnectionPtr connection_;
    automation::ObjectPtr object_;
};

} // namespace desk
