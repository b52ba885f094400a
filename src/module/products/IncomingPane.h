#pragma once

#include "forms/MemoBox.h"
#include "forms/MoneyBox.h"
#include "platform/controls/DateEdit.h"
#include "platform/controls/Stepper.h"
#include "products/IncomingOperations.h"
#include "products/RecordEditor.h"

#include <QGridLayout>
#include <QPointer>

#include <functional>

namespace ado {
class Foresight;
}

class frmDealerSelect;

/// Purchases of the current product beside the panel of one purchase.
class IncomingPane : public RecordEditor
{
    Q_OBJECT
public:
    IncomingPane(SaleSession &session, PaneShell &shell, QWidget *parent = nullptr);

    /// Opens the purchases of a product in rsProductIncoming and binds the grid; nothing happens while it does not exist.
    /// Without a key the list is closed, and no server is asked. Errors go to the caller, nothing is on view then. While the
    /// panel is in edit the list stays as it is, and follows when the edit ends.
    /// `tellNext`: what the caller reads next, which goes with the name of the first purchase's dealer.
    void loadProductIncoming(ProductKey product, const std::function<void(ado::Foresight &)> &tellNext = {});
    /// The chosen dealer included.
    void resetPane() override;
    /// The dealer that the dealer dialog reports; its key lies in the name box's property "Tag".
    void insFrmCompanySelect_evtDealerSelected(qint32 lngCMPK, const QString &strName);
    /// 0 add, 1 edit, -1 neither.
    qint16 intIncomingEditMode() const { return mode_; }

    QList<QWidget *> containers() const { return {listFrame_, panel_, strip_}; }

private:
    void makeControls();
    QGridLayout *makeFields();
    void connectFields();

    void addRow() override;
    void editRow() override;
    void deleteRow() override;
    void saveRow() override;
    void load() override;
    /// The chosen dealer's key is not touched: an edit saves the dealer last chosen in this panel.
    void showRow(const ado::Recordset &incoming) override;
    ControlGroup editGroup() const override;
    QList<EntryColor> fieldColors() const override;
    void endEdit(const ado::Bookmark &row) override;
    IncomingEdit typed() const;
    SaveOutcome save();
    void selectDealer();
    void showCompany(const QString &strName);
    void recalculateTotal();
    void stepCount(int by);

    IncomingOperations operations_;
    std::function<void(ado::Foresight &)> tellNext_;
    ProductKey product_; ///< on view
    ProductKey loaded_;  ///< whose purchases are listed
    ProductKey bought_;  ///< of the purchase that is added
    IncomingKey edited_;
    QPointer<frmDealerSelect> insFrmCompanySelect_;

    MoneyBox *txtIncCount_ = nullptr;
    controls::Stepper *udIincomingCount_ = nullptr;
    MoneyBox *txtIncPricePerUnit_ = nullptr;
    MoneyBox *txtIncHalinTotal_ = nullptr;
    QLineEdit *txtIncPriceTotal_ = nullptr;
    QLineEdit *txtIncCompanyName_ = nullptr;
    controls::PushCheck *chkCmdIncSelectCompany_ = nullptr;
    controls::DateEdit *dtpIncDate_ = nullptr;
    MemoBox *txtIncMemo_ = nullptr;
};
