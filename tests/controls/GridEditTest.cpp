#include "platform/controls/EventEdge.h"
#include "platform/runtime/RuntimeError.h"
#include "tests/controls/GridDesk.h"

#include <QLineEdit>
#include <QSignalSpy>

using controls::onEvent;
using controls::RecordsetGrid;

namespace {

class EditedGrid : public GridDesk
{
protected:
    void openForEditing()
    {
        makeOrders(3);
        open();
        show();
        grid_.setBeforeColumnUpdate([](int, QString &typed) {
            if (typed.isEmpty())
                typed = QStringLiteral("0");
        });
        onEvent(&grid_, &RecordsetGrid::afterColumnUpdate, &grid_, [this](int) {
            ++saves_;
            orders_.Update();
        });
    }
    QLineEdit *editor() { return grid_.viewport()->findChild<QLineEdit *>(); }
    /// Takes the row, opens its cell, and types; what stood there is replaced.
    void type(int row, const char *text)
    {
        click(row, 1);
        key(Qt::Key_F2);
        ASSERT_NE(editor(), nullptr);
        key(Qt::Key_Delete);
        typeText(text);
    }
    void settle() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    int saves_ = 0;
};

} // namespace

TEST_F(EditedGrid, AnEntryIsSavedWhenTheCellIsLeft)
{
    const struct
    {
        const char *typed;
        Qt::Key leave;
        const char *stored, *shown;
    } cases[] = {
        {"2500", Qt::Key_Return, "2500", "\\2,500"},
        {"-\\1,200", Qt::Key_Return, "-1200", "-\\1,200"},
        {"7x8-", Qt::Key_Tab, "78", "\\78"}, // only money can be typed
        {"", Qt::Key_Return, "0", "\\0"},
        {"900", Qt::Key_Escape, "0", "\\0"},
    };
    openForEditing();
    for (const auto &row : cases) {
        type(1, row.typed);
        QTest::keyClick(editor(), row.leave); // alone, without what a pass of the event loop would do
        EXPECT_EQ(stored(2), row.stored) << row.typed;
        EXPECT_EQ(shown(1, owing), row.shown) << row.typed;
        settle();
        EXPECT_EQ(editor(), nullptr);
    }
    EXPECT_EQ(saves_, 4);
    EXPECT_TRUE(boxes_.messages.isEmpty());
}

TEST_F(EditedGrid, AnotherRowTakesTheEntryFirstAndTheStepAfterwards)
{
    openForEditing();
    type(0, "55");
    EXPECT_EQ(grid_.columnValue("OrdM_Misugum").toString(), QStringLiteral("55")) << "as typed so far";
    click(2, 1);
    EXPECT_EQ(stored(1), "55");
    EXPECT_EQ(stored(3), "-5000");
    EXPECT_EQ(currentKey(), 3);
}

TEST_F(EditedGrid, AnUntouchedCellWritesNothing)
{
    openForEditing();
    click(1, 1);
    key(Qt::Key_F2);
    key(Qt::Key_Return);
    EXPECT_EQ(saves_, 0);
}

TEST_F(EditedGrid, AConflictIsToldAndTheCellShowsWhatTheOtherDeskStored)
{
    openForEditing();
    type(1, "55");
    database_.run("UPDATE tPSOrderMaster SET OrdM_Misugum = 777 WHERE OrdM_PK = 2");
    key(Qt::Key_Return);
    settle();
    EXPECT_EQ(boxes_.messages.size(), 1);
    EXPECT_EQ(stored(2), "777");
    EXPECT_EQ(shown(1, owing), "\\777");
    EXPECT_EQ(editor(), nullptr);
    orders_.Update(); // nothing pending
    EXPECT_EQ(stored(2), "777");

    type(1, "60");
    key(Qt::Key_Return);
    EXPECT_EQ(stored(2), "60") << "on what the other desk stored, the entry is accepted";
    EXPECT_EQ(boxes_.messages.size(), 1);
}

TEST_F(EditedGrid, AnEntryThatIsNoMoneyIsRefusedAndTheRowStays)
{
    openForEditing();
    type(1, "-");
    key(Qt::Key_Return);
    settle();
    EXPECT_EQ(boxes_.messages.size(), 1);
    EXPECT_EQ(saves_, 0);
    EXPECT_EQ(stored(2), "200");
    EXPECT_EQ(shown(1, owing), "\\200");
}

TEST_F(EditedGrid, AHandlerMayRequeryTheVeryRowsThatAreBeingEdited)
{
    openForEditing();
    onEvent(&grid_, &RecordsetGrid::afterColumnUpdate, &grid_, [this](int) { orders_.Requery(); });
    type(1, "60");
    key(Qt::Key_Return);
    settle();
    EXPECT_EQ(stored(2), "60");
    EXPECT_EQ(currentKey(), 1);
    EXPECT_EQ(editor(), nullptr);

    onEvent(&grid_, &RecordsetGrid::afterColumnUpdate, &grid_, [this](int) {
        database_.run("DELETE FROM tPSOrderMaster");
        orders_.Requery();
    });
    type(1, "70");
    key(Qt::Key_Return);
    EXPECT_TRUE(boxes_.messages.isEmpty()) << boxes_.texts().value(0).toStdString();
    EXPECT_EQ(grid_.model()->rowCount(), 0);
}

TEST_F(GridDesk, ACheckCellIsToggledByClickAndBlankKeyOnlyWhereItCanBe)
{
    database_.run(
        "INSERT INTO tPSProductMaster (PM_Name, PM_IsHide, PM_IsTaxed) VALUES ('경옥고', NULL, 1), ('쌍화차', 1, 1)");
    ado::Recordset products;
    products.Open(QStringLiteral("SELECT * FROM tPSProductMaster ORDER BY PM_PK"), database_.connection(),
                  ado::CursorType::Keyset, ado::LockType::Optimistic);
    show();
    grid_.setColumns({{.field = QStringLiteral("PM_IsHide"),
                       .caption = QStringLiteral("숨기기"),
                       .kind = Kind::Check,
                       .editable = true},
                      {.field = QStringLiteral("PM_Name"), .caption = QStringLiteral("물품명")},
                      {.field = QStringLiteral("PM_IsTaxed"), .caption = QStringLiteral("과세"), .kind = Kind::Check}});
    grid_.setDataSource(&products);
    int changedColumn = -1;
    onEvent(&grid_, &RecordsetGrid::afterColumnUpdate, &grid_, [&](int column) {
        changedColumn = column;
        products.Update();
    });
    const auto hidden = [&] {
        return database_.rows("SELECT PM_IsHide, PM_IsTaxed FROM tPSProductMaster ORDER BY PM_PK")
            .join(u' ')
            .toStdString();
    };

    click(1, 0);
    EXPECT_EQ(hidden(), "NULL|1 0|1") << "one click takes the row and toggles its cell";
    EXPECT_EQ(changedColumn, 0);
    click(0, 2);
    EXPECT_EQ(hidden(), "NULL|1 0|1") << "a check mark that only shows stays";
    for (int column : {2, 1}) {
        EXPECT_EQ(grid_.currentIndex().column(), column);
        key(Qt::Key_Space);
        EXPECT_EQ(hidden(), "NULL|1 0|1") << "the blank key in column " << column;
        key(Qt::Key_Left);
    }
    key(Qt::Key_Space);
    EXPECT_EQ(hidden(), "1|1 0|1") << "no value counts as unchecked";
    EXPECT_EQ(cell(0, 0).data(Qt::CheckStateRole), Qt::Checked);
    key(Qt::Key_Space);
    EXPECT_EQ(hidden(), "0|1 0|1");

    database_.run("UPDATE tPSProductMaster SET PM_IsHide = 1, PM_Name = '경옥고 大' WHERE PM_PK = 1");
    key(Qt::Key_Space);
    EXPECT_EQ(boxes_.messages.size(), 1);
    EXPECT_EQ(shown(0, 1), "경옥고 大") << "the row shows what the other desk stored";
}
