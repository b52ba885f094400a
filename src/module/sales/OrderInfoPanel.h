#pragma once

#include "forms/PaneContract.h"
#include "platform/ado/Recordset.h"
#include "platform/controls/PushCheck.h"
#include "sales/OrderSave.h"

#include <QDateEdit>
#include <QLineEdit>
#include <QRadioButton>
#include <QWidget>

#include <array>

/// The form beside the orders: date, sums, delivery data of the current order, with the save and cancel of its edit. It
/// shows and hands out; what is written is the pane's work.
class OrderInfoPanel : public QWidget
{
    Q_OBJECT
public:
    explicit OrderInfoPanel(QWidget *parent);

    /// Everything of the current row.
    void showOrder(const ado::Recordset &orders);
    /// The sums of the current row; NULL shows as 0.
    void showTotals(const ado::Recordset &orders);
    /// Empties the text boxes; the date and the kind of delivery stay as they are.
    void clear();
    OrderEdit edit() const;
    /// The discount total stands in no group of controls, yet it is typed into during an edit.
    void openDiscount(bool open);
    /// As an edit begins.
    void enterFirstField() { dtpOrderMasterDate_->setFocus(Qt::OtherFocusReason); }

    /// Controls of the edit, in the order in which they are locked and opened.
    ControlGroup colOrderMaster() const;
    QList<EntryColor> entryColors() const;
    QList<EntryColor> editColors() const;
    QList<QWidget *> saveButtons() const { return {chkcmdCSSaveInfo_[0], chkcmdCSSaveInfo_[1]}; }

    controls::PushCheck *chkcmdCSSaveInfo(int index) const { return chkcmdCSSaveInfo_.at(index); }

private:
    QLineEdit *txtOrderMaster(int index) const { return txtOrderMaster_.at(std::size_t(index)); }
    void makeControls();
    void placeControls();

    std::array<QLineEdit *, 10> txtOrderMaster_{};
    QDateEdit *dtpOrderMasterDate_;
    std::array<QRadioButton *, 2> optTakBae_{};
    QList<controls::PushCheck *> chkcmdCSSaveInfo_;
};
