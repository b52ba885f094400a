#pragma once

#include "forms/BoundList.h"
#include "platform/controls/FindBar.h"
#include "session/SaleSession.h"

#include <QObject>
#include <QWidget>

namespace ado {
class Foresight;
}

/// The products for sale: the grid on the left of the sale tab. Hidden products never appear here. The container belongs
/// to the widget it is placed in.
class SaleListPane : public QObject
{
    Q_OBJECT
public:
    SaleListPane(SaleSession &session, QWidget *parent);

    QWidget *c1elaList() const { return c1elaList_; }
    controls::RecordsetGrid *tdbSaleProductLists() const { return tdbSaleProductLists_; }
    controls::FindBar *search() const { return search_; }

    /// A new recordset in the session, bound to the grid; the old one goes, and what was searched in it.
    void createSaleProductLists();
    /// Opens the list anew and rebinds the grid; a failure is told in its box and leaves grid and entry pane empty.
    void loadSaleProductLists();
    bool isLoaded() const { return list_.isLoaded(); }
    /// Coming back from the management tab: product changes reach the list. One that could not be loaded before is now.
    void requerySaleProductLists();
    /// Tells what either reads.
    static void tellSaleProductLists(ado::Foresight &next);

signals:
    /// The current product is another one, or there is none.
    void productRowChanged();
    /// A product was chosen by its code: what is still to be told is how many.
    void productCodeEntered();

private:
    void sortBy(int column);

    SaleSession &session_;
    BoundList list_;
    QWidget *c1elaList_;
    controls::RecordsetGrid *tdbSaleProductLists_;
    controls::FindBar *search_;
    // The next direction of each sort.
    bool bSortCatagoryDesc_ = false;
    bool bSortNameDesc_ = false;
    bool bSortPriceDesc_ = false;
};
