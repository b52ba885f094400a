#include "desk/schema/Schema.h"
#include "platform/ado/Recordset.h"
#include "platform/automation/Automation.h"
#include "platform/registry/AppSettings.h"
#include "platform/runtime/RuntimeError.h"
#include "tests/support/MessageRecorder.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
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
    QTimer::singleShot(0, qApp, [] { person(); });
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
    bool acted = false;
    person = [&acted] {
        acted = true;
        QPushButton *desk = deskButton();
        ASSERT_TRUE(desk);
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
        desk->close(); // the sale window is open: the host ends all the same
    };
    EXPECT_EQ(run(address_), 0);
    EXPECT_TRUE(acted);
}

int main(int argc, char **argv)
{
    // No application of the test's own: the example makes one, and the person comes with every one that is made.
    qAddPreRoutine(sitDown);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
