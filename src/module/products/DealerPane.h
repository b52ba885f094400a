#pragma once

#include "forms/BoundList.h"
#include "forms/MemoBox.h"
#include "forms/MoneyBox.h"
#include "forms/PaneContract.h"
#include "platform/controls/PushCheck.h"
#include "platform/controls/RecordsetGrid.h"
#include "products/DealerOperations.h"
#include "session/SaleSession.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QWidget>

#include <array>

/// Dealers that the shop buys from, beside the panel of one dealer.
class DealerPane : public QWidget
{
    Q_OBJECT
public:
    DealerPane(SaleSession &session, PaneShell &shell, QWidget *parent = nullptr);

    /// Opens rsCompanyMaster and binds the grid; nothing happens while it does not exist. Errors end here, told to nobody;
    /// then no dealer is on view.
    void loadCompanyMaster();
    bool isLoaded() const { return list_.isLoaded(); }
    /// For a list that could not be loaded before.
    void loadIfClosed();
    /// Clears the panel.
    void resetPane();
    /// Shows the current dealer, or clears the panel; a panel in edit is left alone. A dealer that another desk deleted is
    /// told, and none is current then.
    void fillPanel();

    /// The strip of buttons is not among them: it lies on the panel and goes out of reach with it.
    QList<QWidget *> containers() const { return {sspCompanyMaster_[0], sspCompanyMaster_[1]}; }
    EditModeTable editMode() const;
    /// Leaves an edit under way without saving; whether there was one.
    bool abandonEdit();
    /// 0 add, 1 edit, -1 neither.
    qint16 intCompanyEditMode() const { return intCompanyEditMode_; }
    controls::RecordsetGrid *grid() const { return tdbCompanyMaster_; }

private:
    void makeList();
    void makeStrip();
    void makePanel();
    QGridLayout *makeFields();
    void connectControls();

    bool readListAnew(DealerKey dealer);
    void leaveGone();

    void addDealer();
    void editDealer();
    void deleteDealer();
    DealerEdit typed() const;
    void saveDealer();
    /// `dealer`: the one that stays current, if it is still there.
    void endEdit(DealerKey dealer = {});
    bool inEdit() const { return !chkcmdCmpnyMstrSave_.first()->isHidden(); }

    SaleSession &session_;
    PaneShell &shell_;
    DealerOperations operations_;
    BoundList list_;
    qint16 intCompanyEditMode_ = -1;
    DealerKey edited_;

    std::array<QWidget *, 2> sspCompanyMaster_{};
    QWidget *elTranMnu_ = nullptr;
    controls::RecordsetGrid *tdbCompanyMaster_ = nullptr;
    MoneyBox *txtCmCompanyName_ = nullptr;
    MoneyBox *txtCmRegNum_ = nullptr;
    MoneyBox *txtCmAddress_ = nullptr;
    MoneyBox *txtCmTel_ = nullptr;
    MemoBox *txtCmMemo_ = nullptr;
    QCheckBox *chkCmIsValid_ = nullptr; ///< "거래안함": checked is False in the column
    QList<controls::PushCheck *> chkcmdCmpnyMstrAED_;
    QList<controls::PushCheck *> chkcmdCmpnyMstrSave_;
};
