#include "platform/print/PreviewWindow.h"
#include "platform/registry/AppSettings.h"
#include "tests/support/Paper.h"
#include "tests/support/PrintServer.h"
#include "tests/support/Refusal.h"

#include <QTemporaryDir>
#include <QTest>

#include <gmock/gmock.h>

namespace {

// Before any test asks for printers: those of the machine are none of theirs.
const bool apart = PrintServer::keepApart();

print::Document rollOf(double length)
{
    print::Document document({80, length});
    for (const double top : {10.0, length - 10})
        document.addText({.text = QStringLiteral("줄%1").arg(top),
                          .box = {5, top, 60, 5},
                          .font = {QStringLiteral("굴림"), 9, true}});
    return document;
}

print::Document twoPages(double points = 11)
{
    print::PageTable table(30, 1, 10);
    table.setColumnWidth(1, 100);
    for (int row = 1; row <= 30; ++row)
        table.setText(row, 1, QStringLiteral("행%1").arg(row));
    print::Document document(print::A4, {15, 20, 15, 20});
    document.setFont({QStringLiteral("굴림"), points});
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

    // Neither a sheet longer than the printer's, which would lose its end, nor one that it does not have.
    server.add({.name = QStringLiteral("fixed"), .width = 227, .lengths = {842}});
    for (const print::Document &document : {rollOf(400), twoPages()})
        EXPECT_THAT(refusal([&] { print::send(document, QStringLiteral("fixed"), QStringLiteral("글")); }),
                    testing::HasSubstr("용지 크기를 프린터가 지원하지 않습니다"));

    server.remove(PrintServer::rollPrinter);
    EXPECT_THAT(refusal([] { print::send(rollOf(100), PrintServer::rollPrinter, QStringLiteral("글")); }),
                testing::HasSubstr("찾을 수 없습니다"));
}

TEST(Printers, OpenAPreviewWithTheOneChosenLastAndItsPageInTheCaption)
{
    PrintServer server;
    const QTemporaryDir store;
    registry::setStoreFolder(store.path());
    for (const QString &expected : {PrintServer::pagePrinter, PrintServer::rollPrinter}) {
        print::PreviewWindow window(nullptr, QStringLiteral("영수증출력"), {QStringLiteral("A"), QStringLiteral("B")});
        window.vsPrint()->setDocument(twoPages(), QStringLiteral("영수증"));
        EXPECT_EQ(window.windowTitle().toStdString(), "영수증출력 - 1 / 2쪽");
        window.vsPrint()->showPage(1);
        EXPECT_EQ(window.windowTitle().toStdString(), "영수증출력 - 2 / 2쪽");
        auto *printers = window.findChild<QComboBox *>("cboPrinter");
        ASSERT_TRUE(QTest::qWaitFor([&] { return printers->count() == 2; }));
        EXPECT_EQ(printers->currentText(), expected);
        for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down}) {
            if (printers->currentText() == PrintServer::pagePrinter)
                QTest::keyClick(printers, key);
        }
    }
    server.remove(PrintServer::rollPrinter); // the one that was chosen
    print::PreviewWindow window(nullptr, QStringLiteral("영수증출력"), {QStringLiteral("A"), QStringLiteral("B")});
    auto *printers = window.findChild<QComboBox *>("cboPrinter");
    ASSERT_TRUE(QTest::qWaitFor([&] { return printers->count() == 1; }));
    EXPECT_EQ(printers->currentText(), PrintServer::pagePrinter);
    registry::setStoreFolder({});
}

TEST(Printers, KeepThePaperThatWasChosenForThemWhereThePagesCanBeReadOnIt)
{
    PrintServer server;
    const QString small = QStringLiteral("Page_A5");
    server.add({.name = small, .width = 420, .lengths = {595}});
    const QTemporaryDir store;
    registry::setStoreFolder(store.path());
    const auto paperOf = [](const QString &printer, double points, bool choose = false) {
        print::PreviewWindow window(nullptr, QStringLiteral("영수증출력"), {QStringLiteral("A"), QStringLiteral("B")});
        window.vsPrint()->setDevice(printer);
        window.vsPrint()->setDocument(twoPages(points), QStringLiteral("영수증"));
        auto *printers = window.findChild<QComboBox *>("cboPrinter");
        auto *papers = window.findChild<QComboBox *>("cboPaper");
        EXPECT_TRUE(QTest::qWaitFor([&] { return printers->currentText() == printer; }));
        if (choose) {
            QTest::keyClick(papers, Qt::Key_Down);
            window.findChild<QAbstractButton *>("cmdPrint")->click();
        }
        return papers->currentText().toStdString();
    };
    EXPECT_EQ(paperOf(small, 11), "A4 210 × 297 mm");
    EXPECT_EQ(paperOf(small, 11, true), "A5 148 × 210 mm");
    EXPECT_EQ(paperOf(small, 11), "A5 148 × 210 mm");
    EXPECT_EQ(paperOf(small, 8), "A4 210 × 297 mm") << "letters of less than 6 points";
    EXPECT_EQ(paperOf(PrintServer::pagePrinter, 11), "A4 210 × 297 mm");
    const Paper pages(server.job(small));
    ASSERT_EQ(pages.sheets().size(), 2);
    EXPECT_NEAR(pages.sheets()[0].height(), 210, 0.5);
    EXPECT_NEAR(pages.word("행25").box.center().y(), 265 * 148 / 210.0, 0.5);
    registry::setStoreFolder({});
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
