#include "tests/support/SaleWindow.h"

#include "platform/controls/Appearance.h"

#include <QLabel>

#include <cmath>
#include <set>

namespace {

class EntryPane : public SaleWindow
{
protected:
    Rows lines()
    {
        return rows("SELECT OrdM_PK, OrdD_UnitPrice, OrdD_HalinUnit, OrdD_Count, OrdD_OrderType FROM tPSOrderDetail "
                    "ORDER BY OrdD_PK");
    }
};

const char *const kindButtons[] = {"ssoptSellType_0", "ssoptSellType_1", "ssoptSellType_2"};

} // namespace

TEST_F(EntryPane, ShowsTheCurrentProductAndClearsWithoutOne)
{
    product("감초", 12000, false, true);
    sell();
    EXPECT_EQ(texts({"txtSaleProductLists_0", "txtSaleProductLists_1", "txtSaleProductLists_2", "txtSaleProductLists_6",
                     "txtSaleProductLists_8"}),
              "차|감초|\\12,000|\\12,000|\\12,000");
    EXPECT_FALSE(at<QCheckBox>("chkSaleProductLists_0").isChecked());
    EXPECT_TRUE(at<QCheckBox>("chkSaleProductLists_1").isChecked());

    atOtherDesk("UPDATE tPSProductMaster SET PM_IsHide = 1");
    pane<SaleListPane>().requerySaleProductLists();
    EXPECT_EQ(text("txtSaleProductLists_1"), "");
    EXPECT_EQ(text("txtSaleProductLists_5"), "1");
    EXPECT_EQ(text("txtSaleProductLists_8"), "\\0");
    EXPECT_FALSE(at<QCheckBox>("chkSaleProductLists_1").isChecked());
}

TEST_F(EntryPane, TheLineTotalFollowsWhatIsTyped)
{
    product("감초", 1000);
    sell();
    const struct
    {
        const char *box, *keys, *total;
    } steps[] = {
        {"txtSaleProductLists_5", "12", "\\12,000"},       {"txtSaleProductLists_4", "100", "\\10,800"},
        {"txtSaleProductLists_7", "50", "\\10,850"},       // a further discount is added here and stored nowhere
        {"txtSaleProductLists_5", "40000", "\\3,600,050"}, // too large for a quantity: stays at 4,000
        {"txtSaleProductLists_5", "-", "\\3,600,050"},     {"txtSaleProductLists_5", "-2", "-\\1,750"},
        {"txtSaleProductLists_5", "x3", "\\2,750"}, // letters beep and do nothing
    };
    for (const auto &step : steps) {
        SCOPED_TRACE(step.keys);
        type(step.box, step.keys);
        EXPECT_EQ(text("txtSaleProductLists_8"), step.total);
    }
}

TEST_F(EntryPane, SteppersNeverReachZero)
{
    product("감초", 1000);
    sell();
    const struct
    {
        const char *button, *from, *to;
    } steps[] = {
        {"udNoOfProdPlusMinus_up", "1", "2"},      {"udNoOfProdPlusMinus_down", "2", "1"},
        {"udNoOfProdPlusMinus_down", "1", "1"},    {"udNoOfProdPlusMinusBy5_up", "1", "6"},
        {"udNoOfProdPlusMinusBy5_down", "6", "1"}, {"udNoOfProdPlusMinusBy5_down", "5", "5"},
        {"udNoOfProdPlusMinus_up", "", "1"},       {"udNoOfProdPlusMinus_down", "-3", "-3"},
    };
    for (const auto &step : steps) {
        SCOPED_TRACE(std::string(step.button) + " from " + step.from);
        at<QLineEdit>("txtSaleProductLists_5").setText(QString::fromLatin1(step.from));
        push(step.button);
        EXPECT_EQ(text("txtSaleProductLists_5"), step.to);
    }
}

TEST_F(EntryPane, TheKindDecidesPriceTotalAndSign)
{
    product("감초", 1000);
    sell();
    type("txtSaleProductLists_5", "-3");

    push("ssoptSellType_2");
    EXPECT_EQ(text("txtSaleProductLists_5"), "-3");
    EXPECT_EQ(text("txtSaleProductLists_2"), "\\0");
    EXPECT_EQ(text("txtSaleProductLists_6"), "\\0");
    EXPECT_EQ(text("txtSaleProductLists_8"), "\\0");

    push("ssoptSellType_1");
    EXPECT_EQ(text("txtSaleProductLists_5"), "3");

    push("ssoptSellType_0");
    EXPECT_EQ(text("txtSaleProductLists_6"), "\\1,000");
    EXPECT_EQ(text("txtSaleProductLists_8"), "\\3,000");
}

TEST_F(EntryPane, AServiceAndALossAreSeenOnButtonAndTotalAndReadableThere)
{
    const auto luminance = [](const QColor &color) {
        const auto part = [](double value) {
            return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * part(color.redF()) + 0.7152 * part(color.greenF()) + 0.0722 * part(color.blueF());
    };
    product("감초", 1000);
    order("2026-11-24");
    sell();
    std::set<QString> backs;
    const struct
    {
        const char *kind, *hint;
    } cases[] = {{"ssoptSellType_1", "서비스로 추가 (F6)"},
                 {"ssoptSellType_2", "망실로 추가 (F6)"},
                 {"ssoptSellType_0", "물품 추가 (F6)"}};
    for (const auto &[kind, hint] : cases) {
        SCOPED_TRACE(kind);
        push(kind);
        EXPECT_EQ(at("cmdCSAppendDetail").toolTip().toStdString(), hint);
        push("chkCmdOrderMasterED_0"); // an edit paints all and back again
        push("chkcmdCSSaveInfo_1");
        type("txtSaleProductLists_5", "-2");
        for (const char *name : {"cmdCSAppendDetail", "txtSaleProductLists_8"}) {
            const double back = luminance(controls::backColor(&at(name)));
            const double fore = luminance(controls::foreColor(&at(name)));
            const bool red = kind == cases[2].kind && &at(name) == &at("txtSaleProductLists_8"); // told so
            EXPECT_GE((std::max(back, fore) + 0.05) / (std::min(back, fore) + 0.05), red ? 3 : 4.5) << name;
            backs.insert(controls::backColor(&at(name)).name());
        }
    }
    EXPECT_EQ(backs.size(), 4u) << "two notices, the accent and the grey of a locked box";
    EXPECT_EQ(controls::foreColor(&at("txtSaleProductLists_8")), controls::ink(controls::Ink::Negative))
        << "a negative sale";
}

// Both readings are meant: the list shows the price of a product that is no longer handled, a change of kind does not.
TEST_F(EntryPane, AProductNotHandledKeepsItsPriceUntilTheKindChanges)
{
    product("감초", 1000, true, false);
    sell();
    EXPECT_EQ(text("txtSaleProductLists_6"), "\\1,000");
    push("ssoptSellType_1");
    push("ssoptSellType_0");
    EXPECT_EQ(text("txtSaleProductLists_6"), "\\0");

    for (const char *kind : kindButtons) {
        push(kind);
        push("cmdCSAppendDetail");
        EXPECT_THAT(boxes_.take(), ElementsAre("물품판매관리: 취급하지 않는 물품입니다. 추가를 하실 수 없습니다."));
    }
    EXPECT_THAT(rows("SELECT * FROM tPSOrderMaster"), IsEmpty());
}

TEST_F(EntryPane, WithAnOrderOfTodayTheLineGoesToTheSelectedOneWithoutAQuestion)
{
    product("감초", 1000);
    order("2026-11-24");
    const int older = order("2026-10-01");
    sell();
    list("tdbCustSaleMaster").setBookmark(older);
    push("cmdCSAppendDetail");
    EXPECT_THAT(boxes_.take(), IsEmpty());
    EXPECT_THAT(lines(), ElementsAre("2|1000|0|1|0"));
}

TEST_F(EntryPane, TheFirstSaleMakesAnOrderOfTodayWithoutAQuestionAndTheProductStaysChosen)
{
    product("감초", 1000);
    product("홍삼", 2000);
    sell();
    choose("tdbSaleProductLists", 1);
    push("cmdCSAppendDetail");
    EXPECT_THAT(boxes_.take(), IsEmpty());
    EXPECT_EQ(rows("SELECT OrdM_Date FROM tPSOrderMaster"), Rows{Today});
    EXPECT_THAT(lines(), ElementsAre("1|2000|0|1|0"));
    EXPECT_EQ(text("txtSaleProductLists_1"), "홍삼");
}

TEST_F(EntryPane, ACancelledSaleStaysOnTheOrderThatIsChosen)
{
    product("감초", 1000);
    order("2026-10-02");
    order("2026-10-01");
    sell();
    choose("tdbCustSaleMaster", 1);
    boxes_.answers = {controls::Answer::Cancel};
    push("cmdCSAppendDetail");
    EXPECT_EQ(at<QTableView>("tdbCustSaleMaster").currentIndex().row(), 1);
}

TEST_F(EntryPane, WithoutAnOrderOfTodayTheAnswerDecides)
{
    const std::string first = "오늘 날짜의 거래내역이 없습니다. 오늘 날짜로 거래 하시겠습니까?\n\n";
    const std::string questions[] = {
        "판매: " + first + "예(오늘 거래일자로 추가), 아니오(선택된 거래일자로 추가)",
        "서비스: " + first + "예/오늘 날짜로 서비스추가, 아니오/고객판매마스터에 선택되어있는 날짜",
        "망실: " + first + "예/오늘 날짜로 망실기록, 아니오/고객판매마스터에 선택되어있는 날짜",
    };
    product("감초", 1000);
    order("2026-10-01");
    sell();
    using controls::Answer;
    for (int kind = 0; kind < 3; ++kind) {
        SCOPED_TRACE(kind);
        push(kindButtons[kind]);
        for (Answer answer : {Answer::Cancel, Answer::No, Answer::Yes}) {
            boxes_.answers = {answer};
            type("txtSaleProductLists_4", "100");
            push("cmdCSAppendDetail");
            ASSERT_FALSE(boxes_.messages.empty());
            EXPECT_EQ(boxes_.messages[0].flags, controls::YesNoCancel | controls::InformationIcon);
            EXPECT_THAT(boxes_.take(), ElementsAre(questions[kind]));
        }
        const std::string written = kind == 0 ? "|1000|100|1|0" : "|0|0|1|" + std::to_string(kind);
        // No wrote to the old order, Yes to one of today.
        EXPECT_THAT(lines(), ElementsAre("1" + written, std::to_string(2 + kind) + written));
        EXPECT_EQ(rows("SELECT OrdM_Date FROM tPSOrderMaster WHERE OrdM_PK > 1"), Rows{Today});
        atOtherDesk("DELETE FROM tPSOrderDetail");
        atOtherDesk("DELETE FROM tPSOrderMaster WHERE OrdM_PK > 1");
        pane<OrderPane>().loadCustSaleMaster();
    }
}

TEST_F(EntryPane, TheHeaderSortsOneColumnOffAndTurnsRoundEachTime)
{
    atOtherDesk("INSERT INTO tPSProductMaster (PM_Catagory, PM_Name, PM_UnitPrice, PM_IsTaxed, PM_IsValid, PM_IsHide) "
                "VALUES ('가', '다', "
                "3, 1, 1, 0), ('나', '가', 2, 1, 1, NULL), ('다', '나', 1, 1, 1, 0), ('숨김', '숨김', 9, 1, 1, 1)");
    sell();
    const auto names = [] {
        std::string all;
        for (int row = 0; row < rowsShown("tdbSaleProductLists"); ++row)
            all += cell("tdbSaleProductLists", row, 1);
        return all;
    };
    EXPECT_EQ(names(), "다가나");
    const struct
    {
        int column;
        const char *order;
    } clicks[] = {
        {0, "다가나"}, {1, "다가나"}, {1, "나가다"}, {2, "가나다"}, {2, "다나가"},
        {3, "다나가"}, {5, "나가다"}, {5, "다가나"}, {1, "다가나"},
    };
    for (const auto &click : clicks) {
        SCOPED_TRACE(click.column);
        emit pane<SaleListPane>().tdbSaleProductLists()->headClick(click.column);
        EXPECT_EQ(names(), click.order);
    }
    EXPECT_EQ(text("txtSaleProductLists_1"), "다") << "a sort stands on the first row";
}

TEST_F(EntryPane, NoCaptionIsCutInNarrowColumns)
{
    sell();
    const struct
    {
        QWidget *container;
        int width;
    } panes[] = {
        {pane<SaleEntryPane>().c1elaProductInfo(), 370},
        {pane<OrderPane>().elTranMnu(), 560},
        {pane<OrderPane>().c1elaCustSaleInfo(), 368},
        {pane<DetailPane>().c1elaSaleDetailMemo(), 325},
    };
    for (const auto &pane : panes) {
        pane.container->setParent(nullptr);
        pane.container->resize(pane.width, pane.container->sizeHint().height());
        pane.container->show();
        for (QWidget *child : pane.container->findChildren<QWidget *>()) {
            const auto *button = qobject_cast<QAbstractButton *>(child);
            const bool captioned = qobject_cast<QLabel *>(child) || (button && !button->inherits("QToolButton"));
            if (captioned && child->isVisible()) {
                EXPECT_GE(child->width(), child->sizeHint().width())
                    << qPrintable(child->objectName()) << " of " << qPrintable(pane.container->objectName());
            }
        }
        EXPECT_LE(pane.container->width(), pane.width);
        pane.container->setParent(&window());
    }
}
