#pragma once

#include "desk/walk/Actor.h"
#include "desk/window/Component.h"
#include "desk/window/Look.h"
#include "platform/registry/AppSettings.h"
#include "platform/runtime/ProgramFolder.h"
#include "tests/support/MessageRecorder.h"
#include "tests/support/Statements.h"
#include "tests/support/TestDatabase.h"

#include <QApplication>
#include <QLineEdit>
#include <QPointer>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

#include <functional>
#include <memory>

/// A desk with a small hand-written shop: the sale window of one customer, opened through the component as a host does,
/// worked with keys and mouse, its database read by plain queries.
class SaleDesk
{
public:
    /// Products in the order of the list: 1 감초차 (taxed, 1,000), 2 경옥고 (tax-free, 50,000), 3 옛날환 (not handled).
    explicit SaleDesk(ado::Engine engine = ado::Engine::SQLite)
        : database(engine)
    {
        desk::dressUp(*qApp);
        automation::classRegister::setFile(folder_.filePath("classes.ini"));
        registry::setStoreFolder(folder_.path());
        runtime::setProgramFolder(folder_.path()); // layouts and logo of one trial are not the next one's
        desk::SaleComponent::registerBesideProgram();
        runFile(database, "whole/shop.sql");
    }

    ~SaleDesk()
    {
        if (window_)
            window_->close();
        walk::settle();
        component_.reset();
        automation::classRegister::setFile({});
        registry::setStoreFolder({});
        runtime::setProgramFolder({});
    }

    void open(int customer = 7)
    {
        desk::Patient patient;
        patient.key = customer;
        patient.name = customer == 7 ? QStringLiteral("남궁보람") : QStringLiteral("서문하늘");
        patient.chartNumber = QStringLiteral("00000%1").arg(customer);
        patient.birth = QDate(1980, 5, 17);
        patient.address = QStringLiteral("서울 중구 세종대로 110");
        patient.phone = QStringLiteral("02-000-0000");
        patient.cell = QStringLiteral("010-0000-0000");
        if (!component_)
            component_ = std::make_unique<desk::SaleComponent>(connection ? connection : database.connection());
        component_->showProductSale(patient);
        window_ = actor.window(QStringLiteral("frmMain"));
        walk::settle();
    }

    /// Roll receipts become this file of the test's own; its path.
    QString printRollReceiptsTo(const char *file)
    {
        const QString path = folder_.filePath(QLatin1String(file));
        registry::SaveSetting(QStringLiteral("Zelvo Desk"), QStringLiteral("젤보 데스크"),
                              QStringLiteral("영수증프린터디바이스"), path);
        return path;
    }

    QWidget *window() const { return window_; }
    template <typename Control = QWidget>
    Control *control(const char *name) const
    {
        return actor.control<Control>(window_, QString::fromLatin1(name));
    }
    QTableView *grid(const char *name) const { return control<QTableView>(name); }
    QString text(const char *name) const { return control<QLineEdit>(name)->text(); }
    void click(const char *name) { actor.click(control(name)); }
    void choose(const char *gridName, int row) { actor.clickRow(grid(gridName), row); }
    int rowsOf(const char *gridName) const { return grid(gridName)->model()->rowCount(); }
    /// Clicks a button whose question is answered so.
    void answer(const char *button, controls::Answer answer)
    {
        boxes.answers = {answer};
        click(button);
        boxes.answers.clear();
    }
    /// Acts in the dialog that the button opens.
    void in(const char *button, const std::function<void(QWidget *)> &act)
    {
        actor.inModalWindow([&] { click(button); }, act);
    }
    void press(QWidget *dialog, const char *name) { actor.click(actor.control(dialog, QString::fromLatin1(name))); }
    /// "title: text" of the boxes so far, a line each; forgets them.
    std::string said()
    {
        std::string all;
        for (const std::string &box : boxes.take())
            all += box + '\n';
        return all;
    }
    void type(const char *name, const char *keys) { actor.typeInto(control(name), QString::fromLatin1(keys)); }

    /// Chooses a product of the list and adds it with this quantity.
    void addLine(int product, const char *quantity)
    {
        choose("tdbSaleProductLists", product);
        type("txtSaleProductLists_5", quantity);
        click("cmdCSAppendDetail");
    }

    // Rows of the tables, one a line.
    std::string orders()
    {
        return joined("SELECT OrdM_PK, Cust_PK, OrdM_Date, OrdM_TaxTotal, OrdM_TaxFreeTotal, "
                      "OrdM_HalinTotal, OrdM_Total, OrdM_Misugum FROM tPSOrderMaster ORDER BY OrdM_PK");
    }
    std::string lines()
    {
        return joined("SELECT OrdM_PK, PM_PK, OrdD_UnitPrice, OrdD_HalinUnit, OrdD_Count, OrdD_OrderType "
                      "FROM tPSOrderDetail ORDER BY OrdD_PK");
    }
    std::string ledger()
    {
        return joined("SELECT tpstrans_OrderM_PK, tpstrans_Customer_PK, tpstrans_Operator, tpstrans_Money, "
                      "tpstrans_Method FROM tPSTransaction ORDER BY tpstrans_PK");
    }

    /// Orders, lines and ledger with all that is written on them.
    std::string all()
    {
        return orders() + "\n-\n" + lines() + "\n-\n" + ledger() + "\n-\n"
               + joined("SELECT OrdM_ETCMemo FROM tPSOrderMaster ORDER BY OrdM_PK") + "\n-\n"
               + joined("SELECT OrdD_RfndMemo FROM tPSOrderDetail ORDER BY OrdD_PK") + "\n-\n"
               + joined("SELECT tpstrans_Memo FROM tPSTransaction ORDER BY tpstrans_PK");
    }

    /// The rows of a plain query, one a line.
    std::string joined(const QString &statement) { return database.rows(statement).join(u'\n').toStdString(); }

private:
    QTemporaryDir folder_;

public:
    TestDatabase database;
    ado::ConnectionPtr connection; ///< the window's, where it is another one than the database's own
    MessageRecorder boxes;
    walk::Actor actor{folder_.filePath("pictures")};

private:
    std::unique_ptr<desk::SaleComponent> component_;
    QPointer<QWidget> window_;
};
