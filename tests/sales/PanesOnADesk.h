#pragma once

#include "forms/clsMyFunctions.h"
#include "products/SaleListPane.h"
#include "sales/DetailPane.h"
#include "sales/OrderPane.h"
#include "sales/SaleEntryPane.h"
#include "tests/sales/SaleDatabase.h"
#include "tests/support/PaneWindow.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QInputMethodEvent>

/// A window with the four panes, connected as the main window connects them.
class Desk : public PaneWindow
{
public:
    explicit Desk(SaleSession &session)
        : list(new SaleListPane(session, this))
        , entry(new SaleEntryPane(session, this))
        , orders(new OrderPane(session, *this, this))
        , details(new DetailPane(session, this))
    {
        auto *columns = new QHBoxLayout(this);
        columns->addLayout(stack({list->c1elaList(), entry->c1elaProductInfo()}), 380);
        columns->addLayout(stack({orders->elTranMnu(), orders->c1elaList(), details->c1elaList()}), 620);
        columns->addLayout(stack({orders->c1elaCustSaleInfo(), details->c1elaSaleDetailMemo()}), 330);
        connect(list, &SaleListPane::productRowChanged, entry, &SaleEntryPane::showProduct);
        connect(entry, &SaleEntryPane::lineAdded, orders, &OrderPane::loadCustSaleMaster);
        connect(orders, &OrderPane::orderRowChanged, details, &DetailPane::loadCustSaleDetails);
        connect(orders, &OrderPane::noOrderSelected, details, [this] { details->loadCustSaleDetails(-1); });
        entry->setToday([] { return QDate(2026, 11, 24); });
        resize(1366, 640);
        show();
        (void)QTest::qWaitForWindowExposed(this);
    }

    void load()
    {
        list->loadSaleProductLists();
        orders->loadCustSaleMaster();
    }

    void enterEditMode(const QString &code) override
    {
        const EditModeTable table = orders->editMode();
        if (code != table.code)
            return;
        inEdit_ = code;
        setReach(false);
        for (QWidget *container : table.containers)
            container->setEnabled(true);
        open(table, true);
    }
    void leaveEditMode(const QString &) override
    {
        inEdit_.clear();
        setReach(true);
        open(orders->editMode(), false);
    }
    bool isInEdit(const QString &code) const override { return inEdit_ == code; }
    void paintEntryColors() override { ++painted; }

    /// Typed over what the box holds.
    void type(const char *name, const char *keys)
    {
        auto &box = at<QLineEdit>(name);
        box.setFocus();
        box.selectAll();
        for (const QChar key : QString::fromUtf8(keys)) {
            if (key.unicode() < 0x80) {
                QTest::keyClick(&box, key.toLatin1());
                continue;
            }
            QInputMethodEvent syllable; // Hangul comes from the input method, not as a key
            syllable.setCommitString(key);
            QApplication::sendEvent(&box, &syllable);
        }
    }

    SaleListPane *list;
    SaleEntryPane *entry;
    OrderPane *orders;
    DetailPane *details;
    int painted = 0;

private:
    static QVBoxLayout *stack(std::initializer_list<QWidget *> widgets)
    {
        auto *column = new QVBoxLayout;
        for (QWidget *widget : widgets)
            column->addWidget(widget);
        return column;
    }
    void setReach(bool within)
    {
        for (QWidget *pane : {list->c1elaList(), entry->c1elaProductInfo(), orders->c1elaList(), orders->elTranMnu(),
                              orders->c1elaCustSaleInfo(), details->c1elaList(), details->c1elaSaleDetailMemo()})
            pane->setEnabled(within);
    }
    static void open(const EditModeTable &table, bool editing)
    {
        clsMyFunctions().setCollection2Locked(table.group, !editing);
        for (QWidget *command : table.commands)
            command->setVisible(!editing);
        for (QWidget *button : table.saveButtons)
            button->setVisible(editing);
    }

    QString inEdit_;
};

class DeskTest : public SaleDatabase
{
protected:
    void open()
    {
        desk_ = std::make_unique<Desk>(session_);
        desk_->load();
    }
    Desk &desk() { return *desk_; }
    QTableView &grid(const char *name) { return desk().at<QTableView>(name); }
    static std::string cell(const QTableView &grid, int row, int column)
    {
        return grid.model()->index(row, column).data().toString().toStdString();
    }

    BoxReader reader_;

private:
    std::unique_ptr<Desk> desk_;
};
