#pragma once

#include "entry/frmMain.h"
#include "platform/controls/RecordsetGrid.h"
#include "platform/registry/AppSettings.h"
#include "products/DealerPane.h"
#include "products/IncomingPane.h"
#include "products/ProductPane.h"
#include "products/SaleListPane.h"
#include "sales/DetailPane.h"
#include "sales/OrderPane.h"
#include "sales/SaleEntryPane.h"
#include "tests/support/MessageRecorder.h"
#include "tests/support/SaleDatabase.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDateEdit>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <QTest>

#include <initializer_list>
#include <stdexcept>
#include <string>
#include <utility>

/// The real window on a clinic's database of the test's own, worked by the names of its controls.
class SaleWindow : public SaleDatabase
{
protected:
    SaleWindow() { registry::setStoreFolder(settings_.path()); }
    ~SaleWindow() override
    {
        close();
        registry::setStoreFolder(QString());
    }

    /// The sale of the customer, on his first order if there is one.
    void sell()
    {
        pane<SaleEntryPane>().setToday([] { return today(); });
        window().showProductSaleForm(connection(), session_.customer);
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window()));
        if (list("tdbCustSaleMaster").rowCount() > 0)
            choose("tdbCustSaleMaster", 0);
    }
    /// The second tab.
    void manage()
    {
        window().showProductSaleManageForm(connection(), session_.customer);
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window()));
    }
    void close()
    {
        delete frmMain::existing();
        gcnnMasterDB = connection();
    }
    static bool isUp() { return frmMain::existing() != nullptr; }
    static frmMain &window() { return frmMain::instance(); }
    template <typename Pane>
    static Pane &pane()
    {
        return *window().findChild<Pane *>();
    }

    /// Raises std::runtime_error where there is no such control.
    template <typename Control = QWidget>
    static Control &at(const char *name)
    {
        auto *control = window().findChild<Control *>(QString::fromLatin1(name));
        if (!control)
            throw std::runtime_error(std::string("no control ") + name);
        return *control;
    }
    static std::string text(const char *name)
    {
        if (auto *memo = window().findChild<QPlainTextEdit *>(QString::fromLatin1(name)))
            return memo->toPlainText().toStdString();
        return at<QLineEdit>(name).text().toStdString();
    }
    /// Text boxes and options, "|" between them; an option shows its caption when it is chosen.
    static std::string texts(std::initializer_list<const char *> names)
    {
        std::string all;
        const char *separator = "";
        for (const char *name : names) {
            all += std::exchange(separator, "|");
            auto *option = window().findChild<QAbstractButton *>(QString::fromLatin1(name));
            all += !option ? text(name) : option->isChecked() ? option->text().toStdString() : "-";
        }
        return all;
    }
    static std::string focused()
    {
        return window().focusWidget() ? window().focusWidget()->objectName().toStdString() : "";
    }
    /// Of which pane the save button is there to be pressed: "order", "ledger", "product", "purchase" or "dealer".
    static std::string inEdit()
    {
        const std::pair<const char *, const char *> panes[] = {{"chkcmdCSSaveInfo_0", "order"},
                                                               {"chkCmdSaveTrans_0", "ledger"},
                                                               {"chkCmdSaveProduct_0", "product"},
                                                               {"chkcmdIncomingSave_0", "purchase"},
                                                               {"chkcmdCmpnyMstrSave_0", "dealer"}};
        std::string all;
        for (const auto &[button, pane] : panes) {
            if (!at(button).isHidden())
                all += pane;
        }
        return all;
    }

    static void push(const char *name) { QTest::mouseClick(&at<QAbstractButton>(name), Qt::LeftButton); }
    /// Typed over what the box holds.
    static void type(const char *name, const char *keys)
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
    /// Put there at once, as from the clipboard.
    static void put(const char *name, const char *text)
    {
        if (auto *memo = window().findChild<QPlainTextEdit *>(QString::fromLatin1(name)))
            memo->setPlainText(QString::fromUtf8(text));
        else
            at<QLineEdit>(name).setText(QString::fromUtf8(text));
    }

    static ado::Recordset &list(const char *grid) { return *at<controls::RecordsetGrid>(grid).dataSource(); }
    static int rowsShown(const char *grid) { return at<QTableView>(grid).model()->rowCount(); }
    static std::string cell(const char *grid, int row, int column)
    {
        return at<QTableView>(grid).model()->index(row, column).data().toString().toStdString();
    }
    static void clickCell(const char *grid, int row, int column)
    {
        auto &view = at<QTableView>(grid);
        const QModelIndex cell = view.model()->index(row, column);
        view.scrollTo(cell);
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.visualRect(cell).center());
    }
    /// Clicks a row where nothing but the choice comes of it.
    static void choose(const char *grid, int row)
    {
        const auto &columns = at<controls::RecordsetGrid>(grid).columns();
        int column = 0;
        while (!columns[std::size_t(column)].visible
               || columns[std::size_t(column)].kind == controls::GridColumn::Kind::Check)
            ++column;
        clickCell(grid, row, column);
    }

    MessageRecorder boxes_;

private:
    QTemporaryDir settings_;
};
