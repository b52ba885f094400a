#pragma once

#include "forms/MemoBox.h"
#include "forms/MoneyBox.h"
#include "products/DealerOperations.h"
#include "products/RecordEditor.h"

#include <QCheckBox>
#include <QGridLayout>

namespace ado {
class Foresight;
}

/// Dealers that the shop buys from, beside the panel of one dealer.
class DealerPane : public RecordEditor
{
    Q_OBJECT
public:
    DealerPane(SaleSession &session, PaneShell &shell, QWidget *parent = nullptr);

    /// Opens rsCompanyMaster and binds the grid; nothing happens while it does not exist. Errors end here, told to nobody;
    /// then no dealer is on view.
    void loadCompanyMaster();
    /// Tells what that reads.
    static void tell(ado::Foresight &next);
    void resetPane() override;

    /// The strip of buttons is not among them: it lies on the panel and goes out of reach with it.
    QList<QWidget *> containers() const { return {listFrame_, panel_}; }
    /// 0 add, 1 edit, -1 neither.
    qint16 intCompanyEditMode() const { return mode_; }

private:
    QGridLayout *makeFields();

    void addRow() override;
    void editRow() override;
    void deleteRow() override;
    void saveRow() override;
    void load() override { loadCompanyMaster(); }
    void showRow(const ado::Recordset &dealer) override;
    ControlGroup editGroup() const override;
    QList<EntryColor> fieldColors() const override;
    DealerEdit typed() const;

    DealerOperations operations_;
    DealerKey edited_;

    MoneyBox *txtCmCompanyName_ = nullptr;
    MoneyBox *txtCmRegNum_ = nullptr;
    MoneyBox *txtCmAddress_ = nullptr;
    MoneyBox *txtCmTel_ = nullptr;
    MemoBox *txtCmMemo_ = nullptr;
    QCheckBox *chkCmIsValid_ = nullptr; ///< "거래안함": checked is False in the column
};
