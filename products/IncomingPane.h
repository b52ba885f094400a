#pragma once

#include "input/MemoBox.h"
#include "input/MoneyBox.h"
#include "input/PaneContract.h"
#include "platform/controls/PushCheck.h"
#include "platform/controls/RecordsetGrid.h"
#include "platform/controls/Stepper.h"
#include "session/SaleSession.h"

#include <QDateEdit>
#include <QWidget>

/// Purchases of the current product beside the panel of one purchase.
class IncomingPane : public QWidget
{
    Q_OBJECT
public:
    IncomingPane(SaleSession &session, PaneShell &shell, QWidget *parent = nullptr);

    /// Opens the purchases of a product in rsProductIncoming, which must exist, and binds the grid. Errors end here, told
    /// to nobody.
    void loadProductIncoming(qint32 lngPMPK);
    void resetPane();
    void fillPanel();
    /// The dealer that the dealer dialog reports.
    void dealerSelected(qint32 lngCMPK, const QString &name);

    QList<QWidget *> containers() const { return {sspProductIncoming_[0], sspProductIncoming_[1], elTranMnu_}; }
    EditModeTable editMode() const;
    controls::RecordsetGrid *grid() const { return tdbProductIncoming_; }

private:
    QWidget *makeList();
    QWidget *makeStrip();
    QWidget *makePanel();
    void connectControls();
    void recalculateTotal();
    void showTotal();
    void step(int by);

    SaleSession &session_;
    PaneShell &shell_;

    QWidget *sspProductIncoming_[2] = {};
    QWidget *elTranMnu_ = nullptr;
    controls::RecordsetGrid *tdbProductIncoming_ = nullptr;
    MoneyBox *txtIncCount_ = nullptr;
    controls::Stepper *udIincomingCount_ = nullptr;
    MoneyBox *txtIncPricePerUnit_ = nullptr;
    MoneyBox *txtIncHalinTotal_ = nullptr;
    QLineEdit *txtIncPriceTotal_ = nullptr;
    QLineEdit *txtIncCompanyName_ = nullptr;
    QString companyTag_; ///< decimal text of the chosen dealer's key, empty while none is chosen
    controls::PushCheck *chkCmdIncSelectCompany_ = nullptr;
    QDateEdit *dtpIncDate_ = nullptr;
    MemoBox *txtIncMemo_ = nullptr;
    QList<controls::PushCheck *> chkcmdIncomingAED_;
    QList<controls::PushCheck *> chkcmdIncomingSave_;
};
