#include "tests/printing/ReceiptDesk.h"
#include "tests/support/Cases.h"

#include <QElapsedTimer>

#include <map>

namespace {

constexpr double tolerance = 0.5; // mm

void expectPlaces(const Paper &paper, const char *places)
{
    for (const QStringList &place : casesOf(places, 4)) {
        SCOPED_TRACE(place[0].toStdString());
        const QRectF box = paper.word(place[0]).box;
        if (place[2] != "anywhere") {
            EXPECT_NEAR(place[1] == "left" ? box.left() : box.right(), place[2].toDouble(), tolerance);
        }
        EXPECT_NEAR(box.center().y(), place[3].toDouble(), tolerance);
    }
}

class PageReceiptTest : public ReceiptDesk
{
protected:
    PageReceiptTest() { clsProperties().PropValue("지점명", QStringLiteral(" 젤보한의원 ")); } // is trimmed
};

/// Texts of the first page that are printed bold, in their order.
std::string boldTexts(const print::Document &document)
{
    QStringList texts;
    for (const print::TextItem &item : document.pages()[0].texts) {
        if (item.font.bold)
            texts << item.text;
    }
    return texts.join(QLatin1Char('|')).toStdString();
}

/// Where the dash lines end, from top to bottom, mm.
std::vector<double> dashEnds(const Paper &paper)
{
    std::vector<double> ends;
    for (const Paper::Word &word : paper.words()) {
        if (word.text.size() > 10 && word.text.count(QLatin1Char('-')) == word.text.size())
            ends.push_back(word.box.right());
    }
    return ends;
}

} // namespace

TEST_F(PageReceiptTest, PutsEveryCellOfAnOrderInItsPlace)
{
    const int taxed = product("감초차", 1234);
    const int free = product("경옥고", 50000, false);
    const int key = order(QLatin1String(Today));
    detail(key, free, 50000, 500, 2);
    detail(key, taxed, 1234, 0, 3);
    ledger(key, 1, 11); // cut
    ledger(key, 2, 22); // discount
    ledger(key, 3, 3333);
    ledger(key, 3, 4444, "'01'");
    ledger(key, 4, 55);

    openOrders();
    const print::Document document = PageReceipts(session_, nullptr).orderReceipt();
    EXPECT_EQ(boldTexts(document), "젤보한의원|물품가액 합계|102,702|물품가액 현금수납|3,333|물품가액 카드수납|4,444");
    const Paper paper = Paper::of(document);
    ASSERT_EQ(paper.sheets().size(), 1);
    EXPECT_NEAR(paper.sheets()[0].width(), 210, tolerance);
    EXPECT_NEAR(paper.sheets()[0].height(), 297, tolerance);
    expectPlaces(paper, "printing/order-places.cases");
    EXPECT_EQ(paper.line(65).toStdString(), "남궁보람님 (구매날짜:2026-11-24)");
    EXPECT_THAT(paper.line(75).toStdString(),
                testing::MatchesRegex("\\[발행일\\]20[0-9]{2}-[0-9]{2}-[0-9]{2} 오[전후] [0-9]+:[0-9]{2}:[0-9]{2}"));
    EXPECT_EQ(paper.line(104).toStdString(), "001 감초차 일반판매");
    EXPECT_EQ(paper.line(147).toStdString(), "부가세 과세 물품가액 3,702");
    EXPECT_EQ(paper.line(157).toStdString(), "부가세 면세 물품가액 99,000");
    EXPECT_EQ(paper.line(217).toStdString(), "할 인 22");
    EXPECT_EQ(paper.line(227).toStdString(), "절 사 11");
    EXPECT_EQ(paper.line(237).toStdString(), "환 불 55");
    const auto right = testing::DoubleNear(189, tolerance);
    const auto shorter = testing::Lt(185);
    EXPECT_THAT(dashEnds(paper), testing::ElementsAre(shorter, shorter, shorter, right, right));
    EXPECT_EQ(paper.overlaps(), QStringList());
}

TEST_F(PageReceiptTest, TellsTheKindOfEveryLine)
{
    const int sold = product("감초차", 1000);
    const int key = order(QLatin1String(Today));
    struct Case
    {
        const char *type;
        int count;
        const char *kind, *amount;
    };
    const Case cases[] = {{"NULL", 1, "일반판매", "1 1,000"}, {"0", 0, "일반판매", "0 0"},
                          {"NULL", -2, "반품", "-2 -2,000"},  {"1", 3, "서비스", "3 3,000"},
                          {"1", -1, "서비스", "-1 -1,000"},   {"3", 4, "", "4 4,000"}};
    for (const Case &one : cases) {
        const int row = detail(key, sold, 1000, 0, one.count);
        atOtherDesk(QStringLiteral("UPDATE tPSOrderDetail SET OrdD_OrderType = %1 WHERE OrdD_PK = %2")
                        .arg(QLatin1String(one.type))
                        .arg(row));
    }
    detail(key, sold, 7777, 0, 1); // a loss
    atOtherDesk("UPDATE tPSOrderDetail SET OrdD_OrderType = 2 WHERE OrdD_UnitPrice = 7777");

    const Paper paper = orderPaper();
    int index = int(std::size(cases));
    for (const Case &one : cases) {
        --index;
        const double row = 104 + 16 * index;
        EXPECT_EQ(paper.line(row, 0).toStdString(), QStringLiteral("%1 감초차 %2")
                                                        .arg(index + 1, 3, 10, QLatin1Char('0'))
                                                        .arg(QString::fromUtf8(one.kind))
                                                        .trimmed()
                                                        .toStdString());
        EXPECT_EQ(paper.line(row + 8).toStdString(), std::string("*차 1,000 0 ") + one.amount);
    }
    EXPECT_FALSE(paper.has("7,777"));
    EXPECT_EQ(paper.line(211).toStdString(), "부가세 과세 물품가액 5,000");
}

TEST_F(PageReceiptTest, LosesNoLineOfALongOrderAndStaysQuick)
{
    const int sold = product("감초차", 1000);
    const int key = order(QLatin1String(Today));
    for (int line = 0; line < 200; ++line)
        detail(key, sold, 1000 + line, 0, 1);
    openOrders();
    QElapsedTimer timer;
    timer.start();
    const print::Document document = PageReceipts(session_, nullptr).orderReceipt();
    EXPECT_LT(timer.elapsed(), 300);

    const Paper paper = Paper::of(document);
    // As many numbers as categories on every page: no line has its two rows on different pages.
    std::map<int, int> rowsOfPage;
    QStringList numbers;
    for (const Paper::Word &word : paper.words()) {
        if (word.box.left() < 16 && word.text.size() == 3 && word.text.toInt() > 0) {
            numbers << word.text;
            ++rowsOfPage[word.page];
        }
        if (word.text == QStringLiteral("*차"))
            --rowsOfPage[word.page];
        EXPECT_GE(word.box.top(), 19) << word.text.toStdString();
        EXPECT_LE(word.box.bottom(), 278) << word.text.toStdString();
    }
    QStringList expected;
    for (int number = 1; number <= 200; ++number)
        expected << QStringLiteral("%1").arg(number, 3, 10, QLatin1Char('0'));
    EXPECT_EQ(numbers, expected);
    EXPECT_THAT(rowsOfPage, testing::Each(testing::Pair(testing::_, 0)));
    EXPECT_EQ(paper.sheets().size(), 14);
    EXPECT_EQ(paper.overlaps(), QStringList());
}

TEST_F(PageReceiptTest, OfAPeriodTakesTheCustomersOrdersAndTheShopsMoney)
{
    const int taxed = product("감초차", 1000);
    const int free = product("경옥고", 2000, false);
    for (const char *date : {"2026-11-01", "2026-11-09", "2026-11-10", "2026-11-20", "2026-11-21"}) {
        const int key = order(QLatin1String(date));
        detail(key, taxed, 1000, 100, 2);
        detail(key, free, 2000, 0, -1);
        ledger(key, 3, 100);
    }
    const int other = order("2026-11-15", Patient + 1);
    detail(other, taxed, 55555, 0, 1);
    ledger(other, 3, 7000);

    const Paper paper = periodPaper(QDate(2026, 11, 9), QDate(2026, 11, 20));
    EXPECT_EQ(paper.line(65).toStdString(), "남궁보람님 (구매날짜: 2026-11-09 ~ 2026-11-20)");
    EXPECT_EQ(paper.line(90).toStdString(), "날짜 상품명 단가 할인 수량 금액");
    expectPlaces(paper, "printing/period-places.cases");
    // Three orders of two lines; numbers run on. Nothing of the other customer but the money.
    for (const Paper::Word &word : paper.words()) {
        if (word.text != QLatin1String("2026-11-10")) // 9 points beside 11.25
            continue;
        EXPECT_NEAR(word.box.height(), paper.word("001").box.height() * 0.8, 0.1);
    }
    const char *dates[] = {"2026-11-20", "2026-11-10", "2026-11-09"};
    for (int index = 0; index < 6; ++index) {
        const bool freeLine = index % 2 == 0;
        EXPECT_EQ(paper.line(104 + 16 * index).toStdString(),
                  QStringLiteral("%1 00%2 %3 %4")
                      .arg(QLatin1String(dates[index / 2]))
                      .arg(index + 1)
                      .arg(freeLine ? QStringLiteral("경옥고") : QStringLiteral("감초차"),
                           freeLine ? QStringLiteral("반품") : QStringLiteral("일반판매"))
                      .toStdString());
        EXPECT_EQ(paper.line(112 + 16 * index).toStdString(),
                  freeLine ? "차 2,000 0 -1 -2,000" : "*차 1,000 100 2 1,800");
    }
    EXPECT_EQ(paper.line(211).toStdString(), "부가세 과세 물품가액 5,400");
    EXPECT_EQ(paper.line(221).toStdString(), "부가세 면세 물품가액 -6,000");
    EXPECT_EQ(paper.line(261).toStdString(), "물품가액 현금수납 7,300");

    const Paper empty = periodPaper(QDate(2026, 11, 15), QDate(2026, 11, 15));
    EXPECT_EQ(empty.line(115).toStdString(), "부가세 과세 물품가액 0");
    EXPECT_EQ(empty.line(165).toStdString(), "물품가액 현금수납 7,000");
}

TEST_F(PageReceiptTest, RefusesANegativeLedgerTotalInItsBox)
{
    const int key = order(QLatin1String(Today));
    ledger(key, 4, -500);
    openOrders();
    MessageRecorder reader;
    PageReceipts receipts(session_, nullptr);
    receipts.printOrderReceipt(); // a preview would stand here for ever
    receipts.printPeriodReceipt(today(), today());
    const std::string box =
        "영수증 출력: 영수증 출력시 오류가 발생했습니다. 이 유: 음수는 출력할 수 없습니다. (환불토탈: -500)";
    EXPECT_THAT(reader.take(), testing::ElementsAre(box, box));
}
