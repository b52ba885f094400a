#pragma once

#include "money/DialogForm.h"
#include "money/MoneyUpDown.h"
#include "platform/controls/PushCheck.h"
#include "platform/runtime/Currency.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDate>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>

#include <array>

/// The first payment of an order, split into discount, cut, cash, card and a remainder; or one ledger row to be changed.
/// It writes nothing: saving raises an event with the amounts, then the dialog closes. Made for one showing.
///
/// It was laid out for three-way receipts: the patient's and the insurer's share stay empty here and count as 0.
class frmSimpleReceipt : public QDialog
{
    Q_OBJECT
public:
    explicit frmSimpleReceipt(QWidget *owner = nullptr);

    /// A ledger row as its list shows it.
    struct EditedRow
    {
        QDate date;
        QString kind;
        runtime::Currency money;
        QString method; ///< may be empty
    };
    /// What the order owes already, by its outstanding money. To be told before Operation(), as the row below.
    void tellOutstanding(runtime::Currency money);
    /// The row that is to be changed: the form, which shows none of its values, says which one it is.
    void tellEditedRow(const EditedRow &row);

    /// Fills the form and shows it centred over its owner. With `intModal` 1 it returns when the form is gone. `bEdit`
    /// not 0 changes one ledger row: `dtOper`, `lngMoney` and `strOperator` (one of the four captions) are for that.
    void Operation(qint16 intModal, qint32 lngCustPK, const QString &strName, const QString &strChartNum,
                   const QDate &dtOrder, qint32 lngGeneral, qint32 lngOrdMPK, qint16 bEdit, const QDate &dtOper,
                   qint32 lngMoney, const QString &strOperator, QWidget *frmOwner);

signals:
    /// One ledger row takes these values.
    void ExecuteDB(qint32 lngCustPK, const QDate &date, qint16 intOperator, qint32 lngMoney, qint32 lngOrdMPK,
                   const QString &strChartNum);
    /// The first payment. Amounts may be negative.
    void AppendDBGeneral(qint32 lngCustPK, const QDate &date, float discount, float cut, float cash, float card,
                         float outstanding, qint32 lngOrdMPK, const QString &strChartNum);

protected:
    void showEvent(QShowEvent *event) override;

private:
    enum Medium { Cash, Card };

    // The form: controls and their places.
    void createControls();
    void layOutNewFrame();
    void layOutEntries(QGridLayout *grid, int row);
    void layOutOldFrame();
    void setTabOrderOfWork();
    void setKeys();

    // The form's load.
    void fillLists();
    void connectControls();
    void readDiscountSwitch();

    void beginEdit(const QDate &dtOper, qint32 lngMoney, const QString &strOperator);
    void beginNew(const QDate &dtOrder);
    void showShareTaken();
    void applyCut();
    void applyPercent();
    void showMustReceipt();
    void showRemain();
    void noteRemain();
    void warnOfZero();
    void moveRemain(int index);
    void setAll(int index);
    void setPayment(Medium medium, float money);
    float toBePaid() const;
    void save();
    void saveEdit();
    void saveNew();

    qint16 bEditMode_ = 0;
    qint32 lngCustPK_ = 0;
    qint32 lngOrdMPK_ = 0;
    bool shownBefore_ = false;

    dialogForm::ReceiptHead head_;
    QLineEdit *txtReceipt_PK_ = nullptr;

    QGroupBox *fraNewSunap_ = nullptr;
    QLabel *lblGeneral_ = nullptr;
    std::array<QLabel *, 4> lblMustReceipt_{};
    QLabel *lblGeneralRemain_ = nullptr;
    QLabel *lblRemainNote_ = nullptr;
    QLabel *lblOutstanding_ = nullptr;
    QComboBox *cboGeneralPercent_ = nullptr;
    controls::PushCheck *chkGeneralHalinConfirm_ = nullptr;
    QLineEdit *txtGeneralHalInMoney_ = nullptr;
    QComboBox *cboGeneralJeolsaGubun_ = nullptr;
    QLineEdit *txtGeneralJeolSaMoney_ = nullptr;
    std::array<QLineEdit *, 2> txtGeneralSuNapMoney_{};
    QList<controls::PushCheck *> chkGeneralRemain2Money_;
    QCheckBox *chkGeneralRemainToHalin_ = nullptr;
    QCheckBox *chkGeneralRemainToMisuMoney_ = nullptr;
    QList<controls::PushCheck *> chkAllSetting_;
    QCheckBox *chkBonin100_ = nullptr;
    MoneyUpDown *mudFirstSunap_ = nullptr;

    QGroupBox *fraOldSunap_ = nullptr;
    QLabel *lblEditedRow_ = nullptr;
    QLabel *lblZeroMoney_ = nullptr;
    runtime::Currency editedMoney_;
    QLineEdit *txtMoney_ = nullptr;
    MoneyUpDown *mudEditSunap_ = nullptr;
    dialogForm::OperatorOptions optOperator_{};

    QPushButton *cmdConfirm_ = nullptr;
    QPushButton *cmdCancel_ = nullptr;
};
