#pragma once

#include "forms/BoundList.h"
#include "forms/MemoBox.h"
#include "forms/MoneyBox.h"
#include "forms/PaneContract.h"
#include "platform/controls/DateEdit.h"
#include "platform/controls/PushCheck.h"
#include "platform/controls/RecordsetGrid.h"
#include "platform/controls/Stepper.h"
#include "products/IncomingOperations.h"
#include "session/SaleSession.h"

#include <QGridLayout>
#include <QPointer>
#include <QWidget>

#include <array>

class frmDealerSelect;

/// Purchases of the current product beside the panel of one purchase.
class IncomingPane : public QWidget
{
    Q_OBJECT
public:
    IncomingPane(SaleSession &session, PaneShell &shell, QWidget *parent = nullptr);

    /// Opens the purchases of a product in rsProductIncoming and binds the grid; nothing happens while it does not exist.
    /// Without a key the list is closed, and no server is asked. Errors go to the caller, nothing is on view then. While the
    /// panel is in edit the list stays as it is, and follows when the edit ends.
    void loadProductIncoming(ProductKey product);
    bool isLoaded() const { return list_.isLoaded(); }
    /// For a list that could not be loaded before; errors end here, told to nobody.
    void loadIfClosed();
    /// Clears the panel, the chosen dealer included.
    void resetPane();
    /// Shows the current purchase, or clears the panel; a panel in edit is left alone. The chosen dealer's key is not
    /// touched: an edit saves the dealer last chosen in this panel. A purchase that another desk deleted is told, and none
    /// is current then.
    void fillPanel();
    /// The dealer that the dealer dialog reports; its key lies in the name box's property "Tag".
    void insFrmCompanySelect_evtDealerSelected(qint32 lngCMPK, const QString &strName);
    /// Leaves an edit under way without saving; whether there was one.
    bool abandonEdit();
    /// 0 add, 1 edit, -1 neither.
    qint16 intIncomingEditMode() const { return intIncomingEditMode_; }

    QList<QWidget *> containers() const { return {sspProductIncoming_[0], sspProductIncoming_[1], elTranMnu_}; }
    EditModeTable editMode() const;
    controls::RecordsetGrid *grid() const { return tdbProductIncoming_; }

private:
    void makeList();
    void makeStrip();
    void makePanel();
    QGridLayout *makeFields();
    void connectFields();
    void connectButtons();

    bool readListAnew(IncomingKey purchase);
    void leaveGone();

    void addIncoming();
    void editIncoming();
    void deleteIncoming();
    IncomingEdit typed() const;
    SaveOutcome save();
    void saveIncoming();
    void endEdit();
    void selectDealer();
    void showCompany(const QString &strName);
    void recalculateTotal();
    void stepCount(int by);
    bool inEdit() const { return !chkcmdIncomingSave_.first()->isHidden(); }

    SaleSession &session_;
    PaneShell &shell_;
    IncomingOperations operations_;
    BoundList list_;
    qint16 intIncomingEditMode_ = -1;
    ProductKey product_; ///< on view
    ProductKey loaded_;  ///< whose purchases are listed
    ProductKey bought_;  ///< of the purchase that is added
    IncomingKey edited_;
    QPointer<frmDealerSelect> insFrmCompanySelect_;

    std::array<QWidget *, 2> sspProductIncoming_{};
    QWidget *elTranMnu_ = nullptr;
    controls::RecordsetGrid *tdbProductIncoming_ = nullptr;
    MoneyBox *txtIncCount_ = nullptr;
    controls::Stepper *udIincomingCount_ = nullptr;
    MoneyBox *txtIncPricePerUnit_ = nullptr;
    MoneyBox *txtIncHalinTotal_ = nullptr;
    QLineEdit *txtIncPriceTotal_ = nullptr;
    QLineEdit *txtIncCompanyName_ = nullptr;
    controls::PushCheck *chkCmdIncSelectCompany_ = nullptr;
    controls::DateEdit *dtpIncDate_ = nullptr;
    MemoBox *txtIncMemo_ = nullptr;
    QList<controls::PushCheck *> chkcmdIncomingAED_;
    QList<controls::PushCheck *> chkcmdIncomingSave_;
};
