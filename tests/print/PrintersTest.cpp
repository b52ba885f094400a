#include "platform/print/Printers.h"
#include "tests/support/Paper.h"
#include "tests/support/PrintServer.h"
#include "tests/support/Refusal.h"

#include <QElapsedTimer>
#include <QFile>

#include <gmock/gmock.h>

namespace {

// Before any test asks for printers: those of the machine are none of theirs.
const bool apart = PrintServer::keepApart();

print::Document rollOf(double length)
{
    print::Document document({80, 200});
    for (const double top : {10.0, length - 10})
        document.addText({.text = QStringLiteral("줄%1").arg(top),
                          .box = {5, top, 60, 5},
                          .font = {QStringLiteral("굴림"), 9, true}});
    document.cutBelowContents(length - (length - 10 + print::lineHeight({QStringLiteral("굴림"), 9, true})));
    return document;
}

print::Document twoPages()
{
    print::PageTable table(30, 1, 10);
    table.setColumnWidth(1, 100);
    for (int row = 1; row <= 30; ++row)
        table.setText(row, 1, QStringLiteral("행%1").arg(row));
    print::Document document(print::A4, {15, 20, 15, 20});
    document.addTable(table);
    return document;
}

} // namespace

TEST(Printers, TakeTheirJobs)
{
    ASSERT_TRUE(apart);
    PrintServer server;
    EXPECT_THAT(print::printerNames(),
                testing::UnorderedElementsAre(PrintServer::pagePrinter, PrintServer::rollPrinter));
    EXPECT_EQ(print::defaultPrinter(), PrintServer::pagePrinter);
    EXPECT_NEAR(print::pageSize(PrintServer::rollPrinter).width(), 80, 0.5);
    EXPECT_NEAR(print::pageSize(PrintServer::pagePrinter).width(), 210, 0.5);

    print::send(twoPages(), QString(), QStringLiteral("영수증"));
    const Paper pages(server.job(PrintServer::pagePrinter));
    ASSERT_EQ(pages.sheets().size(), 2);
    EXPECT_NEAR(pages.sheets()[0].height(), 297, 0.5);
    EXPECT_NEAR(pages.word("행1").box.left(), 15, 0.5);
    EXPECT_NEAR(pages.word("행25").box.center().y(), 265, 0.5);
    EXPECT_EQ(pages.word("행26").page, 1);
    EXPECT_NEAR(pages.word("행26").box.center().y(), 25, 0.5);

    server.remove(PrintServer::rollPrinter);
    EXPECT_THAT(refusal([] { print::send(rollOf(100), PrintServer::rollPrinter, QStringLiteral("글")); }),
                testing::HasSubstr("찾을 수 없습니다"));
}

TEST(Printers, WithoutAPrintingSystemSayWhy)
{
    EXPECT_EQ(print::printerNames(), QStringList());
    EXPECT_EQ(print::defaultPrinter(), QString());
    EXPECT_EQ(refusal([] { print::send(twoPages(), QString(), QStringLiteral("글")); }),
              "이 컴퓨터에 등록된 프린터가 없습니다.");
    EXPECT_EQ(refusal([] { print::send(twoPages(), QStringLiteral("A"), QStringLiteral("글")); }),
              "프린터를 찾을 수 없습니다: A");
    EXPECT_EQ(refusal([] { print::savePdf(twoPages(), QStringLiteral("/nowhere/a.pdf"), QStringLiteral("글")); }),
              "PDF 파일을 쓸 수 없습니다: /nowhere/a.pdf");
}
