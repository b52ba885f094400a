#pragma once

#include "platform/controls/RecordsetGrid.h"
#include "platform/runtime/Conversions.h"
#include "tests/support/MessageRecorder.h"
#include "tests/support/TestDatabase.h"

#include <QHeaderView>
#include <QTest>

#include <gmock/gmock.h>

/// A window with one grid over the orders of a small clinic.
class GridDesk : public testing::Test
{
protected:
    using Kind = controls::GridColumn::Kind;

    /// Orders 1 to `count`, one a day, owing 100 won times their key; the last one owes a negative sum.
    void makeOrders(int count)
    {
        database_.run(
            QStringLiteral(
                "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) INSERT INTO "
                "tPSOrderMaster (Cust_PK, OrdM_Date, OrdM_Gubun, OrdM_Misugum, OrdM_ETCMemo) SELECT 41, '2026-11-20', "
                "1 + i % 2, CASE WHEN i = %1 THEN -5000 ELSE i * 100 END, '메모 ' || i FROM n")
                .arg(count));
    }

    void open(ado::CursorType cursor = ado::CursorType::Keyset)
    {
        orders_.Open(QStringLiteral("SELECT * FROM tPSOrderMaster ORDER BY OrdM_PK"), database_.connection(), cursor,
                     ado::LockType::Optimistic);
    }

    void show()
    {
        window_.resize(640, 300);
        grid_.resize(window_.size());
        grid_.setColumns(columns());
        grid_.setDataSource(&orders_);
        window_.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
        grid_.setFocus();
        QCoreApplication::processEvents();
    }

    static std::vector<controls::GridColumn> columns()
    {
        return {
            {.field = QStringLiteral("OrdM_PK"), .caption = QStringLiteral("OrdM_PK"), .visible = false},
            {.field = QStringLiteral("OrdM_Date"),
             .caption = QStringLiteral("거래일자"),
             .kind = Kind::Date,
             .width = 100},
            {.field = QStringLiteral("OrdM_Misugum"),
             .caption = QStringLiteral("미수금"),
             .kind = Kind::Money,
             .width = 100,
             .editable = true},
            {.field = QStringLiteral("OrdM_Gubun"),
             .caption = QStringLiteral("택배"),
             .kind = Kind::Check,
             .width = 40,
             .checkedText = QStringLiteral("2")},
            {.field = QString(), .caption = QStringLiteral("물품명"), .kind = Kind::Unbound, .width = 100},
            {.field = QStringLiteral("OrdM_ETCMemo"), .caption = QStringLiteral("메모"), .width = 100},
        };
    }
    static constexpr int owing = 2; ///< the column that can be typed into

    QModelIndex cell(int row, int column) const { return grid_.model()->index(row, column); }
    std::string shown(int row, int column) const { return cell(row, column).data().toString().toStdString(); }
    void click(int row, int column)
    {
        grid_.scrollTo(cell(row, column));
        QTest::mouseClick(grid_.viewport(), Qt::LeftButton, {}, grid_.visualRect(cell(row, column)).center());
    }
    void typeText(const char *text)
    {
        for (; *text; ++text)
            QTest::keyClick(window_.windowHandle(), *text);
    }
    void key(Qt::Key which) { QTest::keyClick(window_.windowHandle(), which); }
    /// The rows that show as selected.
    std::vector<int> selected() const
    {
        std::vector<int> rows;
        for (const QModelIndex &index : grid_.selectionModel()->selectedRows(1))
            rows.push_back(index.row());
        return rows;
    }
    int currentKey() const { return runtime::CLng(orders_[QStringLiteral("OrdM_PK")]); }
    std::string stored(int order)
    {
        return database_.value(QStringLiteral("SELECT OrdM_Misugum FROM tPSOrderMaster WHERE OrdM_PK = %1").arg(order))
            .toStdString();
    }

    MessageRecorder boxes_;
    TestDatabase database_{ado::Engine::SQLite};
    ado::Recordset orders_;
    QWidget window_;
    controls::RecordsetGrid grid_{&window_};
};
