#include "platform/print/RollPaper.h"
#include "platform/print/Printers.h"
#include "platform/runtime/RuntimeError.h"
#include "printing/RollRows.h"
#include "tests/printing/ReceiptDesk.h"
#include "tests/support/LogLines.h"
#include "tests/support/PaperImage.h"
#include "tests/support/PrintServer.h"

#include <QFile>
#include <QLocale>

#include <algorithm>

namespace {

const bool apart = PrintServer::keepApart();

/// Texts of the receipt of `lines` lines, from the first to the last.
QStringList textsOf(int lines)
{
    QStringList texts{"젤보한의원", "123-45-67890", "대표:허준", "02-123-4567", "www.zelvo.example",
                      "남궁보람님", "[발행일]20",   "상품명",    "단가",        "할인",
                      "수량",       "금액"};
    for (int line = 1; line <= lines; ++line)
        texts += {QStringLiteral("%1홍삼정").arg(line, 3, 10, QLatin1Char('0')),
                  "세트",
                  "90포",
                  "*차",
                  "98,765,432",
                  "34",
                  "10",
                  "987,653,980"};
    const QString sum = QLocale(QLocale::English).toString(987'653'980LL * lines);
    return texts += {"부가세", sum, "합", "수납금액", "5,000", "품목은", "품목입니다."};
}

/// The first text that does not follow those before it; sheet by sheet, line by line, from left to right.
QString firstNotInOrder(const Paper &paper, QStringList texts)
{
    QList<Paper::Word> words = paper.words();
    std::stable_sort(words.begin(), words.end(), [](const auto &a, const auto &b) {
        const double down = a.box.bottom() - b.box.bottom();
        return a.page != b.page ? a.page < b.page : qAbs(down) > 1.2 ? down < 0 : a.box.left() < b.box.left();
    });
    for (const Paper::Word &word : words) {
        if (!texts.isEmpty() && word.text.startsWith(texts.front()))
            texts.removeFirst();
    }
    return texts.value(0);
}

class RollPaperTest : public ReceiptDesk
{
protected:
    int orderOfLines(int lines)
    {
        const int sold = product(
            QStringLiteral("홍삼정 에브리데이 밸런스 프리미엄 골드 선물용 특별 구성 한정판 세트 90포"), 98'765'432);
        const int key = order(QLatin1String(Today));
        for (int line = 0; line < lines; ++line)
            detail(key, sold, 98'765'432, 34, 10);
        ledger(key, 3, 5000);
        ledger(key, 1, -9); // another desk's slip: not on this receipt
        return key;
    }
};

} // namespace

TEST_F(RollPaperTest, EveryRollCarriesTheWholeReceiptInOrder)
{
    ASSERT_TRUE(apart);
    PrintServer server;
    const struct
    {
        const char *what;
        PrintServer::Queue queue;
        int lines, sheets;
    } cases[] = {
        {"any length", {.name = "any", .width = 227, .lengths = {842}, .longest = 14400}, 12, 1},
        {"fixed sheets", {.name = "fixed", .width = 227, .lengths = {842}}, 12, 1},
        {"fixed sheets, raster", {.name = "fixed_r", .width = 227, .lengths = {842}, .raster = true}, 30, 2},
        {"short fixed sheets", {.name = "short", .width = 227, .lengths = {300}}, 12, 3},
        {"not as long as asked", {.name = "limit", .width = 227, .lengths = {500}, .longest = 600}, 12, 2},
        {"58 mm", {.name = "narrow", .width = 164, .lengths = {842}, .edge = 14}, 12, 1},
        {"58 mm, raster", {.name = "narrow_r", .width = 164, .lengths = {842}, .edge = 14, .raster = true}, 12, 1},
        {"4 mm edges", {.name = "edges", .width = 227, .lengths = {842}, .edge = 11, .longest = 9000}, 12, 1},
        {"4 mm edges, raster",
         {.name = "edges_r", .width = 227, .lengths = {842}, .edge = 11, .longest = 9000, .raster = true},
         12,
         1},
    };
    for (const auto &one : cases) {
        SCOPED_TRACE(one.what);
        server.add(one.queue);
        const RollReceiptOrder order = rollOrder(orderOfLines(one.lines));
        {
            LogLines log;
            Print2EpsonTMPartialCut(one.queue.name, order);
            EXPECT_THAT(log.take().join(QLatin1Char('|')).toStdString(),
                        testing::StartsWith(
                            QStringLiteral("zelvo.program printed roll receipt of order %1 on %2, sheets: %3 of ")
                                .arg(order.lngOrdMPK)
                                .arg(one.queue.name)
                                .arg(one.sheets)
                                .toStdString()));
        }
        const print::Document document = rollReceipt(order, print::rollPaperOf(one.queue.name));
        const QString job = server.job(one.queue.name);
        const Paper paper = one.queue.raster ? Paper::of(document) : Paper(job);
        EXPECT_EQ(firstNotInOrder(paper, textsOf(one.lines)).toStdString(), "");
        EXPECT_EQ(paper.overlaps(), QStringList());
        const QList<QImage> sheets = printedSheets(job, one.queue.raster ? one.queue.edge : 0);
        if (qEnvironmentVariableIsSet("KEEP_JOBS")) {
            for (int sheet = 0; sheet < sheets.size(); ++sheet)
                sheets[sheet].save(QStringLiteral("%1/%2-%3.png")
                                       .arg(qEnvironmentVariable("KEEP_JOBS"), one.queue.name)
                                       .arg(sheet + 1));
        }
        ASSERT_EQ(sheets.size(), one.sheets);
        EXPECT_NEAR(sheets[0].width(), one.queue.width / 72.0 * 203, 4);
        EXPECT_EQ(textsMissingOn(sheets, document), QStringList());
        // Nothing where the head does not reach; no letter that cannot be read.
        const double edge = one.queue.edge / 72.0 * 25.4;
        for (const Paper::Word &word : paper.words()) {
            EXPECT_GE(word.box.left(), edge - 0.2) << word.text.toStdString();
            EXPECT_GE(word.box.top(), edge - 0.2) << word.text.toStdString();
            EXPECT_LE(word.box.right(), one.queue.width / 72.0 * 25.4 - edge + 0.2) << word.text.toStdString();
        }
    }
}

TEST_F(RollPaperTest, EveryWidthCarriesTheReceiptOrRefusesIt)
{
    const RollReceiptOrder order = rollOrder(orderOfLines(3));
    int refused = 0;
    for (double width = 80; width > 20; width -= 2) {
        SCOPED_TRACE(width);
        try {
            const print::Document document = rollReceipt(order, print::endlessRoll(width));
            const Paper paper = Paper::of(document);
            EXPECT_EQ(firstNotInOrder(paper, textsOf(3)).toStdString(), "");
            EXPECT_EQ(paper.overlaps(), QStringList());
            for (const Paper::Word &word : paper.words()) {
                EXPECT_GE(word.box.left(), -0.2) << word.text.toStdString();
                EXPECT_LE(word.box.right(), width + 0.2) << word.text.toStdString();
            }
            for (const print::TextItem &text : document.pages().front().texts) {
                const bool isRule = text.text.startsWith(QLatin1String("--"));
                EXPECT_TRUE(isRule || print::pointsOnOneLine(text) >= leastRollPoints) << text.text.toStdString();
            }
            EXPECT_EQ(refused, 0) << "a wider one was refused";
        } catch (const runtime::RuntimeError &error) {
            ++refused;
            EXPECT_EQ(error.description().toStdString(), "영수증을 출력하기에는 프린터의 용지 폭이 너무 좁습니다.");
        }
    }
    EXPECT_GT(refused, 0);
    EXPECT_LE(refused, 10) << "40 mm and more carry it";
}
