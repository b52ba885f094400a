#pragma once

#include "forms/BoundList.h"
#include "forms/MemoBox.h"
#include "forms/MoneyBox.h"
#include "forms/PaneContract.h"
#include "platform/controls/DateEdit.h"
#include "platform/controls/PushCheck.h"
#include "platform/controls/RecordsetGrid.h"
#include "products/ProductOperations.h"
#include "products/StockBox.h"
#include "session/SaleSession.h"

#include <QGridLayout>
#include <QRadioButton>
#include <QWidget>

#include <array>

/// The shop's product list over the panel of the current product.
class ProductPane : public QWidget
{
    Q_OBJECT
public:
    ProductPane(SaleSession &session, PaneShell &shell, QWidget *parent = nullptr);

    /// Opens rsSaleProductListsManager, which it makes if there is none, and binds the grid. Errors end here, told to nobody;
    /// then no product is on view.
    /// `keepRow`: the product that was current stays so, if it is still on the list; for a list loaded anew beneath an edit.
    void loadProductListsManager(bool keepRow = false);
    bool isLoaded() const { return list_.isLoaded(); }
    /// For a list that could not be loaded before.
    void loadIfClosed();
    /// Clears the panel.
    void resetPane();
    /// Shows the current product, or clears the panel; a panel in edit is left alone. A product that another desk deleted is
    /// told, and none is current then.
    void fillPanel();

    /// For a list that belongs to a central product server: add, edit and delete are out of reach, and no edit mode brings
    /// them back.
    void disableCommands();

    /// What every edit puts out of reach.
    QList<QWidget *> containers() const { return {sspPMProductList_, sspPMProductInfo_, elTranMnu_}; }
    EditModeTable editMode() const;
    /// Leaves an edit under way without saving; whether there was one.
    bool abandonEdit();
    /// 0 add, 1 edit, -1 neither; 1 also after the try to edit on an empty list.
    qint16 intProductEditMode() const { return intProductEditMode_; }
    controls::RecordsetGrid *grid() const { return tdbSaleProductListsManager_; }

signals:
    /// The panel shows another product; its purchases are to be shown. Raised before its stock is summed. Without a key none
    /// is on view, and there is no server to ask.
    void currentProductChanged(ProductKey product);

private:
    void makeList();
    void makeStrip();
    void makePanel();
    QGridLayout *makeFields();
    void arrange();
    void connectControls();

    bool readListAnew(ProductKey product);
    void showNoProduct();
    void leaveGone();

    void saveHideMark();
    void runCommand(int index);
    void addProduct();
    void editProduct();
    void deleteProduct();
    ProductEdit typed() const;
    void saveProduct();
    /// `product`: the one that stays current, if it is still there.
    void endEdit(ProductKey product = {});
    bool inEdit() const { return !chkCmdSaveProduct_.first()->isHidden(); }

    SaleSession &session_;
    PaneShell &shell_;
    ProductOperations operations_;
    BoundList list_;
    qint16 intProductEditMode_ = -1;
    ProductKey edited_;

    QWidget *sspPMProductList_ = nullptr;
    QWidget *sspPMProductInfo_ = nullptr;
    QWidget *elTranMnu_ = nullptr;
    controls::RecordsetGrid *tdbSaleProductListsManager_ = nullptr;
    std::array<MoneyBox *, 3> txtProSaleInfo_{}; ///< 0 to 2
    MemoBox *txtProSaleInfoMemo_ = nullptr;      ///< 3
    std::array<QRadioButton *, 2> optIsTaxed_{};
    std::array<QRadioButton *, 2> optIsValid_{};
    controls::DateEdit *dtpProdListAddedDate_ = nullptr;
    QList<controls::PushCheck *> chkCmdProdSaleAddEdiDel_;
    QList<controls::PushCheck *> chkCmdSaveProduct_;
    StockBox *stock_ = nullptr;
};
