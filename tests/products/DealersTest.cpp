#include "tests/support/DialogDriver.h"
#include "tests/support/SaleWindow.h"

#include "data/clsSQL.h"
#include "platform/controls/Modal.h"
#include "products/frmDealerSelect.h"

#include <QScreen>

using controls::Answer;

namespace {

class Dealers : public SaleWindow
{
protected:
    Dealers()
    {
        product("감초", 1000);
        runFile("products/dealers.sql");
    }
    std::string panel()
    {
        return texts({"txtCmCompanyName", "txtCmRegNum", "txtCmAddress", "txtCmTel", "txtCmMemo", "chkCmIsValid"});
    }
    Rows dealers()
    {
        return rows("SELECT CM_Name, CM_Address, CM_Tel, CM_IsValid FROM tPSCompanyMaster ORDER BY CM_PK");
    }

    /// Opens the dialog from the panel of a new purchase and acts in it.
    void select(const char *start, const std::function<void(const DialogDriver &)> &act)
    {
        if (inEdit().empty())
            push("chkcmdIncomingAED_0");
        at<QLineEdit>("txtIncCompanyName").setText(QString::fromUtf8(start));
        EXPECT_TRUE(inDialog([] { push("chkCmdIncSelectCompany"); }, act));
    }
    std::string chosen()
    {
        return text("txtIncCompanyName") + ' ' + at("txtIncCompanyName").property("Tag").toString().toStdString();
    }
};

Rows listed(const DialogDriver &dialog)
{
    Rows names;
    const QAbstractItemModel *model = dialog.find<QTableView>("tdbDealerSelect")->model();
    for (int row = 0; row < model->rowCount(); ++row)
        names.push_back(model->index(row, 1).data().toString().toStdString());
    return names;
}

} // namespace

TEST_F(Dealers, ThePanelShowsSavesAndDeletesThem)
{
    manage();
    EXPECT_EQ(panel(), "Acme|1|서울|02|외상|-");
    list("tdbCompanyMaster").moveTo(1); // no flag counts as no dealings
    EXPECT_EQ(panel(), "xyz|||||거래안함");

    push("chkcmdCmpnyMstrAED_1");
    EXPECT_EQ(focused(), "txtCmCompanyName");
    put("txtCmCompanyName", "");
    push("chkcmdCmpnyMstrSave_0");
    EXPECT_THAT(boxes_.take(), ElementsAre("거래처목록: 거래처이름을 입력하십시오."));
    EXPECT_EQ(inEdit(), "dealer");
    put("txtCmCompanyName", " ");
    put("txtCmTel", "031");
    put("txtCmAddress", " 부산 ");
    at<QAbstractButton>("chkCmIsValid").click();
    push("chkcmdCmpnyMstrSave_0");
    EXPECT_THAT(dealers(), ElementsAre("Acme|서울|02|1", " | 부산 |031|1", "한약방|NULL|NULL|0"));
    EXPECT_EQ(focused(), "tdbCompanyMaster");

    push("chkcmdCmpnyMstrAED_0");
    EXPECT_EQ(panel(), "|||||-");
    refuse("BEFORE INSERT ON tPSCompanyMaster");
    put("txtCmCompanyName", "새 거래처");
    push("chkcmdCmpnyMstrSave_0");
    EXPECT_THAT(boxes_.take(), ElementsAre("저장: 저장을 하지 못했습니다. 서버와의 연결을 확인하십시오."));
    EXPECT_EQ(inEdit(), "");
    EXPECT_EQ(dealers().size(), 3u);
    EXPECT_FALSE(gcnnMasterDB->inTransaction());
}

TEST_F(Dealers, OneWithPurchasesIsNotDeleted)
{
    atOtherDesk("INSERT INTO tPSIncoming (PM_PK, CM_PK) VALUES (1, 1)");
    manage();
    boxes_.answers = {Answer::Yes, Answer::Confirm, Answer::No, Answer::Yes};
    push("chkcmdCmpnyMstrAED_2");
    EXPECT_THAT(
        boxes_.take(),
        ElementsAre("거래처삭제: 거래처를 삭제하시겠습니까?",
                    "거래처삭제: 해당 거래처의 이름으로 주문내역이 있습니다. 거래없음을 체크하여 사용중지 하십시오."));
    list("tdbCompanyMaster").moveTo(1);
    push("chkcmdCmpnyMstrAED_2");
    push("chkcmdCmpnyMstrAED_2");
    EXPECT_THAT(dealers(), ElementsAre("Acme|서울|02|1", "한약방|NULL|NULL|0"));
    EXPECT_EQ(panel(), "한약방|||||거래안함");
}

// A name never reaches the search: it finds who has one of six letters in his name, whatever was typed.
TEST_F(Dealers, TheDialogListsAllOrThoseWithTheLetters)
{
    manage();
    select("", [](const DialogDriver &dialog) {
        EXPECT_EQ(dialog.focus(), "txtDealerName");
        EXPECT_THAT(listed(dialog), ElementsAre("Acme", "xyz", "한약방"));
        dialog.find<QLineEdit>("txtDealerName")->setText(" xyz ");
        dialog.key(Qt::Key_Return);
        EXPECT_THAT(listed(dialog), ElementsAre("Acme"));
        EXPECT_EQ(dialog.focus(), "txtDealerName");
    });
    EXPECT_EQ(chosen(), " ");
    select("한약방", [](const DialogDriver &dialog) {
        EXPECT_EQ(dialog.text("txtDealerName"), "한약방");
        EXPECT_EQ(dialog.focus(), "tdbDealerSelect");
        EXPECT_THAT(listed(dialog), ElementsAre("Acme"));
        dialog.find<QLineEdit>("txtDealerName")->clear();
        dialog.press("chkcmdFindDealer");
        EXPECT_EQ(listed(dialog).size(), 3u);
    });
}

TEST_F(Dealers, AreChosenByButtonKeyAndDoubleClick)
{
    manage();
    const struct
    {
        const char *how;
        std::function<void(const DialogDriver &)> act;
        const char *chosen;
    } cases[] = {
        {"F12", [](const DialogDriver &dialog) { dialog.key(Qt::Key_F12); }, "Acme 1"},
        {"Enter in the grid",
         [](const DialogDriver &dialog) {
             dialog.find<QTableView>("tdbDealerSelect")->setFocus();
             dialog.key(Qt::Key_Down);
             dialog.key(Qt::Key_Return);
         },
         "xyz 2"},
        {"double click",
         [](const DialogDriver &dialog) {
             auto *grid = dialog.find<QTableView>("tdbDealerSelect");
             const QPoint cell = grid->visualRect(grid->model()->index(2, 1)).center();
             QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, cell);
             QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, cell);
         },
         "한약방 3"},
        {"F9", [](const DialogDriver &dialog) { dialog.key(Qt::Key_F9); }, " 3"}, // the one chosen before stays
        {"button", [](const DialogDriver &dialog) { dialog.press("cmdOk"); }, "Acme 1"},
    };
    for (const auto &row : cases) {
        bool stood = false;
        select("", [&](const DialogDriver &dialog) {
            row.act(dialog);
            stood = dialog.window()->isVisible();
        });
        EXPECT_FALSE(stood) << row.how;
        EXPECT_EQ(chosen(), row.chosen) << row.how;
    }
    atOtherDesk("DELETE FROM tPSCompanyMaster");
    select("", [](const DialogDriver &dialog) {
        dialog.key(Qt::Key_F12);
        dialog.find<QTableView>("tdbDealerSelect")->setFocus();
        dialog.key(Qt::Key_Return);
        EXPECT_TRUE(dialog.window()->isVisible()) << "nobody to choose";
    });
}

TEST_F(Dealers, TheDialogStandsBesideItsButtonAndOnTheScreen)
{
    manage();
    const QRect screen = window().screen()->availableGeometry();
    const QWidget &button = at("chkCmdIncSelectCompany");
    const struct
    {
        QPoint window;
        bool fits;
    } cases[] = {{QPoint(5 - button.mapTo(&window(), QPoint(0, 0)).x(), 300), true},
                 {screen.bottomRight(), false},
                 {QPoint(-4000, -4000), false}};
    for (const auto &row : cases) {
        window().move(row.window);
        select("", [&](const DialogDriver &dialog) {
            const QRect place = dialog.window()->frameGeometry();
            EXPECT_TRUE(screen.contains(place)) << place.x() << ' ' << place.y();
            if (!row.fits)
                return;
            const QPoint origin = button.mapToGlobal(QPoint(0, 0));
            EXPECT_EQ(place.x(), origin.x() + 17);            // 255 twips at 96 dpi
            EXPECT_NEAR(place.bottom(), origin.y() + 93, 40); // 1,395 twips, and what a caption takes
        });
    }
}

TEST_F(Dealers, ASearchThatFailsIsToldWithItsReason)
{
    manage();
    select("", [&](const DialogDriver &dialog) {
        atOtherDesk("ALTER TABLE tPSCompanyMaster RENAME TO away");
        dialog.press("chkcmdFindDealer");
    });
    push("chkCmdIncSelectCompany");
    ASSERT_EQ(boxes_.messages.size(), 2u);
    for (const MessageRecorder::Message &box : boxes_.messages) {
        EXPECT_EQ(box.title.toStdString(), "거래처 검색");
        EXPECT_EQ(box.flags, 64);
        EXPECT_TRUE(box.text.startsWith("거래처를 찾을 수 없습니다. 이유: ")) << box.text.toStdString();
        EXPECT_GT(box.text.size(), 22);
    }
    atOtherDesk("ALTER TABLE away RENAME TO tPSCompanyMaster");
}

TEST_F(Dealers, TheDialogsWindowMayGoWhileTheChoiceIsTaken)
{
    auto *owner = new QWidget;
    owner->show();
    const controls::Modal<frmDealerSelect> dialog(owner);
    QObject::connect(dialog.get(), &frmDealerSelect::evtDealerSelected, [owner] { delete owner; });
    int chosen = 0;
    EXPECT_TRUE(
        inDialog([&] { chosen = dialog->SelectDealer(gcnnMasterDB, frmDealerSelect::Modal, QString(), owner, *owner); },
                 [](const DialogDriver &form) { form.press("cmdOk"); }));
    EXPECT_EQ(chosen, 1);
    EXPECT_FALSE(dialog);
}
