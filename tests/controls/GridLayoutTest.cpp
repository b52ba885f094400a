#include "platform/runtime/RuntimeError.h"
#include "tests/controls/GridDesk.h"

#include <QApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMenu>
#include <QSignalSpy>
#include <QTemporaryDir>

using controls::RecordsetGrid;

namespace {

const QString layoutName = QStringLiteral("CUSTSALEMASTER");

class UserLayout : public GridDesk
{
protected:
    void SetUp() override
    {
        makeOrders(2);
        open();
        show();
        ASSERT_TRUE(folder_.isValid());
    }
    QHeaderView &header() { return *grid_.horizontalHeader(); }
    QPoint headerPoint(int column, int fromRight)
    {
        return {header().sectionViewportPosition(column) + header().sectionSize(column) - fromRight,
                header().height() / 2};
    }
    void drag(QPoint from, QPoint to, bool release = true)
    {
        QTest::mousePress(header().viewport(), Qt::LeftButton, {}, from);
        QTest::mouseMove(header().viewport(), (from + to) / 2);
        QTest::mouseMove(header().viewport(), to);
        if (release)
            QTest::mouseRelease(header().viewport(), Qt::LeftButton, {}, to);
    }
    /// Captions and widths from left to right; the last column fills what is left and has no width of its own.
    static QString layoutOf(const RecordsetGrid &grid)
    {
        QStringList shown;
        const QHeaderView &head = *grid.horizontalHeader();
        for (int place = 0; place < head.count(); ++place) {
            const int column = head.logicalIndex(place);
            if (!head.isSectionHidden(column))
                shown << grid.columns()[std::size_t(column)].caption
                             + QStringLiteral(":%1").arg(head.sectionSize(column));
        }
        shown.last() = shown.last().section(u':', 0, 0);
        return shown.join(u' ');
    }
    QMenu *openMenu()
    {
        QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5), header().viewport()->mapToGlobal(QPoint(5, 5)));
        QCoreApplication::sendEvent(header().viewport(), &event);
        return qobject_cast<QMenu *>(QApplication::activePopupWidget());
    }
    void choose(const QString &caption)
    {
        QMenu *menu = openMenu();
        ASSERT_NE(menu, nullptr);
        for (QAction *action : menu->actions()) {
            if (action->text() == caption)
                action->trigger();
        }
        menu->close();
    }
    QString file(const char *name) { return folder_.filePath(QLatin1String(name)); }
    void writeFile(const QString &path, const QByteArray &bytes)
    {
        QFile out(path);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(bytes);
    }

    QTemporaryDir folder_;
};

const QString designed = QStringLiteral("거래일자:100 미수금:100 택배:40 물품명:100 메모");

} // namespace

TEST_F(UserLayout, DragsAreReportedOnlyAfterTheButtonIsReleased)
{
    QSignalSpy changes(&grid_, &RecordsetGrid::layoutChanged);
    drag(headerPoint(1, 1), headerPoint(1, 1) + QPoint(40, 0), false);
    EXPECT_EQ(grid_.columnWidth(1), 140) << "the column follows the mouse";
    EXPECT_EQ(changes.count(), 0);
    QTest::mouseRelease(header().viewport(), Qt::LeftButton, {}, headerPoint(1, 1));
    ASSERT_EQ(changes.count(), 1);
    EXPECT_TRUE(changes[0][0].toBool());

    drag(headerPoint(1, 50), headerPoint(4, 20));
    EXPECT_EQ(changes.count(), 2) << "a moved column";
    EXPECT_EQ(header().visualIndex(1), 4);

    QSignalSpy clicks(&grid_, &RecordsetGrid::headClick);
    QTest::mouseClick(header().viewport(), Qt::LeftButton, {}, headerPoint(2, 50));
    window_.resize(900, 400);
    grid_.resize(window_.size());
    grid_.resetLayout();
    EXPECT_EQ(changes.count(), 2) << "clicks, the window's size and code are not the user's layout";
    EXPECT_EQ(clicks.count(), 1);
    EXPECT_EQ(layoutOf(grid_), designed);
}

TEST_F(UserLayout, ColumnsAreHiddenAndShownFromTheHeadersMenu)
{
    QSignalSpy changes(&grid_, &RecordsetGrid::layoutChanged);
    choose(QStringLiteral("물품명"));
    EXPECT_EQ(layoutOf(grid_), QStringLiteral("거래일자:100 미수금:100 택배:40 메모"));
    choose(QStringLiteral("물품명"));
    EXPECT_EQ(layoutOf(grid_), designed);
    EXPECT_EQ(changes.count(), 2);
    for (const char *caption : {"거래일자", "미수금", "택배", "물품명", "메모"})
        choose(QString::fromUtf8(caption));
    EXPECT_EQ(layoutOf(grid_), QStringLiteral("메모")) << "the last column cannot be hidden";
    QMenu *menu = openMenu();
    for (const QAction *action : menu->actions())
        EXPECT_NE(action->text(), QStringLiteral("OrdM_PK")) << "keys are not offered";
    menu->close();
    choose(QStringLiteral("처음 배치로 되돌리기"));
    EXPECT_EQ(layoutOf(grid_), designed);
}

TEST_F(UserLayout, ALayoutComesBackFromItsFile)
{
    drag(headerPoint(1, 1), headerPoint(1, 1) + QPoint(35, 0));
    drag(headerPoint(4, 1), headerPoint(4, 1) + QPoint(20, 0));
    choose(QStringLiteral("택배"));
    drag(headerPoint(5, 50), headerPoint(1, 110)); // the stretched last column goes to the front
    const QString own = QStringLiteral("메모:100 거래일자:135 미수금:100 물품명");
    EXPECT_EQ(layoutOf(grid_), own);
    ASSERT_GT(grid_.columnWidth(4), 200) << "the last column fills the grid";
    grid_.saveLayout(file("a.tdb"), layoutName);

    RecordsetGrid next;
    next.setColumns(columns());
    ASSERT_TRUE(next.loadLayout(file("a.tdb"), layoutName));
    EXPECT_EQ(layoutOf(next), own);
    next.saveLayout(file("b.tdb"), layoutName);
    QFile first(file("a.tdb")), second(file("b.tdb"));
    ASSERT_TRUE(first.open(QIODevice::ReadOnly) && second.open(QIODevice::ReadOnly));
    EXPECT_EQ(first.readAll(), second.readAll()) << "saving what was loaded changes nothing";

    next.horizontalHeader()->setSectionHidden(3, false);
    EXPECT_EQ(next.columnWidth(3), 40) << "a hidden column keeps its width";
    next.horizontalHeader()->moveSection(next.horizontalHeader()->visualIndex(4), 0);
    EXPECT_EQ(next.columnWidth(4), 120) << "and so does one that was stretched when saved";
    next.resetLayout();
    EXPECT_EQ(layoutOf(next), designed);

    grid_.resetLayout();
    ASSERT_TRUE(grid_.loadLayout(file("a.tdb"), layoutName));
    EXPECT_EQ(layoutOf(grid_), own);
    header().moveSection(header().visualIndex(4), 0);
    EXPECT_EQ(grid_.columnWidth(4), 120) << "also while the grid is on the screen";
}

TEST_F(UserLayout, AForeignOrDamagedFileIsPassedOver)
{
    grid_.saveLayout(file("good.tdb"), layoutName);
    QFile good(file("good.tdb"));
    ASSERT_TRUE(good.open(QIODevice::ReadOnly));
    const QByteArray bytes = good.readAll();
    const auto with = [&](const char *from, const char *to) {
        QByteArray changed = bytes;
        EXPECT_TRUE(changed.contains(from)) << from;
        return changed.replace(from, to);
    };
    QJsonObject twice = QJsonDocument::fromJson(bytes).object();
    QJsonArray places = twice[QStringLiteral("columns")].toArray();
    places[2] = places[1];
    twice[QStringLiteral("columns")] = places;
    const QByteArray bad[] = {
        QJsonDocument(twice).toJson(),
        QByteArray(),
        bytes.left(bytes.size() / 2),
        QByteArray("\0\xff\x01garbage", 10),
        "[]",
        with("zelvo-grid-layout-1", "zelvo-grid-layout-9"),
        with("CUSTSALEMASTER", "CUSTSALEDETAILS"),
        with("\"column\": 2", "\"column\": 1"),
        with("\"column\": 2", "\"column\": 99"),
        with("OrdM_Misugum", "OrdM_Total"),
        with("\"width\": 40", "\"width\": -40"),
        with("\"visible\": true", "\"visible\": false"),
    };
    for (const QByteArray &content : bad) {
        writeFile(file("bad.tdb"), content);
        EXPECT_FALSE(grid_.loadLayout(file("bad.tdb"), layoutName)) << content.toStdString();
        EXPECT_EQ(layoutOf(grid_), designed);
    }
    EXPECT_FALSE(grid_.loadLayout(file("none.tdb"), layoutName));

    std::vector<controls::GridColumn> fewer = columns();
    fewer.pop_back();
    RecordsetGrid other;
    other.setColumns(fewer);
    EXPECT_FALSE(other.loadLayout(file("good.tdb"), layoutName)) << "more columns than the grid has";
    other.saveLayout(file("fewer.tdb"), layoutName);
    EXPECT_FALSE(grid_.loadLayout(file("fewer.tdb"), layoutName)) << "and fewer";
}

TEST_F(UserLayout, AFileThatCannotBeWrittenIsAnError)
{
    EXPECT_THROW(grid_.saveLayout(folder_.filePath("missing/a.tdb"), layoutName), runtime::RuntimeError);
    QObject::connect(&grid_, &RecordsetGrid::layoutChanged, &grid_,
                     [this] { grid_.saveLayout(folder_.filePath("missing/a.tdb"), layoutName); });
    choose(QStringLiteral("택배"));
    ASSERT_EQ(boxes_.messages.size(), 1);
    EXPECT_TRUE(boxes_.messages[0].text.contains("저장하지 못했습니다"));
}
