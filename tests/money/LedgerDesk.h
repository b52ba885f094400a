#pragma once

#include "data/clsSQL.h"
#include "money/LedgerPane.h"
#include "money/ReceiptFlow.h"
#include "tests/support/MessageRecorder.h"
#include "tests/support/SaleDatabase.h"

#include <QLineEdit>
#include <QTest>
#include <QVBoxLayout>

/// A window that holds the ledger pane and its receipt flow on a clinic's database, with one order at hand.
class LedgerDesk : public SaleDatabase
{
protected:
    explicit LedgerDesk(ado::Engine engine = ado::Engine::SQLite)
        : SaleDatabase(engine)
    {
        session_.customer.name = QStringLiteral("홍길동");
        session_.customer.chartNumber = QStringLiteral("C-1");
        pane_ = new LedgerPane(session_, shell_, &window_);
        flow_ = new ReceiptFlow(session_, *pane_, &window_);
        for (QWidget *container : {pane_->elTranMnu(), pane_->c1elaList(), pane_->c1elaTransInfo()})
            containers_.addWidget(container);
    }

    /// An order of the customer with this total and outstanding money ("NULL" or an amount), made current.
    int openOrder(int total, const QString &outstanding = QStringLiteral("0"))
    {
        const int key = order("2026-11-20");
        atOtherDesk(QStringLiteral("UPDATE tPSOrderMaster SET OrdM_Total = %2, OrdM_Misugum = %3 WHERE OrdM_PK = %1")
                        .arg(key)
                        .arg(total)
                        .arg(outstanding));
        loadOrders();
        session_.rsCustSaleMaster->setBookmark(key);
        pane_->loadCustTranManage(Patient, key);
        return key;
    }
    void loadOrders() { openRows(session_.rsCustSaleMaster, clsSQL().getOrderMasterSQL(Patient)); }
    /// "date|operator|money|method|memo" of all ledger rows.
    Rows ledgerRows()
    {
        return rows("SELECT tpstrans_Date, tpstrans_Operator, tpstrans_Money, tpstrans_Method, tpstrans_Memo "
                    "FROM tPSTransaction ORDER BY tpstrans_PK");
    }
    std::string outstanding() { return rows("SELECT OrdM_Misugum FROM tPSOrderMaster ORDER BY OrdM_PK DESC").at(0); }
    /// One ledger row of an order; texts go in as they stand in a statement.
    void ledgerRow(int orderKey, const char *values)
    {
        atOtherDesk(
            QStringLiteral("INSERT INTO tPSTransaction (tpstrans_Customer_PK, tpstrans_OrderM_PK, tpstrans_Date, "
                           "tpstrans_Operator, tpstrans_Money, tpstrans_Method, tpstrans_Memo) VALUES (41, %1, %2)")
                .arg(orderKey)
                .arg(QString::fromUtf8(values)));
    }

    template <typename Control>
    Control *find(const char *name) const
    {
        auto *control = window_.findChild<Control *>(QString::fromLatin1(name));
        EXPECT_TRUE(control) << name;
        return control;
    }
    std::string text(const char *name) const { return find<QLineEdit>(name)->text().toStdString(); }
    void press(const char *name) const { find<QAbstractButton>(name)->click(); }

    struct Shell final : PaneShell
    {
        void enterEditMode(const QString &) override {}
        void leaveEditMode(const QString &code) override { left.push_back(code.toStdString()); }
        bool isInEdit(const QString &) const override { return false; }
        void paintEntryColors() override {}
        std::vector<std::string> left;
    };

    Shell shell_;
    QWidget window_;
    QVBoxLayout containers_{&window_};
    LedgerPane *pane_;
    ReceiptFlow *flow_;
    MessageRecorder boxes_;
};
