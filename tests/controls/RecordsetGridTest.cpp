#include "platform/ado/Wait.h"
#include "platform/controls/EventEdge.h"
#include "platform/runtime/RuntimeError.h"
#include "tests/controls/GridDesk.h"

#include <QPainter>
#include <QPointer>
#include <QSignalSpy>
#include <QStyledItemDelegate>

using controls::RecordsetGrid;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class BoundGrid : public GridDesk
{
};

struct Paintings : QObject
{
    int seen = 0;
    bool eventFilter(QObject *, QEvent *event) override
    {
        seen += event->type() == QEvent::Paint;
        return false;
    }
};

} // namespace

TEST_F(BoundGrid, CellsShowWhatTheRecordsetHoldsByTheirKind)
{
    makeOrders(3);
    database_.run(
        "UPDATE tPSOrderMaster SET OrdM_Misugum = NULL, OrdM_Gubun = NULL, OrdM_ETCMemo = NULL WHERE OrdM_PK = 2");
    open();
    grid_.setUnboundFetch([](const ado::Bookmark &row, int) { return QStringLiteral("물품 ") + runtime::text(row); });
    show();
    EXPECT_EQ(shown(0, 1), "2026-11-20");
    EXPECT_EQ(shown(0, owing), "\\100");
    EXPECT_EQ(shown(2, owing), "-\\5,000");
    EXPECT_TRUE(cell(2, owing).data(Qt::ForegroundRole).isValid()) << "negative money is told by its colour";
    EXPECT_FALSE(cell(0, owing).data(Qt::ForegroundRole).isValid());
    EXPECT_EQ(shown(1, owing), "");
    EXPECT_EQ(shown(1, 5), "");
    EXPECT_EQ(shown(2, 4), "물품 3");
    EXPECT_EQ(cell(0, 3).data(Qt::CheckStateRole), Qt::Checked);
    EXPECT_EQ(cell(1, 3).data(Qt::CheckStateRole), Qt::Unchecked);
    EXPECT_EQ(cell(2, 3).data(Qt::CheckStateRole), Qt::Checked);
}

/// Texts are drawn from what was shaped before; a cell looks as the style alone would draw it, the second time too.
TEST_F(BoundGrid, CellsLookAsTheStyleDrawsThem)
{
    makeOrders(4);
    database_.run("UPDATE tPSOrderMaster SET OrdM_ETCMemo = 'A memo too long for its cell, 길어서 다 보이지 않는 메모' "
                  "WHERE OrdM_PK = 2");
    database_.run("UPDATE tPSOrderMaster SET OrdM_Misugum = 123456789012 WHERE OrdM_PK = 3");
    open();
    grid_.setUnboundFetch([](const ado::Bookmark &row, int) {
        return row == 1 ? QStringLiteral("두 줄\n이름") : QStringLiteral("<b>물품</b> ") + runtime::text(row);
    });
    show();
    auto &delegate = *qobject_cast<QStyledItemDelegate *>(grid_.itemDelegate());
    const auto drawn = [&](const auto &paint, QStyle::State state, int height, const QModelIndex &cell) {
        QImage image(101, height, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        QStyleOptionViewItem option;
        option.initFrom(&grid_);
        option.widget = &grid_;
        option.showDecorationSelected = true;
        option.rect = image.rect();
        option.state |= state;
        option.state.setFlag(QStyle::State_HasFocus, state & QStyle::State_HasFocus);
        paint(painter, option, cell);
        return image;
    };
    for (const int column : {1, owing, 4, 5}) {
        for (int row = 0; row < 4; ++row) {
            for (const QStyle::State state : {QStyle::State(), QStyle::State(QStyle::State_Selected),
                                              QStyle::State_Selected | QStyle::State_HasFocus}) {
                for (const int height : {9, 21, 22, 23}) {
                    const QImage stock =
                        drawn([&](auto &painter, const auto &option,
                                  const auto &cell) { delegate.QStyledItemDelegate::paint(&painter, option, cell); },
                              state, height, cell(row, column));
                    for (int time = 0; time < 2; ++time) {
                        EXPECT_EQ(drawn([&](auto &painter, const auto &option,
                                            const auto &cell) { delegate.paint(&painter, option, cell); },
                                        state, height, cell(row, column)),
                                  stock)
                            << shown(row, column) << " state " << state << " height " << height;
                    }
                }
            }
        }
    }
}

TEST_F(BoundGrid, AnEmptyListSaysWhatToDoAndAFullOneDoesNot)
{
    open();
    show();
    for (const bool empty : {true, false}) {
        if (!empty) {
            makeOrders(1);
            orders_.Requery();
        }
        grid_.setEmptyText({});
        const QImage bare = grid_.viewport()->grab().toImage();
        grid_.setEmptyText(QStringLiteral("추가를 누르십시오."));
        EXPECT_EQ(grid_.viewport()->grab().toImage() != bare, empty);
    }
}

TEST_F(BoundGrid, ValueItemsTranslateNullAndEmptyApart)
{
    database_.run(
        "INSERT INTO tPSTransaction (tpstrans_Method, tpstrans_Money) VALUES (NULL, 1), ('00', 2), ('07', -3)");
    ado::Recordset ledger;
    ledger.Open(QStringLiteral("SELECT * FROM tPSTransaction ORDER BY tpstrans_PK"), database_.connection(),
                ado::CursorType::Keyset, ado::LockType::Optimistic);
    grid_.setColumns(
        {{.field = QStringLiteral("tpstrans_Method"),
          .caption = QStringLiteral("결재방법"),
          .kind = Kind::Values,
          .values = {{QString(), QStringLiteral("없음")}, {QStringLiteral("00"), QStringLiteral("현금")}}},
         {.field = QStringLiteral("tpstrans_Money"), .caption = QStringLiteral("금액"), .kind = Kind::Money},
         {.field = QStringLiteral("tpstrans_Money"), .caption = QStringLiteral("수량"), .kind = Kind::Number}});
    grid_.setDataSource(&ledger);
    EXPECT_EQ(shown(0, 0), "없음");
    EXPECT_EQ(shown(1, 0), "현금");
    EXPECT_EQ(shown(2, 0), "07") << "an unknown value stands as it is";
    EXPECT_EQ(shown(2, 1), "-\\3");
    EXPECT_TRUE(cell(2, 1).data(Qt::ForegroundRole).isValid()) << "whole-won columns go red as well";
    EXPECT_TRUE(cell(2, 2).data(Qt::ForegroundRole).isValid()) << "and quantities";
}

TEST_F(BoundGrid, BehindTheLastRowAKeyStartsFromTheTop)
{
    makeOrders(2);
    open();
    show();
    const std::pair<Qt::Key, int> steps[] = {{Qt::Key_Down, 1}, {Qt::Key_Up, 1}, {Qt::Key_End, 2}};
    for (const auto &[step, order] : steps) {
        orders_.moveTo(2);
        grid_.clearFocus();
        grid_.setFocus();
        EXPECT_THAT(selected(), IsEmpty());
        EXPECT_FALSE(orders_.hasCurrent());
        key(step);
        EXPECT_EQ(currentKey(), order);
        EXPECT_THAT(selected(), ElementsAre(order - 1));
    }
}

TEST_F(BoundGrid, NoRowShowsAsSelectedUntilTheUserTakesOne)
{
    makeOrders(5);
    open();
    QSignalSpy changes(&grid_, &RecordsetGrid::rowChange);
    show();
    EXPECT_EQ(changes.count(), 1) << "binding an open recordset fills the panes";
    EXPECT_THAT(selected(), IsEmpty());
    EXPECT_EQ(grid_.currentIndex().row(), 0);

    changes.clear();
    click(0, 1);
    EXPECT_THAT(selected(), ElementsAre(0)) << "a click selects the row that is already current";
    EXPECT_EQ(changes.count(), 1) << "and fills the panes behind it";
    changes.clear();
    click(0, 5);
    EXPECT_EQ(changes.count(), 0) << "a change of column alone raises nothing";

    click(3, 1);
    EXPECT_EQ(currentKey(), 4);
    EXPECT_THAT(selected(), ElementsAre(3));
    EXPECT_EQ(changes.count(), 1);

    orders_.Requery();
    EXPECT_EQ(currentKey(), 1);
    EXPECT_THAT(selected(), IsEmpty()) << "nothing restores the selection after a requery";
    EXPECT_EQ(changes.count(), 2);

    key(Qt::Key_Up);
    EXPECT_THAT(selected(), ElementsAre(0)) << "a key selects the row even where it leads nowhere";
    orders_.Requery();
    orders_.moveTo(2);
    EXPECT_THAT(selected(), ElementsAre(2)) << "unless the flow puts it there";
}

TEST_F(BoundGrid, KeysMoveTheRecordsetFirstAndThenRaiseTheRowChange)
{
    makeOrders(40);
    open();
    show();
    std::vector<int> seen;
    controls::onEvent(&grid_, &RecordsetGrid::rowChange, &grid_, [&] { seen.push_back(currentKey()); });
    key(Qt::Key_Down);
    key(Qt::Key_End);
    key(Qt::Key_Up);
    key(Qt::Key_Home);
    EXPECT_THAT(seen, ElementsAre(2, 40, 39, 1));
    key(Qt::Key_PageDown);
    ASSERT_EQ(seen.size(), 5U);
    EXPECT_GT(seen.back(), 5);
    EXPECT_EQ(grid_.currentIndex().row(), orders_.currentRow());
    key(Qt::Key_PageUp);
    EXPECT_EQ(currentKey(), 1);
    EXPECT_THAT(selected(), ElementsAre(0));
}

TEST_F(BoundGrid, ARebindReadsAnewWithoutMovingAndARequeryDropsTheSelection)
{
    makeOrders(30);
    open();
    int fetches = 0;
    grid_.setUnboundFetch([&](const ado::Bookmark &, int) { return QString::number(++fetches); });
    show();
    click(4, 1);
    QSignalSpy changes(&grid_, &RecordsetGrid::rowChange);
    const std::string first = shown(4, 4);
    EXPECT_EQ(shown(4, 4), first) << "a fetched cell is kept";
    grid_.Rebind();
    EXPECT_NE(shown(4, 4), first) << "until the rebind";
    EXPECT_EQ(changes.count(), 0);
    EXPECT_THAT(selected(), ElementsAre(4));
    EXPECT_EQ(currentKey(), 5);
}

TEST_F(BoundGrid, ManyRowsShowWithoutBeingRead)
{
    makeOrders(50'000);
    open(ado::CursorType::Static);
    int fetches = 0;
    grid_.setUnboundFetch([&](const ado::Bookmark &, int) { return QString::number(++fetches); });
    show();
    const auto shownRows = grid_.viewport()->height() / grid_.rowHeight(0) + 2;
    grid_.grab();
    EXPECT_LE(fetches, shownRows) << "first showing";

    fetches = 0;
    key(Qt::Key_End);
    grid_.grab();
    EXPECT_EQ(currentKey(), 50'000);
    EXPECT_LE(fetches, 2 * shownRows) << "a jump to the last row";

    click(49'990, 4);
    fetches = 0;
    typeText("zz");
    const QHeaderView &header = *grid_.horizontalHeader();
    const QPoint divider(header.sectionViewportPosition(4) + header.sectionSize(4) - 1, header.height() / 2);
    QTest::mouseDClick(header.viewport(), Qt::LeftButton, {}, divider);
    EXPECT_LE(fetches, 2 * shownRows) << "typed letters, a column fitted to its contents";
}

TEST_F(BoundGrid, FetchesBeforeItIsPaintedWhatIsInSight)
{
    makeOrders(500);
    open();
    int fetches = 0;
    std::string meanwhile = "not asked";
    grid_.setUnboundFetch([&](const ado::Bookmark &, int) {
        const ado::LetIn underWait;
        if (fetches == 0)
            meanwhile = shown(0, 4);
        return QString::number(++fetches);
    });
    grid_.fetchInSight();
    EXPECT_EQ(fetches, 0) << "is not on the screen";
    Paintings paintings;
    const auto paintedByItself = [&] {
        QApplication::processEvents();
        paintings.seen = 0;
        grid_.fetchInSight();
        grid_.paintLeftOut();
        QApplication::processEvents();
        return paintings.seen;
    };
    {
        const ado::LetIn underWait;
        show();
        grid_.viewport()->installEventFilter(&paintings);
        EXPECT_EQ(shown(0, 4), "");
        EXPECT_EQ(paintedByItself(), 0);
    }
    EXPECT_EQ(paintedByItself(), 1);
    EXPECT_EQ(paintedByItself(), 0);
    EXPECT_EQ(fetches, (grid_.viewport()->height() + grid_.rowHeight(0) - 1) / grid_.rowHeight(0));
    EXPECT_EQ(meanwhile, "") << "while it is fetched";
    const int fetched = fetches;
    grid_.grab();
    EXPECT_EQ(fetches, fetched);
}

TEST_F(BoundGrid, AFetchThatFailsShowsInItsCellAndIsNotRepeatedWhilePainting)
{
    makeOrders(1);
    open();
    int fetches = 0;
    grid_.setUnboundFetch([&](const ado::Bookmark &, int) -> QString {
        ++fetches;
        throw runtime::RuntimeError(runtime::ErrorNumber::Database, QStringLiteral("끊김"));
    });
    show();
    grid_.grab();
    grid_.grab();
    EXPECT_EQ(shown(0, 4), "#오류");
    EXPECT_EQ(fetches, 1);
    EXPECT_TRUE(boxes_.messages.isEmpty());
}

TEST_F(BoundGrid, ACellThatCannotBeReadSaysSo)
{
    database_.run("DROP TABLE tPSOrderMaster");
    database_.run("CREATE TABLE tPSOrderMaster (OrdM_PK INTEGER PRIMARY KEY, Cust_PK, OrdM_Date, OrdM_Gubun, "
                  "OrdM_Misugum, OrdM_ETCMemo)");
    makeOrders(2);
    database_.run(
        "UPDATE tPSOrderMaster SET OrdM_Date = 'soon', OrdM_Misugum = 'much', OrdM_Gubun = 'by car' WHERE OrdM_PK = 2");
    open();
    show();
    for (const int column : {1, owing, 3}) {
        EXPECT_EQ(shown(1, column), "#오류") << column;
        EXPECT_NE(shown(0, column), "#오류") << column;
    }
    EXPECT_FALSE(cell(1, 3).data(Qt::CheckStateRole).isValid());
    EXPECT_EQ(cell(1, 3).data(Qt::AccessibleTextRole), QStringLiteral("#오류"));
    EXPECT_TRUE(boxes_.messages.isEmpty());
}

TEST(GridHead, TheWindowMayGoUnderAClickOnIt)
{
    auto *window = new QWidget;
    auto *grid = new RecordsetGrid(window);
    grid->setColumns({{.field = QStringLiteral("OrdM_Date"), .caption = QStringLiteral("거래일자")}});
    window->show();
    const QPointer<QWidget> alive(window);
    QObject::connect(grid, &RecordsetGrid::headClick, window, [window] { delete window; });
    QWidget *head = grid->horizontalHeader()->viewport();
    QTest::mouseClick(head, Qt::LeftButton, {}, head->rect().center());
    EXPECT_FALSE(alive);
}

TEST(GridHead, TakesTheRoomOfItsCaptionInTheFontOfNow)
{
    RecordsetGrid grid;
    const QFont usual = grid.font();
    QFont large = usual;
    large.setPointSize(2 * usual.pointSize());
    for (const QString &caption : {QStringLiteral("일자"), QStringLiteral("거래일자")}) {
        grid.setColumns({{.field = QStringLiteral("OrdM_Date"), .caption = caption}});
        for (const QFont &font : {usual, large, usual}) {
            grid.setFont(font);
            const int room =
                grid.horizontalHeader()->sectionSizeHint(0) - QFontMetrics(font).horizontalAdvance(caption);
            EXPECT_GE(room, 0) << caption.toStdString() << ", " << font.pointSize();
            EXPECT_LT(room, 20) << caption.toStdString() << ", " << font.pointSize();
        }
    }
}

TEST_F(BoundGrid, HeaderClicksAndDoubleClicksReachTheirHandlers)
{
    makeOrders(3);
    open();
    show();
    QSignalSpy heads(&grid_, &RecordsetGrid::headClick);
    QSignalSpy doubles(&grid_, &RecordsetGrid::rowDoubleClicked);
    const QHeaderView &header = *grid_.horizontalHeader();
    QTest::mouseClick(header.viewport(), Qt::LeftButton, {},
                      QPoint(header.sectionViewportPosition(5) + 20, header.height() / 2));
    ASSERT_EQ(heads.count(), 1);
    EXPECT_EQ(heads[0][0].toInt(), 5);

    click(1, 5);
    QTest::mouseDClick(grid_.viewport(), Qt::LeftButton, {}, grid_.visualRect(cell(1, 5)).center());
    EXPECT_EQ(doubles.count(), 1);
    click(1, owing);
    QTest::mouseDClick(grid_.viewport(), Qt::LeftButton, {}, grid_.visualRect(cell(1, owing)).center());
    EXPECT_EQ(doubles.count(), 1) << "a cell that can be typed into opens instead";

    const auto doubleClickBelow = [&](Qt::MouseButton button) {
        QTest::mouseDClick(grid_.viewport(), button, {}, grid_.viewport()->rect().bottomLeft() + QPoint(5, -5));
    };
    doubleClickBelow(Qt::LeftButton);
    EXPECT_EQ(doubles.count(), 1) << "below the rows, while one is current";
    database_.run("DELETE FROM tPSOrderMaster");
    orders_.Requery();
    doubleClickBelow(Qt::RightButton);
    EXPECT_EQ(doubles.count(), 1);
    doubleClickBelow(Qt::LeftButton);
    EXPECT_EQ(doubles.count(), 2) << "on an empty grid, for whoever tells so";
}

TEST_F(BoundGrid, ClosedReopenedAndDestroyedRecordsetsLeaveTheGridWhole)
{
    makeOrders(3);
    show(); // not open yet
    EXPECT_EQ(grid_.model()->rowCount(), 0);
    open();
    EXPECT_EQ(grid_.model()->rowCount(), 3);
    click(2, 1);
    orders_.Close();
    EXPECT_EQ(grid_.model()->rowCount(), 0);
    EXPECT_FALSE(grid_.columnValue("OrdM_PK").isValid());
    open();
    EXPECT_THAT(selected(), IsEmpty());
    EXPECT_EQ(grid_.columnValue("ordm_pk").toInt(), 1);
    {
        ado::Recordset brief;
        brief.Open(QStringLiteral("SELECT * FROM tPSOrderMaster"), database_.connection(), ado::CursorType::Keyset,
                   ado::LockType::Optimistic);
        grid_.setDataSource(&brief);
    }
    EXPECT_EQ(grid_.dataSource(), nullptr);
    EXPECT_THROW(grid_.Delete(), runtime::RuntimeError);
    grid_.grab();
    EXPECT_EQ(grid_.model()->rowCount(), 0);
}
