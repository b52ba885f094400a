#pragma once

#include "input/MemoBox.h"
#include "input/MoneyBox.h"
#include "input/PaneContract.h"
#include "platform/controls/PushCheck.h"
#include "platform/controls/RecordsetGrid.h"
#include "session/SaleSession.h"

#include <QCheckBox>
#include <QWidget>

/// Dealers that the shop buys from, beside the panel of one dealer.
class DealerPane : public QWidget
{
    Q_OBJECT
public:
    DealerPane(SaleSession &session, PaneShell &shell, QWidget *parent = nullptr);

    /// Opens rsCompanyMaster, which must exist, and binds the grid. Errors end here, told to nobody.
    void loadCompanyMaster();
    void resetPane();
    void fillPanel();

    /// The strip of buttons is not among them: it lies on the panel and goes out of reach with it.
    QList<QWidget *> containers() const { return {sspCompanyMaster_[0], sspCompanyMaster_[1]}; }
    EditModeTable editMode() const;
    controls::RecordsetGrid *grid() const { return tdbCompanyMaster_; }

private:
    QWidget *makeList();
    QWidget *makeStrip();
    QWidget *makePanel();
    void connectControls();

    SaleSession &session_;
    PaneShell &shell_;

    QWidget *sspCompanyMaster_[2] = {};
    QWidget *elTranMnu_ = nullptr;
    controls::RecordsetGrid *tdbCompanyMaster_ = nullptr;
    MoneyBox *txtCmCompanyName_ = nullptr;
    MoneyBox *txtCmRegNum_ = nullptr;
    MoneyBox *txtCmAddress_ = nullptr;
    MoneyBox *txtCmTel_ = nullptr;
    MemoBox *txtCmMemo_ = nullptr;
    QCheckBox *chkCmIsValid_ = nullptr;
    QList<controls::PushCheck *> chkcmdCmpnyMstrAED_;
    QList<controls::PushCheck *> chkcmdCmpnyMstrSave_;
};
