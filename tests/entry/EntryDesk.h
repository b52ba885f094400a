#pragma once

#include "platform/automation/Automation.h"
#include "platform/registry/AppSettings.h"
#include "tests/support/MessageRecorder.h"
#include "tests/support/Statements.h"
#include "tests/support/TestDatabase.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDate>
#include <QLineEdit>
#include <QStatusBar>
#include <QTabWidget>
#include <QTableView>
#include <QTest>

#include <algorithm>

/// The customer's part of an entry's arguments.
struct Patient
{
    int key = 7;
    QString name = QStringLiteral("남궁보람");
    QString chartNumber = QStringLiteral("A-00007");
    bool male = false;
    QDate birth = QDate(1980, 5, 7);
    QString zipCode = QStringLiteral("04524");
    QString address = QStringLiteral("서울 중구 세종대로 110");
    QString phone = QStringLiteral("02-000-0007");
    QString cell = QStringLiteral("010-0000-0007");
    QString vip = QString();
};

/// A host that knows the component by its face alone: creates it by name, calls it by name, finds the window and its
/// controls by name. Registers and settings lie in a folder of the test's own.
class EntryDesk : public testing::Test
{
protected:
    explicit EntryDesk(ado::Engine engine = ado::Engine::SQLite)
        : database_(engine)
    {
        automation::classRegister::setFile(folder_.filePath("classes.ini"));
        registry::setStoreFolder(folder_.path());
        for (const char *library : {"prjZelvoProductSale", "test_product_server"})
            automation::classRegister::registerLibrary(besideTest(library));
        sale_ = automation::createObject(QStringLiteral("prjZelvoProductSale.clsZelvoProductSale"));
    }
    ~EntryDesk() override
    {
        close();
        automation::classRegister::setFile(QString());
        registry::setStoreFolder(QString());
    }

    static QString besideTest(const char *file)
    {
        return QCoreApplication::applicationDirPath() + u'/' + QLatin1String(file);
    }

    QVariant call(const char *member, QVariantList arguments = {})
    {
        return automation::call(*sale_, QLatin1String(member), arguments);
    }
    QVariantList arguments(const Patient &patient = {}) const
    {
        return {QVariant::fromValue(database_.connection()),
                patient.key,
                patient.name,
                patient.chartNumber,
                patient.male,
                patient.birth,
                patient.zipCode,
                patient.address,
                patient.phone,
                patient.cell,
                patient.vip};
    }
    /// Calls an entry; its result says nothing, whatever happens.
    void enter(const char *entry, const Patient &patient = {})
    {
        const QVariant result = call(entry, arguments(patient));
        EXPECT_EQ(result.typeId(), QMetaType::Short) << entry;
        EXPECT_EQ(result.toInt(), 0) << entry;
        settle();
    }
    void sell(const Patient &patient = {}) { enter("showProductSale", patient); }
    void manage(const Patient &patient = {}) { enter("showProductSaleManage", patient); }

    /// The sale window if there is one, visible or not.
    static QWidget *window()
    {
        const QWidgetList windows = QApplication::topLevelWidgets();
        const auto found = std::find_if(windows.begin(), windows.end(), [](const QWidget *one) {
            return one->objectName() == QLatin1String("frmMain");
        });
        return found == windows.end() ? nullptr : *found;
    }
    static bool isUp() { return window() && window()->isVisible(); }
    void close()
    {
        if (window())
            window()->close();
        settle();
    }
    static void settle()
    {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    template <typename Control = QWidget>
    static Control *at(const QString &name)
    {
        auto *control = window() ? window()->findChild<Control *>(name) : nullptr;
        if (!control)
            throw std::runtime_error("no control " + name.toStdString());
        return control;
    }
    template <typename Control = QWidget>
    static Control *at(const char *name)
    {
        return at<Control>(QLatin1String(name));
    }
    static std::string text(const char *name) { return at<QLineEdit>(name)->text().toStdString(); }
    static int rowsOf(const char *grid) { return at<QTableView>(grid)->model()->rowCount(); }
    static QTabWidget *tabs() { return at<QTabWidget>("c1tabMain"); }
    static void push(const char *name) { QTest::mouseClick(at<QAbstractButton>(name), Qt::LeftButton); }
    static void choose(const char *grid, int row)
    {
        auto *view = at<QTableView>(grid);
        int column = 0;
        while (view->isColumnHidden(column))
            ++column;
        const QModelIndex cell = view->model()->index(row, column);
        view->scrollTo(cell);
        QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(cell).center());
    }

    /// "title: text" of the boxes so far, one a line.
    std::string said() const
    {
        QStringList lines;
        for (const MessageRecorder::Message &box : boxes_.messages)
            lines << box.title + QStringLiteral(": ") + box.text;
        return lines.join(u'\n').toStdString();
    }

    // A small shop: three products, one of them hidden; customer 7 with two orders and customer 8 with one.
    void fillShop() { runFile(database_, "entry/shop.sql"); }
    void nameProductServer(const QString &callSign)
    {
        database_.run("DELETE FROM t_HospSetup");
        database_.run(QStringLiteral("INSERT INTO t_HospSetup (HS_KEY, HS_Value) VALUES ('물품판매중앙콜사인', '%1')")
                          .arg(callSign));
    }

    QTemporaryDir folder_;
    TestDatabase database_;
    MessageRecorder boxes_;
    automation::ObjectPtr sale_;
};
