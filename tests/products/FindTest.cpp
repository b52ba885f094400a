#include "tests/support/SaleWindow.h"

namespace {

/// A line of search with its list.
struct Line
{
    const char *box;
    const char *place;
    const char *grid;
};
constexpr Line saleLine{"txtFindProduct", "lblFindProduct", "tdbSaleProductLists"};
constexpr Line managerLine{"txtFindProductManager", "lblFindProductManager", "tdbSaleProductListsManager"};
constexpr Line dealerLine{"txtFindDealer", "lblFindDealer", "tdbCompanyMaster"};

/// Rows 0 to 4: 감초차, 경옥고, 공진단, Vitamin C, 홍삼정; dealers 가람약업, 나래상사.
class FindTest : public SaleWindow
{
protected:
    FindTest() { runFile("products/find.sql"); }

    /// "2: 1 / 3 [2 4]": the current row, what stands beside the line, the marked rows.
    static std::string found(const Line &line)
    {
        const QAbstractItemModel &model = *at<QTableView>(line.grid).model();
        QStringList marked;
        for (int row = 0; row < model.rowCount(); ++row) {
            if (!model.index(row, 1).data(Qt::AccessibleDescriptionRole).toString().isEmpty())
                marked << QString::number(row);
        }
        return QStringLiteral("%1: %2 [%3]")
            .arg(list(line.grid).currentRow())
            .arg(at<QLabel>(line.place).text(), marked.join(u' '))
            .toStdString();
    }
    /// Presses keys one by one and collects the current rows.
    static std::string rowsBy(const Line &line, QWidget &control, const std::vector<QKeyCombination> &keys)
    {
        std::string rows;
        for (const QKeyCombination key : keys) {
            QTest::keyClick(&control, key.key(), key.keyboardModifiers());
            rows += std::to_string(list(line.grid).currentRow());
        }
        return rows;
    }
    /// The ground of a row that is not chosen.
    static QColor ground(int row)
    {
        const auto &view = at<QTableView>(saleLine.grid);
        const QPoint corner = view.visualRect(view.model()->index(row, 1)).topRight() + QPoint(-3, 2);
        return view.viewport()->grab().toImage().pixelColor(corner);
    }
    static void settle() { QCoreApplication::processEvents(); }
};

/// Counts what a key makes of a list: how often it is painted, and whether the window is laid out anew.
struct PaintCount : QObject
{
    explicit PaintCount(const QWidget *painted)
        : list(painted)
    {
        qApp->installEventFilter(this);
    }
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        paints += watched == list && event->type() == QEvent::Paint;
        layouts += event->type() == QEvent::LayoutRequest;
        return false;
    }

    const QWidget *list;
    int paints = 0;
    int layouts = 0;
};

const QKeyCombination enter(Qt::Key_Return);
const QKeyCombination next(Qt::Key_F3);
const QKeyCombination back(Qt::ShiftModifier, Qt::Key_F3);

} // namespace

TEST_F(FindTest, TypingMovesToTheFirstRowThatFitsAndMarksAll)
{
    const struct
    {
        Line line;
        const char *typed;
        const char *found;
    } cases[] = {
        {saleLine, "ㄱㅇㄱ", "1: 1 / 1 [1]"},
        {saleLine, "옥", "1: 1 / 2 [1 4]"},
        {saleLine, "vitaminc", "3: 1 / 1 [3]"},
        {saleLine, "880123", "1: 1 / 2 [1 2]"},
        {saleLine, "다", "3: 1 / 1 [3]"},
        {saleLine, "없는", "0: 없습니다 []"},
        {saleLine, "-", "0:  []"},
        {managerLine, "ㄱㅈㄷ", "2: 1 / 1 [2]"},
        {managerLine, "인기", "3: 1 / 2 [3 4]"},
        {dealerLine, "0005678", "1: 1 / 1 [1]"},
        {dealerLine, "ㄴㄹ", "1: 1 / 1 [1]"},
    };
    for (const auto &one : cases) {
        one.line.box == saleLine.box ? sell() : manage();
        list(one.line.grid).MoveFirst();
        type(one.line.box, one.typed);
        EXPECT_EQ(found(one.line), one.found) << one.typed;
        type(one.line.box, "");
        QTest::keyClick(&at(one.line.box), Qt::Key_Escape);
        EXPECT_THAT(found(one.line), testing::EndsWith(":  []")) << one.typed;
    }
}

TEST_F(FindTest, TheRowMovedToIsChosenAsByAKeyInTheList)
{
    sell();
    QInputMethodEvent composing(QStringLiteral("ㅎ"), {});
    const QColor bare = ground(1);
    QApplication::sendEvent(&at("txtFindProduct"), &composing);
    EXPECT_EQ(found(saleLine), "4: 1 / 1 [4]") << "of a syllable that is being composed";
    EXPECT_EQ(texts({"txtSaleProductLists_1", "txtSaleProductLists_2"}), "홍삼정|\\30,000");
    EXPECT_TRUE(at<QTableView>(saleLine.grid).selectionModel()->isRowSelected(4));
    type(saleLine.box, "옥");
    choose(saleLine.grid, 4);
    EXPECT_NE(ground(1), bare) << "the mark shows";

    manage();
    type(managerLine.box, "홍삼");
    EXPECT_EQ(text("txtProSaleInfo_1"), "홍삼정");
}

TEST_F(FindTest, AKeyPaintsTheListOnceAndLaysNothingOutAnew)
{
    sell();
    type(saleLine.box, "옥"); // the box's first clear button is laid out once
    QTest::keyClick(&at(saleLine.box), Qt::Key_Escape);
    for (int turn = 0; turn < 20; ++turn) // a layout goes up one widget a turn
        settle();
    const PaintCount count(at<QTableView>(saleLine.grid).viewport());
    QInputMethodEvent key;
    key.setCommitString(QStringLiteral("ㅎ"));
    QApplication::sendEvent(&at(saleLine.box), &key);
    for (int turn = 0; turn < 20; ++turn)
        settle();
    EXPECT_EQ(found(saleLine), "4: 1 / 1 [4]");
    EXPECT_EQ(count.paints, 1);
    EXPECT_EQ(count.layouts, 0);
}

TEST_F(FindTest, KeysGoRoundTheHitsIntoTheListAndOutOfTheSearch)
{
    sell();
    QWidget &box = at(saleLine.box);
    type(saleLine.box, "인기");
    EXPECT_EQ(rowsBy(saleLine, box, {enter, enter, next, back, back}), "43434");
    choose(saleLine.grid, 0);
    EXPECT_EQ(found(saleLine), "0: – / 2 [3 4]");
    EXPECT_EQ(rowsBy(saleLine, box, {back}), "4");
    QTest::keyClick(&box, Qt::Key_Down);
    EXPECT_EQ(focused(), saleLine.grid);
    EXPECT_EQ(rowsBy(saleLine, at(saleLine.grid), {next, Qt::Key_Up}), "32");
    QTest::keyClick(&box, Qt::Key_Escape);
    EXPECT_EQ(text(saleLine.box), "");
    EXPECT_EQ(rowsBy(saleLine, at(saleLine.grid), {next}), "2");
}

TEST_F(FindTest, EnterBehindACodeThatOneProductHoldsGoesToTheQuantity)
{
    const struct
    {
        const char *code;
        int row;
        const char *focus;
    } cases[] = {
        {"8801234567890", 1, "txtSaleProductLists_5"},
        {"880123", 2, "txtSaleProductLists_5"},
        {"ab-12", 3, "txtSaleProductLists_5"},
        {"12", 2, "txtFindProduct"},
        {"인기", 4, "txtFindProduct"},
        {"경옥고", 1, "txtFindProduct"},
    };
    for (const auto &one : cases) {
        sell();
        type(saleLine.box, one.code);
        QTest::keyClick(&at(saleLine.box), Qt::Key_Return);
        EXPECT_EQ(list(saleLine.grid).currentRow(), one.row) << one.code;
        EXPECT_EQ(focused(), one.focus) << one.code;
    }
}

TEST_F(FindTest, MarksStayWhenTheListIsReadAnewAndAnEditIsLeftAlone)
{
    manage();
    const std::pair<Line, const char *> lines[] = {{managerLine, "chkCmdProdSaleAddEdiDel_1"},
                                                   {dealerLine, "chkcmdCmpnyMstrAED_1"}};
    for (const auto &[line, edit] : lines) {
        type(line.box, line.box == managerLine.box ? "홍삼" : "나래");
        const std::string before = found(line);
        push(edit);
        EXPECT_FALSE(at(line.box).isEnabled());
        QTest::keyClick(&window(), Qt::Key_F, Qt::ControlModifier);
        EXPECT_NE(focused(), line.box);
        push(line.box == managerLine.box ? "chkCmdSaveProduct_0" : "chkcmdCmpnyMstrSave_0");
        settle();
        EXPECT_EQ(before.substr(before.find('[')), found(line).substr(found(line).find('[')));
        EXPECT_EQ(list(line.grid).currentRow(), 0) << "as after every save";
        EXPECT_EQ(text(line.box).empty(), false);
    }
}

TEST_F(FindTest, ARowThatAnotherDeskDeletedIsToldAndTheSearchGoesOn)
{
    manage();
    type(managerLine.box, "인기");
    atOtherDesk("DELETE FROM tPSProductMaster WHERE PM_Name = '홍삼정'");
    QTest::keyClick(&at(managerLine.box), Qt::Key_F3);
    EXPECT_EQ(boxes_.take().size(), 1U);
    settle();
    EXPECT_EQ(found(managerLine), "-1: – / 1 [3]");
    QTest::keyClick(&at(managerLine.box), Qt::Key_F3);
    EXPECT_EQ(text("txtProSaleInfo_1"), "Vitamin C");
}

TEST_F(FindTest, ControlFGoesToTheSearchOfTheTab)
{
    const auto focusBy = [](QWidget &control) {
        control.setFocus();
        QTest::keyClick(&window(), Qt::Key_F, Qt::ControlModifier);
        return focused();
    };
    sell();
    type(saleLine.box, "홍");
    EXPECT_EQ(focusBy(at("txtSaleProductLists_5")), saleLine.box);
    EXPECT_EQ(at<QLineEdit>(saleLine.box).selectedText().toStdString(), "홍");
    manage();
    EXPECT_EQ(focusBy(at("tdbSaleProductListsManager")), managerLine.box);
    EXPECT_EQ(focusBy(at("tdbCompanyMaster")), dealerLine.box);
}
