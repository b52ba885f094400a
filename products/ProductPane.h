#pragma once

#include "input/MemoBox.h"
#include "input/MoneyBox.h"
#include "input/PaneContract.h"
#include "platform/controls/PushCheck.h"
#include "platform/controls/RecordsetGrid.h"
#include "products/StockBox.h"
#include "session/SaleSession.h"

#include <QDateEdit>
#include <QRadioButton>
#include <QWidget>

#include <array>

/// The shop's product list over the panel of the current product.
class ProductPane : public QWidget
{
    Q_OBJECT
public:
    ProductPane(SaleSession &session, PaneShell &shell, QWidget *parent = nullptr);

    /// Opens rsSaleProductListsManager, which must exist, and binds the grid. Errors end here, told to nobody.
    void loadProductListsManager();
    /// Clears the panel.
    void resetPane();
    /// Shows the current product in the panel, or clears it.
    void fillPanel();

    /// What every edit puts out of reach.
    QList<QWidget *> containers() const { return {sspPMProductList_, sspPMProductInfo_, elTranMnu_}; }
    EditModeTable editMode() const;
    controls::RecordsetGrid *grid() const { return tdbSaleProductListsManager_; }

signals:
    /// The panel shows another product; its purchases are to be shown. Raised before its stock is summed.
    void currentProductChanged(qint32 lngPMPK);

private:
    enum class Command { Add, Edit, Delete };
    enum EditMode : std::int16_t { None = -1, Add = 0, Edit = 1 };

    QWidget *makeList();
    QWidget *makeStrip();
    QWidget *makePanel();
    QWidget *makeOptions(const QString &caption, const QString &name, const QStringList &captions,
                         std::array<QRadioButton *, 2> &options);
    void connectControls();

    SaleSession &session_;
    PaneShell &shell_;

    QWidget *sspPMProductList_ = nullptr;
    QWidget *sspPMProductInfo_ = nullptr;
    QWidget *elTranMnu_ = nullptr;
    controls::RecordsetGrid *tdbSaleProductListsManager_ = nullptr;
    std::array<MoneyBox *, 3> txtProSaleInfo_{};
    MemoBox *txtProSaleInfoMemo_ = nullptr;
    std::array<QRadioButton *, 2> optIsTaxed_{};
    std::array<QRadioButton *, 2> optIsValid_{};
    QDateEdit *dtpProdListAddedDate_ = nullptr;
    QList<controls::PushCheck *> chkCmdProdSaleAddEdiDel_;
    QList<controls::PushCheck *> chkCmdSaveProduct_;
    StockBox *stock_ = nullptr;
    EditMode intProductEditMode_ = None;
};
