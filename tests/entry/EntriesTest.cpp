#include "tests/entry/EntryDesk.h"

#include "forms/PaneContract.h"
#include "platform/controls/EventEdge.h"
#include "platform/runtime/RuntimeError.h"

#include <QDateEdit>
#include <QLabel>
#include <QLibrary>
#include <QMetaMethod>
#include <QStatusTipEvent>

#include <gmock/gmock.h>

using runtime::ErrorNumber;
using runtime::RuntimeError;

namespace {

class Entries : public EntryDesk
{
protected:
    Entries() { fillShop(); }

    static std::string statusText()
    {
        const QLabel *shown = at("MainStatusBar")->findChild<QLabel *>();
        return shown && shown->isVisible() ? shown->text().toStdString()
                                           : at<QStatusBar>("MainStatusBar")->currentMessage().toStdString();
    }
    static std::string customerFields()
    {
        QStringList fields;
        for (int index = 0; index < 9; ++index) {
            const auto *box = at<QLineEdit>(QStringLiteral("txtCustDetail_%1").arg(index));
            EXPECT_TRUE(box->isReadOnly()) << index;
            fields << box->text();
        }
        return fields.join(u'|').toStdString();
    }
    std::string stored(const char *statement)
    {
        return database_.rows(QLatin1String(statement)).join(u'\n').toStdString();
    }
};

} // namespace

TEST_F(Entries, ShowTheCustomerAndTheSale)
{
    Patient woman;
    woman.vip = QStringLiteral("VVIP");
    Patient man;
    man.key = 99;
    man.name = QStringLiteral("김&박");
    man.male = true;
    man.birth = QDate(1971, 12, 31);
    const struct
    {
        const char *entry;
        Patient patient;
        int tab;
        const char *focus;
        const char *fields;
        const char *tabText; ///< '&' doubled: a lone one would underline the next letter
        const char *status;
        int orders;
        int managed; ///< products of the management tab; it loads on its first visit
    } cases[] = {
        {.entry = "showProductSale",
         .patient = woman,
         .tab = 0,
         .focus = "txtSaleProductLists_5",
         .fields = "남궁보람|A-00007|1980-05-07|여|04524|서울 중구 세종대로 110|02-000-0007|010-0000-0007|",
         .tabText = "[남궁보람]님의 판매관리",
         .status = "남궁보람님의 판매관리",
         .orders = 2,
         .managed = 0},
        {.entry = "showProductSaleManage",
         .patient = man,
         .tab = 1,
         .focus = "tdbSaleProductListsManager",
         .fields = "김&박|A-00007|1971-12-31|남|04524|서울 중구 세종대로 110|02-000-0007|010-0000-0007|",
         .tabText = "[김&&박]님의 판매관리",
         .status = "김&박님의 판매관리",
         .orders = 0,
         .managed = 3},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.entry);
        enter(c.entry, c.patient);
        ASSERT_TRUE(QTest::qWaitForWindowActive(window()));
        EXPECT_EQ(window()->windowTitle().toStdString(), "물품판매관리");
        EXPECT_EQ(tabs()->currentIndex(), c.tab);
        ASSERT_TRUE(QApplication::focusWidget());
        EXPECT_EQ(QApplication::focusWidget()->objectName().toStdString(), c.focus);
        EXPECT_EQ(customerFields(), c.fields);
        EXPECT_EQ(tabs()->tabText(0).toStdString(), c.tabText);
        EXPECT_EQ(statusText(), c.status);
        EXPECT_EQ(rowsOf("tdbSaleProductLists"), 2) << "hidden products stay out";
        EXPECT_EQ(rowsOf("tdbCustSaleMaster"), c.orders);
        EXPECT_EQ(rowsOf("tdbCustSaleDetails"), 0) << "none until an order is selected";
        EXPECT_EQ(rowsOf("tdbCustTranManage"), 0);
        EXPECT_EQ(rowsOf("tdbSaleProductListsManager"), c.managed);
        EXPECT_EQ(rowsOf("tdbCompanyMaster"), c.managed ? 1 : 0);

        QStatusTipEvent passing{QString()}; // comes with every menu that the mouse passes over
        QApplication::sendEvent(window(), &passing);
        EXPECT_EQ(statusText(), c.status);
        close();
    }
    EXPECT_EQ(said(), "");
}

TEST_F(Entries, ReuseTheOpenWindowForTheNextCustomer)
{
    Patient next;
    next.key = 8;
    next.name = QStringLiteral("서문하늘");
    sell();
    const QPointer<QWidget> first = window();
    at<QDateEdit>("uxStartDateDTP")->setDate(QDate(2020, 2, 2));
    choose("tdbCustSaleMaster", 0);
    window()->showMinimized();

    for (const char *entry : {"showProductSale", "showProductSaleManage"}) {
        SCOPED_TRACE(entry);
        enter(entry, next);
        EXPECT_EQ(window(), first);
        EXPECT_FALSE(window()->isMinimized()) << "the desk called: it must be seen";
        EXPECT_EQ(customerFields().substr(0, next.name.toUtf8().size()), next.name.toStdString());
        EXPECT_EQ(rowsOf("tdbCustSaleMaster"), 1);
        EXPECT_EQ(rowsOf("tdbCustSaleDetails"), 0);
        EXPECT_EQ(at<QDateEdit>("uxStartDateDTP")->date(), QDate(2020, 2, 2)) << "loaded once only";
        EXPECT_EQ(at<QComboBox>("cboPayMethod")->count(), 6);
    }
    EXPECT_EQ(said(), "");
}

TEST_F(Entries, LeaveEveryEditForTheNextCustomer)
{
    Patient next;
    next.key = 8;
    for (const char *code : {"00", "02", "10", "11", "12"}) {
        SCOPED_TRACE(code);
        sell();
        tabs()->setCurrentIndex(1);
        tabs()->setCurrentIndex(0);
        choose("tdbCustSaleMaster", 0);
        dynamic_cast<PaneShell *>(window())->enterEditMode(QLatin1String(code));
        at<QLineEdit>("txtOrderMaster_5")->setText("meant for the first");
        manage(next);
        for (const char *container :
             {"c1elaList_0", "c1elaList_3", "c1elaCustSaleInfo", "sspPMProductList", "sspCompanyMaster_1"})
            EXPECT_TRUE(at(container)->isEnabled()) << container;
        for (const char *button : {"chkcmdCSSaveInfo_0", "chkCmdSaveTrans_0", "chkCmdSaveProduct_0",
                                   "chkcmdIncomingSave_0", "chkcmdCmpnyMstrSave_0"})
            EXPECT_TRUE(at(button)->isHidden()) << button;
        tabs()->setCurrentIndex(0);
        choose("tdbCustSaleMaster", 0);
        EXPECT_EQ(text("txtOrderMaster_5"), "남의 것");
        close();
    }
    EXPECT_EQ(stored("SELECT OrdM_ETCMemo FROM tPSOrderMaster ORDER BY OrdM_PK"), "첫째\n둘째\n남의 것");
}

TEST_F(Entries, ReadTheManagementListsFromTheConnectionThatCameLast)
{
    // Seen first without a connection, then with one, then with that of another clinic.
    TestDatabase other(ado::Engine::SQLite);
    other.run("INSERT INTO tPSProductMaster (PM_Catagory, PM_Name, PM_IsValid) VALUES ('라', '새 물품', 1)");
    QVariantList nobody = arguments();
    nobody[0] = QVariant();
    call("showProductSaleManage", nobody);
    EXPECT_EQ(rowsOf("tdbSaleProductListsManager"), 0);
    manage();
    EXPECT_EQ(rowsOf("tdbSaleProductListsManager"), 3);
    QVariantList elsewhere = arguments();
    elsewhere[0] = QVariant::fromValue(other.connection());
    call("showProductSaleManage", elsewhere);
    EXPECT_EQ(rowsOf("tdbSaleProductListsManager"), 1);
    EXPECT_EQ(rowsOf("tdbCompanyMaster"), 0);
    manage();
}

TEST_F(Entries, StartTheReportAnewForAnotherConnection)
{
    automation::classRegister::registerLibrary(besideTest("test_reports"));
    qApp->setProperty("behaviour", QStringLiteral("tells its connection"));
    TestDatabase other(ado::Engine::SQLite);
    QVariantList elsewhere = arguments();
    elsewhere[0] = QVariant::fromValue(other.connection());
    for (const auto &[host, address] :
         {std::pair(arguments(), database_.address()), std::pair(elsewhere, other.address())}) {
        for (int visit = 0; visit < 2; ++visit) {
            call("showProductSale", host);
            tabs()->setCurrentIndex(2);
            EXPECT_EQ(at<QLabel>("report")->text().toStdString(), address.toStdString());
        }
    }
    EXPECT_EQ(qApp->property("starts").toInt(), 2);
    EXPECT_EQ(said(), "");
}

TEST_F(Entries, AreFoundByNameAndRefuseWhatDoesNotFit)
{
    QStringList members;
    const QMetaObject &face = *sale_->metaObject();
    for (int index = face.methodOffset(); index < face.methodCount(); ++index) {
        if (const QString name = QString::fromLatin1(face.method(index).name()); !members.contains(name))
            members << name;
    }
    EXPECT_EQ(members.join(u' ').toStdString(), "Foo showProductSale showProductSaleManage");
    for (const char *name : {"DllRegisterServer", "DllUnregisterServer", "DllGetClassObject", "DllCanUnloadNow"})
        EXPECT_TRUE(QLibrary::resolve(besideTest("prjZelvoProductSale"), name)) << name;

    QVariantList tooMany = arguments();
    tooMany << 1;
    const auto with = [this](int index, const QVariant &value) {
        QVariantList changed = arguments();
        changed[index] = value;
        return changed;
    };
    const struct
    {
        const char *member;
        QVariantList arguments;
        ErrorNumber error;
        const char *told = "";
    } cases[] = {
        {"showProduct", {}, ErrorNumber::NoSuchMember},
        {"openProductServer", {QString()}, ErrorNumber::NoSuchMember},
        {"showProductSale", arguments().mid(0, 9), ErrorNumber::WrongArguments, ", 9 -> 11/10"},
        {"showProductSaleManage", tooMany, ErrorNumber::WrongArguments, ", 12 -> 11/10"},
        {"showProductSale", with(0, QStringLiteral("clinic.db")), ErrorNumber::WrongArguments,
         ", 1. cnnMasterDB: QString -> ado::ConnectionPtr&"},
        {"showProductSale", with(5, QStringLiteral("어제")), ErrorNumber::WrongArguments,
         ", 6. dtBirth: QString -> QDate"},
    };
    for (const auto &c : cases) {
        try {
            call(c.member, c.arguments);
            ADD_FAILURE() << c.member << " took it";
        } catch (const RuntimeError &error) {
            EXPECT_EQ(error.number(), c.error) << c.member;
            EXPECT_THAT(error.description().toStdString(), testing::HasSubstr(std::string(c.member) + c.told));
        }
    }
    EXPECT_FALSE(window()) << "a refused call does nothing";

    QVariantList shortest = arguments().mid(0, 10); // the last argument is optional
    shortest[1] = QStringLiteral("7");
    EXPECT_EQ(call("SHOWproductSALE", shortest).toInt(), 0);
    EXPECT_TRUE(isUp());
}

// The host's handlers end at the same edge as the window's: only the window's own work makes an entry wait.
TEST_F(Entries, OpensAtOnceFromAHandlerOfTheHost)
{
    controls::runEvent([this] {
        call("showProductSale", arguments());
        EXPECT_TRUE(isUp());
    });
    EXPECT_EQ(rowsOf("tdbCustSaleMaster"), 2);
}
