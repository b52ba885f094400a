#include "desk/window/DeskWindow.h"
#include "desk/sample/Clinic.h"
#include "desk/window/JournalWindow.h"
#include "desk/window/PatientSearch.h"
#include "platform/registry/AppSettings.h"
#include "platform/runtime/ProgramFolder.h"
#include "tests/support/DialogDriver.h"
#include "tests/support/MessageRecorder.h"
#include "tests/support/TestDatabase.h"
#include "tests/support/WheelTurns.h"

#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QInputMethodEvent>
#include <QTest>

#include <gmock/gmock.h>

namespace {

class Reception : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        clinic_ = new TestDatabase(ado::Engine::SQLite, false);
        sample::fill(*clinic_->connection(), sample::Size::Small);
    }
    static void TearDownTestSuite() { delete std::exchange(clinic_, nullptr); }

    void SetUp() override
    {
        // No component is registered for this user, and none beside the test.
        automation::classRegister::setFile(folder_.filePath("classes.ini"));
        window_.show();
        QApplication::setActiveWindow(&window_);
        search_->setFocus();
    }
    void TearDown() override { automation::classRegister::setFile({}); }

    QString chosen() const { return table_->model()->index(table_->currentIndex().row(), 0).data().toString(); }

    static inline TestDatabase *clinic_ = nullptr;
    QTemporaryDir folder_;
    MessageRecorder boxes_;
    desk::DeskWindow window_{clinic_->connection()};
    QLineEdit *search_ = window_.findChild<QLineEdit *>("txtSearch");
    QTableView *table_ = window_.findChild<QTableView *>("tblPatients");
    QPushButton *sale_ = window_.findChild<QPushButton *>("cmdSale");
};

} // namespace

TEST(PatientSearch, FindsByNameConsonantsChartNumberAndTelephone)
{
    desk::Patient patient;
    patient.name = QStringLiteral("남궁 보람");
    patient.chartNumber = QStringLiteral("A-00017");
    patient.phone = QStringLiteral("02-0649-3741");
    patient.cell = QStringLiteral("010-0696-0351");
    const desk::SearchKey key(patient);
    const struct
    {
        const char *typed;
        bool found;
    } cases[]{
        {"", true},           {"  ", true},      {"남궁", true},     {"궁보", true},    {"보람이", false},
        {"ㄴㄱㅂㄹ", true},   {"ㄱㅂ", true},    {"ㄴㅂ", false},    {"a0001", true},   {"A-0001", true},
        {"00018", false},     {"0649-37", true}, {"06493741", true}, {"6960351", true}, {"-", true},
        {"010-0696x", false}, {"ㅂ람", true},
    };
    for (const auto &one : cases)
        EXPECT_EQ(key.matches(runtime::SearchPattern(QString::fromUtf8(one.typed))), one.found) << one.typed;
}

TEST_F(Reception, NarrowsTheListWithEveryKey)
{
    EXPECT_EQ(table_->model()->rowCount(), 30);
    QTest::keyClicks(search_, QStringLiteral("000007"));
    ASSERT_EQ(table_->model()->rowCount(), 1);
    EXPECT_EQ(chosen().toStdString(), clinic_->value("SELECT name FROM Customer WHERE sn = '000007'").toStdString());
    EXPECT_TRUE(sale_->isEnabled());

    QTest::keyClicks(search_, QStringLiteral("000"));
    EXPECT_EQ(table_->model()->rowCount(), 0);
    EXPECT_FALSE(sale_->isEnabled());
    QTest::keyClick(search_, Qt::Key_F2);
    EXPECT_TRUE(boxes_.messages.isEmpty());

    QTest::keyClick(&window_, Qt::Key_Escape);
    EXPECT_EQ(table_->model()->rowCount(), 30);
    EXPECT_TRUE(sale_->isEnabled());
}

TEST_F(Reception, ThatIsPaintedBeforeItsPatientsSaysSoAndSellsToNobodyUntilThen)
{
    desk::DeskWindow early{clinic_->connection(), desk::DeskWindow::Patients::WhenAsked};
    const auto *rows = early.findChild<QTableView *>("tblPatients")->model();
    const auto *sale = early.findChild<QPushButton *>("cmdSale");
    EXPECT_EQ(rows->rowCount(), 0);
    EXPECT_FALSE(sale->isEnabled());
    early.refresh();
    EXPECT_EQ(rows->rowCount(), 30);
    EXPECT_TRUE(sale->isEnabled());
}

TEST_F(Reception, CountsTheSyllableThatIsBeingComposed)
{
    QInputMethodEvent composing(QStringLiteral("ㅅ"), {});
    QApplication::sendEvent(search_, &composing);
    const int begins = table_->model()->rowCount();
    EXPECT_GT(begins, 0);
    EXPECT_LT(begins, 30);
    QInputMethodEvent givenUp;
    QApplication::sendEvent(search_, &givenUp);
    EXPECT_EQ(table_->model()->rowCount(), 30);
}

TEST_F(Reception, IsWalkedThroughFromTheSearch)
{
    QTest::keyClick(search_, Qt::Key_Down);
    QTest::keyClick(search_, Qt::Key_Down);
    EXPECT_EQ(table_->currentIndex().row(), 2);
    QTest::keyClick(search_, Qt::Key_Up);
    EXPECT_EQ(table_->currentIndex().row(), 1);
}

TEST_F(Reception, ReadAnewItKeepsThePatientAndComingBackSelectsTheSearch)
{
    QTest::keyClicks(search_, QStringLiteral("0000"));
    table_->selectRow(5);
    const QString patient = chosen();
    clinic_->run("INSERT INTO Customer (name, sn) VALUES ('가가', '000000')"); // comes before all others
    QTest::keyClick(search_, Qt::Key_F5);
    EXPECT_EQ(table_->currentIndex().row(), 6);
    EXPECT_EQ(chosen().toStdString(), patient.toStdString());
    clinic_->run("DELETE FROM Customer WHERE name = '가가'");
    window_.refresh();

    table_->setFocus();
    QTest::mouseClick(search_, Qt::LeftButton);
    EXPECT_EQ(search_->selectedText(), "0000");
    table_->setFocus();
    search_->setFocus(Qt::ActiveWindowFocusReason);
    EXPECT_EQ(search_->selectedText(), "0000");
}

TEST_F(Reception, SaysSoWhenTheComponentIsMissing)
{
    QTest::keyClick(search_, Qt::Key_Return);
    QTest::mouseClick(window_.findChild<QPushButton *>("cmdManage"), Qt::LeftButton);
    ASSERT_EQ(boxes_.messages.size(), 2);
    EXPECT_FALSE(boxes_.messages.front().text.isEmpty());
    EXPECT_TRUE(window_.isVisible());
}

TEST_F(Reception, KeepsTheDesksSettings)
{
    const QTemporaryDir own;
    registry::setStoreFolder(own.path());
    runtime::setProgramFolder(own.path());
    const QString application = "Zelvo Desk", windows = "물품판매관리", desks = "젤보 데스크",
                  printer = "영수증프린터디바이스";
    registry::SaveSetting(application, windows, "FormPos_x", "5000");
    registry::SaveSetting(application, desks, printer, "옛 프린터");
    QFile layout(own.filePath("Grid.CustTranManageLayourFile.tdb"));
    ASSERT_TRUE(layout.open(QIODevice::WriteOnly));
    const QString callSign = "SELECT HS_Value FROM t_HospSetup WHERE HS_KEY = '물품판매중앙콜사인'";
    const auto open = [&] { QTest::keyClick(&window_, Qt::Key_F10); };

    boxes_.answers = {controls::Answer::Yes};
    EXPECT_TRUE(inDialog(open, [&](const DialogDriver &dialog) {
        EXPECT_EQ(dialog.find<QComboBox>("cboReceiptPrinter")->currentText(), "옛 프린터 (이 컴퓨터에 없는 프린터)");
        dialog.find<QComboBox>("cboReceiptPrinter")->setCurrentIndex(0);
        dialog.find<QLineEdit>("txtCallSign")->setFocus();
        EXPECT_EQ(turnedByWheel(dialog.window()).toStdString(), "");
        dialog.type("txtCallSign", "Central.clsO'Brien");
        dialog.press("cmdResetWindows");
        dialog.key(Qt::Key_F12);
    }));
    EXPECT_EQ(boxes_.messages.size(), 2);
    EXPECT_EQ(registry::GetSetting(application, windows, "FormPos_x", "none"), "");
    EXPECT_EQ(registry::GetSetting(application, desks, printer), "<자동설정>");
    EXPECT_FALSE(layout.exists());
    EXPECT_EQ(clinic_->value(callSign), "Central.clsO'Brien");

    EXPECT_TRUE(inDialog(open, [](const DialogDriver &dialog) {
        EXPECT_EQ(dialog.text("txtCallSign"), "Central.clsO'Brien");
        dialog.type("txtCallSign", "");
        dialog.key(Qt::Key_Escape);
    }));
    EXPECT_EQ(clinic_->value(callSign), "Central.clsO'Brien");

    EXPECT_TRUE(inDialog(open, [](const DialogDriver &dialog) {
        clinic_->run("UPDATE t_HospSetup SET HS_Value = 'theirs' WHERE HS_KEY = '물품판매중앙콜사인'");
        dialog.key(Qt::Key_F12);
    }));
    EXPECT_EQ(clinic_->value(callSign), "theirs") << "what another desk set meanwhile, and nobody changed here";
    registry::setStoreFolder({});
    runtime::setProgramFolder({});
}

TEST_F(Reception, ShowsWhatHappenedToThePatientsOrdersAndOnADay)
{
    QTest::keyClicks(search_, QStringLiteral("000007"));
    const QString patient = clinic_->value("SELECT Customer_PK FROM Customer WHERE sn = '000007'");
    const QString order = clinic_->value("SELECT MAX(OrdM_PK) FROM tPSOrderMaster WHERE Cust_PK = " + patient);
    clinic_->run("UPDATE tPSOrderMaster SET OrdM_Total = 10000, OrdM_ETCMemo = '=1+1' WHERE OrdM_PK = " + order);
    clinic_->run("UPDATE tPSOrderMaster SET OrdM_Total = 12000, OrdM_Gubun = 2 WHERE OrdM_PK = " + order);
    clinic_->run("INSERT INTO tPSTransaction (tpstrans_Customer_PK, tpstrans_OrderM_PK, tpstrans_Operator, "
                 "tpstrans_Money, tpstrans_Method) VALUES ("
                 + patient + ", " + order + ", 3, 12000, '01')");
    QTest::keyClick(&window_, Qt::Key_F9);
    desk::JournalWindow *journal = nullptr;
    for (QWidget *window : QApplication::topLevelWidgets())
        journal = journal ? journal : qobject_cast<desk::JournalWindow *>(window);
    ASSERT_TRUE(journal && journal->isVisible());
    const auto *const rows = journal->findChild<QTableView *>("tblJournal")->model();
    const auto shown = [&](int row) {
        QStringList cells;
        for (int column = 2; column < rows->columnCount(); ++column)
            cells << rows->index(row, column).data().toString();
        return cells.join(u'|').toStdString();
    };
    const std::string keys = (order + u'|' + patient + u'|').toStdString();
    ASSERT_EQ(rows->rowCount(), 3);
    EXPECT_EQ(shown(0), "추가|수납|" + keys + "방법 수납 · 금액 \\12,000 · 결재방법 카드");
    EXPECT_EQ(shown(1), "수정|거래|" + keys + "수령방법 직접수령 → 택배 · 판매총액 \\10,000 → \\12,000");
    EXPECT_THAT(journal->findChild<desk::JournalModel *>()->csv().toStdString(), testing::HasSubstr("메모 "));

    journal->findChild<QRadioButton *>("optDay")->click();
    EXPECT_EQ(rows->rowCount(), 2); // what came is no change
    journal->close();
}
