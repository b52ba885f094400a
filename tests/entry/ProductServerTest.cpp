#include "tests/entry/EntryDesk.h"

#include "forms/PaneContract.h"
#include "platform/runtime/RuntimeError.h"

using runtime::ErrorNumber;
using runtime::RuntimeError;

namespace {

constexpr const char *entries[] = {"showProductSale", "showProductSaleManage"};

constexpr const char *resyncFailed = "물품연동: 물품 연동에 실패했습니다. 프로그램을 종료합니다.";
constexpr const char *unreachable =
    "물품관리서버연결: 물품관리서버와의 연결을 실패했습니다. 프로그램을 프로그램을 종료합니다.";
constexpr const char *checkedOnce = "created CheckSync released";
constexpr const char *resynced = "created CheckSync released created ResyncFromServer released";

class CentralServer : public EntryDesk
{
protected:
    explicit CentralServer(ado::Engine engine = ado::Engine::SQLite)
        : EntryDesk(engine)
    {
        fillShop();
    }

    void script(const QVariant &sync, bool resync, const char *failing = "", int refuseFrom = 1000)
    {
        QVariantList arguments{sync, resync, QLatin1String(failing), refuseFrom};
        automation::call(*control_, QStringLiteral("Script"), arguments);
    }
    std::string log() { return automation::call(*control_, QStringLiteral("Log")).toString().toStdString(); }

    /// Whether the last entry left the product list to a central server: a window loaded from then on has the three
    /// product buttons out of reach. Leaves no window.
    bool linked()
    {
        close();
        call("Foo");
        int enabled = 0;
        for (int index = 0; index < 3; ++index)
            enabled += at(QStringLiteral("chkCmdProdSaleAddEdiDel_%1").arg(index))->isEnabled();
        EXPECT_TRUE(enabled == 0 || enabled == 3);
        close();
        return enabled == 0;
    }

    automation::ObjectPtr control_ = automation::createObject(QStringLiteral("testCentral.Control"));
};

} // namespace

class FarClinic : public CentralServer
{
protected:
    FarClinic()
        : CentralServer(ado::Engine::PostgreSQL)
    {
    }
};

TEST_F(CentralServer, DecidesWhetherTheWindowOpens)
{
    const QString server = QStringLiteral("testCentral.Server");
    const struct
    {
        const char *what;
        QString callSign;
        QVariant sync;         ///< what the server answers to the check
        bool resync;           ///< whether bringing it into step works
        const char *log;       ///< of the server
        const char *box;       ///< that the user sees
        bool opens;            ///< the window
        int refuseFrom = 1000; ///< the creation from which on no server is to be had
    } cases[] = {
        {"no server named", "", 0, false, "", "", true},
        {"nobody of that name", "testCentral.Nowhere", 1, true, "", "", false},
        {"cannot be created", server, 1, true, "", "", false, 1},
        {"in step", server, 1, false, checkedOnce, "", true},
        {"out of step, brought into it", server, 0, true, resynced, "", true},
        {"out of step for good", server, 0, false, resynced, resyncFailed, false},
        {"gone before the resync", server, 0, true, checkedOnce, resyncFailed, false, 2},
        {"unreachable", server, -1, true, checkedOnce, unreachable, false},
        {"an unknown answer counts as out of step", server, 5, true, resynced, "", true},
        {"so does one that looks like a failed creation", server, -2, false, resynced, resyncFailed, false},
        {"and an empty one", server, QVariant(), true, resynced, "", true},
    };
    for (const char *entry : entries) {
        for (const auto &c : cases) {
            SCOPED_TRACE(std::string(entry) + ", " + c.what);
            nameProductServer(c.callSign);
            script(c.sync, c.resync, "", c.refuseFrom);
            boxes_.messages.clear();
            enter(entry);
            EXPECT_EQ(isUp(), c.opens);
            EXPECT_EQ(log(), c.log);
            EXPECT_EQ(said(), c.box);
            for (const MessageRecorder::Message &box : std::as_const(boxes_.messages))
                EXPECT_EQ(box.flags, controls::InformationIcon);
            EXPECT_EQ(linked(), !c.callSign.isEmpty()) << "the name alone makes the link";
        }
    }
}

TEST_F(CentralServer, ReachesTheHostWithItsOwnErrorsAlone)
{
    const struct
    {
        const char *failing, *log;
    } cases[] = {{"CheckSync", "created CheckSync released"},
                 {"ResyncFromServer", "created CheckSync released created ResyncFromServer released"}};
    nameProductServer(QStringLiteral("testCentral.Server"));
    for (const char *entry : entries) {
        for (const auto &c : cases) {
            SCOPED_TRACE(std::string(entry) + ", " + c.failing);
            script(0, true, c.failing);
            try {
                call(entry, arguments());
                ADD_FAILURE() << "nothing was raised";
            } catch (const RuntimeError &error) {
                EXPECT_EQ(error.number(), ErrorNumber::ConnectionLost);
                EXPECT_EQ(error.description(), QLatin1String(c.failing) + QStringLiteral(" 중에 끊겼습니다."));
            }
            EXPECT_EQ(log(), c.log) << "the server is let go all the same";
            EXPECT_FALSE(isUp());
            EXPECT_TRUE(linked());
        }
    }
    EXPECT_EQ(said(), "");

    // The next call starts afresh.
    script(1, false);
    sell();
    EXPECT_TRUE(isUp());
}

TEST_F(CentralServer, KeepsTheProductListWhateverIsEdited)
{
    nameProductServer(QStringLiteral("testCentral.Server"));
    script(1, false);
    for (const char *entry : entries) {
        enter(entry);
        auto *shell = dynamic_cast<PaneShell *>(window());
        ASSERT_TRUE(shell);
        for (const char *code : {"00", "02", "10", "11", "12"}) {
            shell->enterEditMode(QLatin1String(code));
            shell->leaveEditMode(QLatin1String(code));
            for (int index = 0; index < 3; ++index) {
                const QWidget *button = at(QStringLiteral("chkCmdProdSaleAddEdiDel_%1").arg(index));
                EXPECT_FALSE(button->isEnabled() || button->isHidden()) << entry << ", " << code << ", " << index;
            }
        }
        close();
    }
}

TEST_F(FarClinic, ShowsNoProductsFromBeforeAServerThatWasJustNamed)
{
    nameProductServer(QString());
    sell();
    EXPECT_EQ(rowsOf("tdbSaleProductLists"), 2);

    nameProductServer(QStringLiteral("testCentral.Server"));
    script(0, true);
    QVariantList writing{database_.address(), QStringLiteral("INSERT INTO tPSProductMaster (PM_Catagory, PM_Name, "
                                                             "PM_UnitPrice) VALUES ('라', '본부의 새 차', 1000)")};
    automation::call(*control_, QStringLiteral("ResyncRuns"), writing);
    sell();
    EXPECT_EQ(rowsOf("tdbSaleProductLists"), 3);
    EXPECT_EQ(said(), "");
}

/// The window is made while the server is asked whether it may open.
TEST_F(FarClinic, LeavesNoWindowBehindThatMayNotOpen)
{
    nameProductServer(QString());
    const auto windows = QApplication::topLevelWidgets().size();
    database_.run("ALTER TABLE tPSIncoming RENAME COLUMN IN_Total TO away");
    sell();
    EXPECT_NE(said().find("tPSIncoming.IN_Total"), std::string::npos) << said();
    database_.run("ALTER TABLE tPSIncoming RENAME COLUMN away TO IN_Total");
    nameProductServer(QStringLiteral("testCentral.Server"));
    script(-1, false);
    sell();
    EXPECT_EQ(QApplication::topLevelWidgets().size(), windows);
    EXPECT_EQ(
        registry::GetSetting(QStringLiteral("Zelvo Desk"), QStringLiteral("물품판매관리"), QStringLiteral("FormWidth")),
        "")
        << "a place that no user gave it";
    nameProductServer(QString());
    sell();
    EXPECT_TRUE(isUp());
}

TEST_F(CentralServer, OpensOnWhatTheHeadOfficeEditedInItsOwnWindow)
{
    nameProductServer(QString());
    automation::classRegister::registerLibrary(besideTest("prjZelvoCentral"));
    const auto central = automation::createObject(QStringLiteral("prjZelvoCentral.clsZelvoCentral"));
    TestDatabase office(ado::Engine::PostgreSQL);
    const auto tell = [&](const char *member, const TestDatabase &database, const QVariantList &more = {}) {
        QVariantList arguments = QVariantList{QVariant::fromValue(database.connection())} + more;
        automation::call(*central, QLatin1String(member), arguments);
    };
    tell("MakeHeadOffice", office);
    tell("LinkClinic", database_, {office.address()});
    tell("UseClinic", database_);

    QVariantList atOffice = arguments();
    atOffice[0] = QVariant::fromValue(office.connection());
    call("showProductSaleManage", atOffice);
    push("chkCmdProdSaleAddEdiDel_0");
    at<QLineEdit>("txtProSaleInfo_0")->setText(QStringLiteral("라"));
    at<QLineEdit>("txtProSaleInfo_1")->setText(QStringLiteral("본부의 새 차"));
    push("chkCmdSaveProduct_0");
    close();

    nameProductServer(QStringLiteral("prjZelvoCentral.clsZelvoCentral"));
    database_.run(QStringLiteral("INSERT INTO t_HospSetup (HS_KEY, HS_Value) VALUES ('물품판매중앙주소', '%1')")
                      .arg(office.address()));
    sell();
    EXPECT_TRUE(isUp());
    EXPECT_EQ(rowsOf("tdbSaleProductLists"), 3) << "two of the clinic's own, and the new one";
    EXPECT_TRUE(linked());
    EXPECT_EQ(said(), "");
}
