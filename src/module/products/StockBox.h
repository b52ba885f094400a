#pragma once

#include "session/Keys.h"
#include "session/SaleSession.h"

#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>

#include <array>

namespace ado {
class Foresight;
}

/// "재고현황 보기": units of one product that came in, went out and remain, summed from purchases and order lines each time.
/// Shows what the last call wrote: sales and purchases made since stand in it only after the row changes or "새로고침".
class StockBox : public QGroupBox
{
    Q_OBJECT
public:
    explicit StockBox(SaleSession &session, QWidget *parent = nullptr);

    /// Sums the product's stock; after an error the boxes keep what they showed, and nothing is told.
    void loadStockFigures(ProductKey product);
    /// Tells what that reads.
    static void tell(ado::Foresight &next, ProductKey product);
    /// For a product that is gone: its figures are nobody's.
    void clear();

    /// Incoming, sale, remainder, service, loss.
    const std::array<QLineEdit *, 5> &txtProdStat() const { return txtProdStat_; }

private:
    void refreshClicked();

    SaleSession &session_;
    std::array<QLineEdit *, 5> txtProdStat_{};
    QPushButton *cmdRefreshProdStat_;
};
