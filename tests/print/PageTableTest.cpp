#include "platform/print/PageTable.h"
#include "platform/runtime/RuntimeError.h"
#include "tests/support/Paper.h"

#include <gmock/gmock.h>

using print::Align;

namespace {

print::Document onPage(const print::PageTable &table)
{
    print::Document document(print::A4, {10, 10, 10, 10});
    document.setFont({QStringLiteral("굴림"), 11.25, false});
    document.addTable(table);
    return document;
}

} // namespace

TEST(PageTable, RefusesCellsThatItDoesNotHave)
{
    print::PageTable table(2, 3, 8);
    EXPECT_THROW(table.setText(3, 1, QStringLiteral("x")), runtime::RuntimeError);
    EXPECT_THROW(table.setText(1, 0, QStringLiteral("x")), runtime::RuntimeError);
    EXPECT_THROW(table.setSpan(1, 2, 3), runtime::RuntimeError);
    for (const int nothing : {0, -1}) {
        EXPECT_THROW(table.setSpan(1, 2, nothing), runtime::RuntimeError) << nothing;
        EXPECT_THROW(table.setColumnWidth(1, nothing), runtime::RuntimeError) << nothing;
    }
    EXPECT_EQ(table.appendRow(), 3);
    EXPECT_NO_THROW(table.setText(3, 3, QStringLiteral("x")));
    EXPECT_THROW(onPage(table), runtime::RuntimeError) << "a text in a column without a width";
    table.setColumnWidth(3, 20);
    EXPECT_NO_THROW(onPage(table));
}

TEST(PageTable, PlacesSpansAlignmentsAndHeightsTrueToTheMillimetre)
{
    print::PageTable table(3, 3, 8);
    table.setColumnWidth(1, 20);
    table.setColumnWidth(2, 30);
    table.setColumnWidth(3, 50);
    table.setRowHeight(2, 20);
    table.setText(1, 1, QStringLiteral("a\nb|c;d")); // nothing in a text splits its cell
    table.setSpan(2, 1, 2);
    table.setAlign(2, 1, Align::Right);
    table.setText(2, 1, QStringLiteral("right"));
    table.setText(2, 2, QStringLiteral("hidden")); // covered by the span
    table.setText(2, 3, QStringLiteral(" left"));
    table.setAlign(3, 1, 3, Align::Center);
    table.setText(3, 3, QStringLiteral("center"));

    const Paper paper = Paper::of(onPage(table));
    EXPECT_EQ(paper.line(14).toStdString(), "a b|c;d");
    EXPECT_NEAR(paper.word("a").box.left(), 10, 0.2);
    EXPECT_NEAR(paper.word("right").box.right(), 60, 0.2);
    EXPECT_NEAR(paper.word("right").box.center().y(), 28, 0.5);
    EXPECT_NEAR(paper.word("left").box.left(), 60.9, 0.5); // behind its blank
    EXPECT_NEAR(paper.word("center").box.center().x(), 85, 0.2);
    EXPECT_NEAR(paper.word("center").box.center().y(), 42, 0.5);
    EXPECT_FALSE(paper.has("hidden"));
}

TEST(PageTable, MakesTextsSmallerOrBreaksThemButNeverCutsThem)
{
    print::PageTable table(3, 2, 8);
    table.setColumnWidth(1, 20);
    table.setColumnWidth(2, 60);
    table.setAlign(1, 1, Align::Right);
    table.setText(1, 1, QStringLiteral("-9,876,543,210,000")); // wider than its cell, never in two lines
    table.setText(2, 2, QStringLiteral("가나다라마바사아자차카타파하 가나다라마바사아자차카타파하"));
    table.setText(3, 2, QStringLiteral("가나다라마바사"));

    const Paper paper = Paper::of(onPage(table));
    const QRectF amount = paper.word("-9,876,543,210,000").box;
    EXPECT_NEAR(amount.right(), 30, 0.2);
    EXPECT_GE(amount.left(), 10);
    const double full = paper.word("가나다라마바사").box.height();
    QList<QRectF> halves;
    for (const Paper::Word &word : paper.words()) {
        if (word.text == QStringLiteral("가나다라마바사아자차카타파하"))
            halves << word.box;
    }
    ASSERT_EQ(halves.size(), 2);
    EXPECT_NEAR(halves[0].left(), halves[1].left(), 0.1);
    EXPECT_GT(halves[1].center().y() - halves[0].center().y(), 2.5);
    EXPECT_GT(halves[0].height(), full * 0.7);
    EXPECT_GE(halves[0].top(), 17);
    EXPECT_LE(halves[1].bottom(), 27);
}

TEST(PageTable, BreaksAcrossPagesWithoutLosingOrRepeatingARow)
{
    print::PageTable table(100, 1, 8);
    table.setColumnWidth(1, 50);
    for (int row = 1; row <= 100; ++row)
        table.setText(row, 1, QStringLiteral("행%1").arg(row));
    table.setRowHeight(35, 300); // higher than a page: stands alone on one
    const Paper paper = Paper::of(onPage(table));
    QStringList rows;
    for (const Paper::Word &word : paper.words())
        rows << word.text;
    QStringList expected;
    for (int row = 1; row <= 100; ++row)
        expected << QStringLiteral("행%1").arg(row);
    EXPECT_EQ(rows, expected);
    EXPECT_EQ(paper.word("행34").page, 0); // 34 rows of 8 mm in 277 mm
    EXPECT_EQ(paper.word("행35").page, 1);
    EXPECT_EQ(paper.word("행36").page, 2);
    EXPECT_EQ(paper.sheets().size(), 4);
}

TEST(PageTable, ShowsABoxForWhatNoFontHasAndKeepsShrunkNumbersOnTheirRow)
{
    print::PageTable table(3, 2, 8);
    table.setColumnWidth(1, 60);
    table.setColumnWidth(2, 20);
    // A sign of nobody's with its variation; a syllable in its parts; a line's end.
    table.setText(1, 1, QStringLiteral("감초") + QString::fromUcs4(U"\U0010FFFD\uFE0F") + QStringLiteral("차"));
    table.setText(2, 1, QStringLiteral("\u1100\u1161\u11B7\u110E\u1169\t둘"));
    table.setText(3, 1, QStringLiteral("123"));
    table.setAlign(3, 2, Align::Right);
    table.setText(3, 2, QStringLiteral("123,456,789,012,345"));
    const Paper paper = Paper::of(onPage(table));
    EXPECT_EQ(paper.line(14).toStdString(), "감초□차");
    EXPECT_EQ(paper.line(22).toStdString(), "감초 둘");
    // The baseline lies at the same part of both boxes.
    const QRectF usual = paper.word("123").box;
    const QRectF small = paper.word("123,456,789,012,345").box;
    EXPECT_LT(small.height(), usual.height() * 0.8);
    const double descent = 0.2; // of a letter's height, about
    EXPECT_NEAR(small.bottom() - descent * small.height(), usual.bottom() - descent * usual.height(), 0.15);
}
