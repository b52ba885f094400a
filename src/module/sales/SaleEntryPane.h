#pragma once

#include "data/Codes.h"
#include "forms/MoneyBox.h"
#include "forms/PaneContract.h"
#include "platform/controls/MessageBox.h"
#include "platform/controls/PushCheck.h"
#include "platform/controls/Stepper.h"
#include "platform/runtime/Currency.h"
#include "sales/OrderOperations.h"
#include "session/SaleSession.h"

#include <QCheckBox>
#include <QObject>
#include <QRadioButton>

#include <array>

/// The entry pane under the product list: the current product, quantity and discount, the kind of line, and the button
/// that puts the line on an order. The container belongs to the widget it is placed in.
class SaleEntryPane : public QObject
{
    Q_OBJECT
public:
    SaleEntryPane(SaleSession &session, QWidget *parent);

    QWidget *c1elaProductInfo() const { return c1elaProductInfo_; }

    /// Open from the start: discount, quantity, stepper and button.
    ControlGroup colSaleEntry() const;
    /// Locked always: what the product is.
    ControlGroup colProductInfo() const;
    /// Controls that take the paint sets; the pane has no edit of its own.
    EditModeTable colors() const;

    /// Fills the pane from the current product; quantity and discount stay as typed.
    void showProduct();
    /// The pane without a product ("판매물품").
    void resetPane();
    void focusQuantity();
    /// A service and a loss show in the colours of the button and of the line total, over those of the paint sets.
    void paintKind();
    /// Unit discount and sale price can be typed into no more.
    void lockPrices();
    /// Replaces the clock that tells the date of new orders.
    void setToday(OrderOperations::Clock today);

signals:
    /// A line was added: the customer's orders are to be loaded anew.
    void lineAdded();

private:
    void makeFields();
    void makeKinds();
    void makeSteppers();
    void placeFields();
    void styleAppendButton();

    MoneyBox *txtSaleProductLists(int index) const { return txtSaleProductLists_.at(std::size_t(index)); }
    sale::LineType sellType() const;
    void sellTypeChanged();
    void step(int by);
    void showPrices(const QVariant &price);
    void showLineTotal();
    runtime::Currency moneyOf(int index) const;
    QVariant salePriceOfCurrentProduct() const;

    void appendDetail();
    void tellAdded(const EntryLine &line) const;
    Outcome addToChosenOrder(const EntryLine &line);
    controls::Answer askForToday(const EntryLine &line) const;

    SaleSession &session_;
    OrderOperations operations_;
    QWidget *c1elaProductInfo_;
    std::array<MoneyBox *, 9> txtSaleProductLists_{};
    std::array<QCheckBox *, 2> chkSaleProductLists_{};
    std::array<QRadioButton *, 3> ssoptSellType_{};
    controls::Stepper *udNoOfProdPlusMinus_;
    controls::Stepper *udNoOfProdPlusMinusBy5_;
    controls::PushCheck *cmdCSAppendDetail_;
};
