#include "platform/registry/AppSettings.h"
#include "platform/runtime/RuntimeError.h"
#include "printing/clsReceiptPrinter.h"
#include "settings/clsUserSetting.h"
#include "tests/printing/ReceiptDesk.h"
#include "tests/support/Cases.h"
#include "tests/support/PrintServer.h"

#include <QFile>
#include <QImage>

namespace {

// Before any test asks for printers: those of the machine are none of theirs.
const bool apart = PrintServer::keepApart();

constexpr double tolerance = 0.5; // mm

double mm(double twips)
{
    return twips * 25.4 / 1440;
}

class RollReceiptTest : public ReceiptDesk
{
protected:
    RollReceiptTest() { registry::setStoreFolder(program_.path()); }
    ~RollReceiptTest() override { registry::setStoreFolder({}); }

    static void choosePrinter(const QString &name) { clsUserSetting().setReceiptPrinter(name); }
    int orderOfLines(int count)
    {
        const int sold = product(QStringLiteral("감초차%1").arg(count), 1234, count % 2 == 1);
        const int key = order(QLatin1String(Today));
        for (int line = 0; line < count; ++line)
            detail(key, sold, 1234, 34, 2);
        return key;
    }
    void writeLogo(const QByteArray &content)
    {
        QFile file(program_.filePath("RcptLog.dat"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
};

} // namespace

TEST_F(RollReceiptTest, PutsEveryBoxInItsPlaceAndMovesTheFooterByTheItems)
{
    for (int lines : {1, 3}) {
        const int key = orderOfLines(lines);
        ledger(key, 3, 987);
        const Paper paper = rollPaper(key);
        const double moved = (lines - 1) * 10.0;
        for (const QStringList &box : casesOf("printing/roll-places.cases", 5)) {
            QString text = box[0];
            if (text.contains(QLatin1Char('%')))
                text = text.arg(lines);
            if (text == QLatin1String("2,400"))
                text = lines == 1 ? text : QStringLiteral("7,200");
            SCOPED_TRACE(text.toStdString());
            const double top = mm(box[3].toDouble()) + (box[4] == "moved" ? moved : 0);
            QRectF place; // of the nearest word of this text
            for (const Paper::Word &word : paper.words()) {
                if (word.text == text && (place.isNull() || qAbs(word.box.top() - top) < qAbs(place.top() - top)))
                    place = word.box;
            }
            ASSERT_FALSE(place.isNull());
            EXPECT_NEAR(box[1] == "right" ? place.right() : place.left(), mm(box[2].toDouble()), tolerance);
            EXPECT_NEAR(place.top(), top, tolerance);
        }
    }
}

TEST_F(RollReceiptTest, PrintsItemsAndSumsOnPaperAsLongAsTheReceipt)
{
    const int taxed = product("감초차", 1000);
    const int free = product("홍삼정 에브리데이 밸런스 프리미엄 골드 세트 90포", 98'765'432, false);
    const int key = order(QLatin1String(Today));
    detail(key, free, 98'765'432, 0, 10);
    detail(key, taxed, 1000, 50, 3);
    atOtherDesk("UPDATE tPSOrderDetail SET OrdD_HalinUnit = NULL WHERE OrdD_Count = 10");
    ledger(key, 3, 5000);
    ledger(key, 1, 9);

    const Paper paper = rollPaper(key);
    ASSERT_EQ(paper.sheets().size(), 1);
    EXPECT_NEAR(paper.sheets()[0].width(), 80, tolerance);
    EXPECT_NEAR(paper.sheets()[0].height(), mm(6240) + 10 + 3.7 + 5, 1);
    const auto line = [&](double twips, double down = 0) { return paper.line(mm(twips) + down + 1.8).toStdString(); };
    EXPECT_EQ(line(390), "젤보한의원 젤보한의원"); // the name once more stands below
    EXPECT_EQ(line(750), "젤보한의원 123-45-67890");
    EXPECT_EQ(line(1950), "남궁보람님 (구매날짜:2026-11-24)");
    EXPECT_EQ(line(2280), "영수증이 있으면 교환/환불시 보다 편리합니다.");
    EXPECT_THAT(line(2520), testing::StartsWith("[발행일]20"));
    EXPECT_EQ(line(3510), "001감초차");
    EXPECT_EQ(line(3780), "*차 1,000 50 3 2,850");
    EXPECT_EQ(line(3510, 10), "002홍삼정 에브리데이 밸런스 프리미엄 골드 세트 90포");
    EXPECT_EQ(line(3780, 10), "차 98,765,432 0 10 987,654,320");
    EXPECT_EQ(line(4290, 10), "부가세 과세 물품가액 2,850");
    EXPECT_EQ(line(4620, 10), "부가세 면세 물품가액 987,654,320");
    EXPECT_EQ(paper.line(mm(4980) + 10 + 2.8).toStdString(), "합 계 987,657,170");
    EXPECT_EQ(paper.line(mm(5415) + 10 + 2.8).toStdString(), "수납금액 5,000");
    EXPECT_EQ(line(5970, 10), "상품명 앞 * 표시가 되어 있는 품목은");
    EXPECT_EQ(paper.overlaps(), QStringList());
    for (const Paper::Word &word : paper.words())
        EXPECT_LE(word.box.right(), 77) << word.text.toStdString();
}

TEST_F(RollReceiptTest, WithoutLinesMovesTheFooterUp)
{
    const Paper paper = rollPaper(order(QLatin1String(Today)));
    EXPECT_NEAR(paper.word("품목입니다.").box.top(), mm(6240) - 10, 1);
}

TEST_F(RollReceiptTest, PrintsALogoInTheNamesPlace)
{
    const int key = orderOfLines(1);
    QImage logo(200, 40, QImage::Format_RGB32);
    logo.fill(Qt::darkGray);
    ASSERT_TRUE(logo.save(program_.filePath("RcptLog.dat"), "BMP"));
    const print::Document document = rollReceipt(rollOrder(key), print::endlessRoll(80));
    ASSERT_EQ(document.pages()[0].pictures.size(), 1u);
    const QRectF box = document.pages()[0].pictures[0].box;
    EXPECT_EQ(box.topLeft(), QPointF(0, 0));
    EXPECT_NEAR(box.width(), 200 * 25.4 / 96, 0.01);
    EXPECT_NEAR(box.height(), 40 * 25.4 / 96, 0.01);
    const Paper paper = Paper::of(document);
    EXPECT_NEAR(paper.word("젤보한의원").box.left(), mm(30), tolerance); // once
    // A picture that would cover the shop's data is made smaller, in its proportion.
    ASSERT_TRUE(QImage(3000, 1500, QImage::Format_RGB32).save(program_.filePath("RcptLog.dat"), "JPG"));
    const QRectF large = rollReceipt(rollOrder(key), print::endlessRoll(80)).pages()[0].pictures[0].box;
    EXPECT_NEAR(large.height(), mm(750), 0.01);
    EXPECT_NEAR(large.width(), 2 * large.height(), 0.01);
}

TEST_F(RollReceiptTest, PrintsNothingWhenItCannotPrintAll)
{
    const QString file = program_.filePath("roll.pdf");
    choosePrinter(file);
    const int key = orderOfLines(1);
    const struct
    {
        std::function<void()> spoil;
        const char *says;
    } cases[] = {
        {[&] { atOtherDesk("UPDATE tPSOrderDetail SET OrdD_Count = -1"); }, "음수는 출력할 수 없습니다. (수량: -1)"},
        {[&] {
             atOtherDesk("UPDATE tPSOrderDetail SET OrdD_Count = 1");
             writeLogo("this is no picture");
         },
         "로고 그림파일을 가져올 수 없습니다. 환경설정에서 로고를 다시 선택하십시오: "},
        {[&] {
             QFile::remove(program_.filePath("RcptLog.dat"));
             choosePrinter(QStringLiteral("없어진 프린터"));
         },
         "프린터를 찾을 수 없습니다: 없어진 프린터"},
    };
    for (const auto &one : cases) {
        one.spoil();
        try {
            PrintRollPrintReceipt(nullptr, rollOrder(key));
            ADD_FAILURE() << "printed: " << one.says;
        } catch (const runtime::RuntimeError &error) {
            EXPECT_THAT(error.description().toStdString(), testing::StartsWith(one.says));
        }
        EXPECT_FALSE(QFile::exists(file));
    }
    choosePrinter(file);
    PrintRollPrintReceipt(nullptr, rollOrder(key));
    EXPECT_TRUE(Paper(file).has("001감초차1"));
}

TEST_F(RollReceiptTest, RefusesAPrinterThatPrintsNoGraphics)
{
    MessageRecorder reader;
    choosePrinter(QStringLiteral("cbm receipt printer (text only)"));
    PrintRollPrintReceipt(nullptr, rollOrder(1));
    EXPECT_THAT(reader.take(),
                testing::ElementsAre("지원되지 않는 프린터: 그래픽 출력이 가능한 프린터를 사용하십시오."));
}

TEST_F(RollReceiptTest, FindsTheRollPrinterAmongTheSystemsPrinters)
{
    ASSERT_TRUE(apart);
    const int key = orderOfLines(30);
    MessageRecorder reader;
    PrintRollPrintReceipt(nullptr, rollOrder(key)); // no printing system at all
    const std::string notFound = "프린터를 찾지 못했습니다.: 롤 프린터를 찾을 수 없습니다. 롤 프린터로 출력하기 "
                                 "위해서는\r[EPSON TM-T88II Partial "
                                 "cut]으로 등록된 프린터가 필요합니다.";
    EXPECT_THAT(reader.take(), testing::ElementsAre(notFound));

    PrintServer server;
    const clsReceiptPrinter printers;
    EXPECT_EQ(printers.GetReceiptPrinter(), PrintServer::rollPrinter);
    QComboBox box;
    EXPECT_TRUE(printers.FillPrinterList(box));
    EXPECT_EQ(box.count(), 2);

    PrintRollPrintReceipt(nullptr, rollOrder(key));
    const Paper paper(server.job(PrintServer::rollPrinter));
    ASSERT_EQ(paper.sheets().size(), 1);
    EXPECT_NEAR(paper.sheets()[0].height(), mm(6240) + 290 + 3.7 + 5, 1);
    EXPECT_NEAR(paper.word("001감초차30").box.left(), 0, tolerance);
    EXPECT_NEAR(paper.word("030감초차30").box.top(), mm(3510) + 290, 1);
    EXPECT_TRUE(reader.take().empty());

    server.remove(PrintServer::rollPrinter);
    EXPECT_EQ(printers.GetReceiptPrinter(), QString()); // a page printer is none
    PrintRollPrintReceipt(nullptr, rollOrder(key));
    EXPECT_THAT(reader.take(), testing::ElementsAre(notFound));
    choosePrinter(QStringLiteral("없어진 프린터"));
    EXPECT_EQ(printers.GetReceiptPrinter(), QStringLiteral("없어진 프린터")); // handed on unchecked
}
