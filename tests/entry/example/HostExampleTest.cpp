#include "desk/schema/Schema.h"
#include "platform/ado/Recordset.h"
#include "platform/automation/Automation.h"
#include "platform/registry/AppSettings.h"
#include "platform/runtime/Conversions.h"
#include "platform/runtime/RuntimeError.h"
#include "tests/support/MessageRecorder.h"

#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QMetaMethod>
#include <QPushButton>
#include <QSettings>
#include <QTableView>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>

/// The example's main.
int hostMain(int argc, char **argv);

namespace {

QWidget *windowNamed(const char *name)
{
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window->objectName() == QLatin1String(name) && window->isVisible())
            return window;
    }
    return nullptr;
}

QPushButton *deskButton()
{
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (auto *button = qobject_cast<QPushButton *>(window); button && button->isVisible())
            return button;
    }
    return nullptr;
}

std::function<void()> person; ///< acts as soon as the program's event loop runs

void sitDown()
{
    QTimer::singleShot(0, QCoreApplication::instance(), [] { person(); }); // of the test, or the example's own
}

class HostExample : public testing::Test
{
protected:
    HostExample()
    {
        automation::classRegister::setFile(folder_.filePath("classes.ini"));
        registry::setStoreFolder(folder_.path());
        {
            int argc = 1;
            char name[] = "installer";
            char *argv[] = {name, nullptr};
            QCoreApplication installer(argc, argv);
            automation::classRegister::registerLibrary(QCoreApplication::applicationDirPath()
                                                       + QStringLiteral("/prjZelvoProductSale"));
            schema::createSchema(*ado::Connection::open(address_, true));
        }
        person = [] { FAIL() << "nobody was expected"; };
    }
    ~HostExample() override
    {
        EXPECT_EQ(boxes_.texts().join(u'\n').toStdString(), "");
        automation::classRegister::setFile(QString());
        registry::setStoreFolder(QString());
    }

    static QString besideTest(const char *library)
    {
        return QCoreApplication::applicationDirPath() + u'/' + QLatin1String(library);
    }
    /// Has the person act at the example's desk.
    static void work(const QString &address, const std::function<void(QPushButton *)> &act)
    {
        bool acted = false;
        person = [&] {
            acted = true;
            QPushButton *desk = deskButton();
            ASSERT_TRUE(desk);
            act(desk);
            desk->close(); // the sale window may be open: the host ends all the same
        };
        EXPECT_EQ(run(address), 0);
        EXPECT_TRUE(acted);
    }
    static int run(const QString &address)
    {
        std::string name = "example";
        std::string words = address.toStdString();
        char *argv[] = {name.data(), words.data(), nullptr};
        return hostMain(2, argv);
    }

    QTemporaryDir folder_;
    MessageRecorder boxes_;
    QString address_ = QStringLiteral("sqlite:") + folder_.filePath("clinic.db");
};

} // namespace

/// First in the file: the module stays loaded.
TEST(HostConnection, OpenedBeforeTheModuleIsLoadedIsWrittenThroughAfterwards)
{
    int argc = 1;
    char name[] = "host";
    char *argv[] = {name, nullptr};
    const QCoreApplication host(argc, argv);
    const QTemporaryDir folder;
    automation::classRegister::setFile(folder.filePath("classes.ini"));
    const ado::ConnectionPtr connection =
        ado::Connection::open(QStringLiteral("sqlite:") + folder.filePath("clinic.db"), true);
    schema::createSchema(*connection);
    const auto addProperty = [&connection] {
        ado::Recordset properties;
        properties.Open(QStringLiteral("SELECT * FROM tPSProperties"), connection, ado::CursorType::Keyset,
                        ado::LockType::Optimistic);
        properties.AddNew();
        properties.setValue("tpsps_Key", "지점명");
        properties.Update();
        return properties.value("tpsps_PK");
    };
    EXPECT_THROW(addProperty(), runtime::RuntimeError) << "nobody told of the tables yet";

    automation::classRegister::registerLibrary(QCoreApplication::applicationDirPath()
                                               + QStringLiteral("/prjZelvoProductSale"));
    EXPECT_EQ(addProperty(), QVariant(1));
    automation::classRegister::setFile(QString());
}

TEST_F(HostExample, SaysWhyItCannotStart)
{
    person = [] {};
    EXPECT_EQ(run(QStringLiteral("sqlite:") + folder_.filePath("missing.db")), 1);
    automation::classRegister::setFile(folder_.filePath("nothing-registered.ini"));
    EXPECT_EQ(run(address_), 1);
}

TEST_F(HostExample, OpensTheSaleAsOftenAsAskedAndEndsWithItsOwnWindow)
{
    work(address_, [](QPushButton *desk) {
        for (int visit = 0; visit < 2; ++visit) {
            QTest::mouseClick(desk, Qt::LeftButton);
            QWidget *sale = windowNamed("frmMain");
            ASSERT_TRUE(sale) << visit;
            EXPECT_EQ(sale->findChild<QLineEdit *>("txtCustDetail_0")->text().toStdString(), "김한방");
            EXPECT_TRUE(sale->close());
            QTest::qWait(50); // closing the sale does not end the host
        }
        QTest::mouseClick(desk, Qt::LeftButton);
        EXPECT_TRUE(windowNamed("frmMain"));
    });
}

TEST_F(HostExample, SellsWhatTheCentralServerOfThePageBringsAlong)
{
    const QString central = QStringLiteral("sqlite:") + folder_.filePath("central.db");
    const ado::ConnectionPtr shop = ado::Connection::open(address_);
    schema::createSchema(*ado::Connection::open(central, true));
    const char *const add = "INSERT INTO tPSProductMaster (PM_Name, PM_UnitPrice, PM_IsValid) VALUES ('%1', %2, 1)";
    shop->Execute(QString::fromUtf8(add).arg(QStringLiteral("감초차")).arg(900));
    ado::Connection::open(central)->Execute(QString::fromUtf8(add).arg(QStringLiteral("감초차")).arg(1000));
    ado::Connection::open(central)->Execute(QString::fromUtf8(add).arg(QStringLiteral("경옥고")).arg(50000));
    shop->Execute(QStringLiteral(
        "INSERT INTO t_HospSetup (HS_KEY, HS_Value) VALUES ('물품판매중앙콜사인', 'clinicCentral.Products')"));
    qputenv("CLINIC_SHOP", address_.toUtf8());
    qputenv("CLINIC_CENTRAL", central.toUtf8());
    work(address_, [&](QPushButton *desk) {
        automation::classRegister::registerLibrary(besideTest("libexample_central"));
        for (int visit = 0; visit < 2; ++visit) { // out of step, then in step
            QTest::mouseClick(desk, Qt::LeftButton);
            QWidget *sale = windowNamed("frmMain");
            ASSERT_TRUE(sale);
            EXPECT_EQ(sale->findChild<QTableView *>("tdbSaleProductLists")->model()->rowCount(), 2);
            sale->close();
        }
        qputenv("CLINIC_CENTRAL", "sqlite:nowhere.db");
        QTest::mouseClick(desk, Qt::LeftButton);
        EXPECT_FALSE(windowNamed("frmMain"));
    });
    EXPECT_EQ(boxes_.texts().join(u'\n').toStdString(),
              "물품관리서버와의 연결을 실패했습니다. 프로그램을 프로그램을 종료합니다.");
    boxes_.messages.clear();
    const ado::CellTable products =
        shop->read(QStringLiteral("SELECT PM_Name, PM_UnitPrice FROM tPSProductMaster ORDER BY PM_Name"));
    ASSERT_EQ(products.rowCount(), 2);
    EXPECT_EQ(runtime::text(products.value(0, 1)), "1000");
}

TEST_F(HostExample, ReportOfThePageShowsWhoBuysHowOften)
{
    const ado::ConnectionPtr shop = ado::Connection::open(address_);
    for (const char *statement : {"INSERT INTO Customer (Customer_PK, name) VALUES (7, '남궁보람'), (8, '서문하늘')",
                                  "INSERT INTO tPSOrderMaster (Cust_PK, OrdM_Date) VALUES (7, '2026-11-01'), (8, "
                                  "'2026-11-01'), (8, '2026-11-02')"})
        shop->Execute(QString::fromUtf8(statement));
    work(address_, [&](QPushButton *) {
        automation::classRegister::registerLibrary(besideTest("libexample_regulars"));
        const automation::ObjectPtr report = automation::createObject(QStringLiteral("clinicRegulars.Report"));
        QVariantList arguments{QVariant::fromValue(shop)};
        const int handle = automation::call(*report, QStringLiteral("StatStart"), arguments).toInt();
        const std::unique_ptr<QWidget> window(QWidget::find(WId(handle)));
        ASSERT_TRUE(window);
        auto *list = window->findChild<QTableWidget *>();
        ASSERT_EQ(list->rowCount(), 2);
        EXPECT_EQ((list->item(0, 0)->text() + list->item(0, 1)->text()).toStdString(), "서문하늘2");
        shop->Execute(QStringLiteral("DELETE FROM tPSOrderMaster WHERE Cust_PK = 8"));
        window->findChild<QPushButton *>()->click();
        EXPECT_EQ(list->rowCount(), 1);
    });
}

TEST_F(HostExample, StandsOnAPageThatNamesEveryClassAndMember)
{
    QString members;
    QStringList classes = QSettings(folder_.filePath("classes.ini"), QSettings::IniFormat).allKeys();
    for (const QString &key : std::as_const(classes)) {
        const automation::ObjectPtr object = automation::createObject(key.section(u'/', 1));
        const QMetaObject &face = *object->metaObject();
        members += QStringLiteral("prjZelvoProductSale.%1\n").arg(QLatin1String(face.className()));
        for (int index = face.methodOffset(); index < face.methodCount(); ++index) {
            const QMetaMethod member = face.method(index);
            if (member.attributes() & QMetaMethod::Cloned) // what may be left out
                continue;
            QStringList parameters;
            for (int at = 0; at < member.parameterCount(); ++at)
                parameters << QLatin1String(member.parameterTypes().at(at) + ' ' + member.parameterNames().at(at));
            members += QStringLiteral("  %1 %2(%3)\n")
                           .arg(QLatin1String(member.typeName()), QLatin1String(member.name()),
                                parameters.join(QStringLiteral(", ")));
        }
    }
    QFile page(QStringLiteral(HOST_PAGE));
    ASSERT_TRUE(page.open(QFile::ReadOnly));
    EXPECT_EQ(
        QString::fromUtf8(page.readAll()).section(QStringLiteral("```text\n"), 1).section(u'`', 0, 0).toStdString(),
        members.toStdString());
}

int main(int argc, char **argv)
{
    // No application of the test's own: the example makes one, and the person comes with every one that is made.
    qAddPreRoutine(sitDown);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
