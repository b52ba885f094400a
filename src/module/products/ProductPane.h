#pragma once

#include "forms/MemoBox.h"
#include "forms/MoneyBox.h"
#include "platform/ado/Foresight.h"
#include "platform/controls/DateEdit.h"
#include "products/PriceList.h"
#include "products/ProductOperations.h"
#include "products/RecordEditor.h"
#include "products/StockBox.h"

#include <QGridLayout>
#include <QPushButton>
#include <QRadioButton>

#include <array>

/// The shop's product list over the panel of the current product.
class ProductPane : public RecordEditor
{
    Q_OBJECT
public:
    ProductPane(SaleSession &session, PaneShell &shell, QWidget *parent = nullptr);

    /// Opens rsSaleProductListsManager, which it makes if there is none, and binds the grid. Errors end here, told to nobody;
    /// then no product is on view.
    /// `keepRow`: the product that was current stays so, if it is still on the list; for a list loaded anew beneath an edit.
    void loadProductListsManager(bool keepRow = false);
    /// What that reads first, where the list is made.
    static void tellChoice(ado::Foresight &next);
    /// The stock figures of the last product stay on view.
    void resetPane() override;

    /// For a list that belongs to a central product server: add, edit and delete are out of reach, and no edit mode brings
    /// them back.
    void disableCommands();

    /// What every edit puts out of reach.
    QList<QWidget *> containers() const { return {listFrame_, panel_, strip_}; }
    /// 0 add, 1 edit, -1 neither; 1 also after the try to edit on an empty list.
    qint16 intProductEditMode() const { return mode_; }

signals:
    /// The panel shows another product; its purchases are to be shown. Raised before its stock is summed. Without a key none
    /// is on view, and there is no server to ask.
    void currentProductChanged(ProductKey product);

private:
    void makeControls();
    QGridLayout *makeFields();
    void makeListTools();
    void arrange();

    void run(Command command) override;
    void addRow() override;
    void editRow() override;
    void deleteRow() override;
    void saveRow() override;
    void load() override { loadProductListsManager(); }
    void showRow(const ado::Recordset &product) override;
    void showNone() override;
    ControlGroup editGroup() const override;
    QList<EntryColor> fieldColors() const override;
    ProductEdit typed() const;
    void saveHideMark();
    QString listStatement() const;
    std::vector<PriceLine> readPriceList() const;
    void printList();
    void saveList();

    ProductOperations operations_;
    ProductKey edited_;

    std::array<MoneyBox *, 3> txtProSaleInfo_{}; ///< 0 to 2
    MemoBox *txtProSaleInfoMemo_ = nullptr;      ///< 3
    std::array<QRadioButton *, 2> optIsTaxed_{};
    std::array<QRadioButton *, 2> optIsValid_{};
    controls::DateEdit *dtpProdListAddedDate_ = nullptr;
    StockBox *stock_ = nullptr;
    QPushButton *cmdPrintProductList_ = nullptr;
    QPushButton *cmdSaveProductList_ = nullptr;
};
