#include "printing/clsMultiLineTextBox.h"
#include "printing/clsVsPrint.h"

#include <gtest/gtest.h>

TEST(clsVsPrint, MovesAndScalesPlaceAndFont)
{
    print::Document page;
    TemplateBox box{.text = QStringLiteral("글"),
                    .place = {10, 20, 30, 5},
                    .font = {QStringLiteral("굴림"), 10, true},
                    .align = print::Align::Right};
    EXPECT_TRUE(clsVsPrint().PrintTextBox2VsPrint(1, 2, 2, box, page));
    const print::TextItem &item = page.pages()[0].texts.at(0);
    const double mm = 56.7 * 25.4 / 1440; // the geometry's own millimetre
    EXPECT_NEAR(item.box.left(), 22 * mm, 1e-9);
    EXPECT_NEAR(item.box.top(), 44 * mm, 1e-9);
    EXPECT_NEAR(item.box.width(), 60 * mm, 1e-9);
    EXPECT_NEAR(item.box.height(), 30 * mm, 1e-9); // ten more than the box
    EXPECT_EQ(item.font.points, 20);
    EXPECT_TRUE(item.font.bold);
    EXPECT_EQ(item.align, print::Align::Right);
}

TEST(clsVsPrint, CopiesControlsOfTheScreen)
{
    QWidget form;
    print::Document page;
    QFont bold = form.font();
    bold.setBold(true);
    bold.setPointSizeF(12);

    QPlainTextEdit memo(&form);
    memo.setFont(bold);
    memo.setGeometry(96, 48, 192, 24);
    EXPECT_TRUE(clsVsPrint().PrintMultiLineTextBox2VsPrint(0, 0, 1, memo, page, QStringLiteral("새 글")));
    EXPECT_EQ(memo.toPlainText().toStdString(), "새 글");

    QComboBox list(&form);
    list.setFont(bold);
    list.addItems({QStringLiteral("하나"), QStringLiteral("둘")});
    list.setCurrentIndex(1);
    EXPECT_TRUE(clsVsPrint().PrintComboBox2VsPrint(0, 0, 1, list, page));

    const print::TextItem &memoItem = page.pages()[0].texts.at(0);
    EXPECT_EQ(memoItem.text.toStdString(), "새 글");
    EXPECT_FALSE(memoItem.font.bold);
    EXPECT_NEAR(memoItem.box.left(), 96 * 25.4 / memo.logicalDpiX(), 0.1);
    const print::TextItem &listItem = page.pages()[0].texts.at(1);
    EXPECT_EQ(listItem.text.toStdString(), "둘");
    EXPECT_TRUE(listItem.font.bold);
    EXPECT_EQ(listItem.font.points, 12);
    EXPECT_EQ(listItem.align, print::Align::Center);
}

TEST(clsMultiLineTextBox, ReadsTheLinesAsTheyAreDisplayed)
{
    QPlainTextEdit box;
    box.resize(200, 100);
    box.show();
    box.setPlainText(QStringLiteral("첫 줄   \n\n")
                     + QStringLiteral("긴 줄은 여러 줄로 나뉩니다 ").repeated(12).trimmed());
    const clsMultiLineTextBox reader;
    QStringList lines;
    EXPECT_TRUE(reader.MLT_GetAllLines(box, lines));
    EXPECT_GT(lines.size(), 4);
    EXPECT_EQ(reader.MLT_GetLineCount(box), lines.size());
    EXPECT_EQ(lines.mid(2).join(QString()).toStdString(),
              QStringLiteral("긴 줄은 여러 줄로 나뉩니다 ").repeated(12).trimmed().toStdString());
    EXPECT_EQ(reader.MLT_GetLine(box, 0).toStdString(), "첫 줄");
    EXPECT_EQ(reader.MLT_GetLine(box, 1).toStdString(), "");
    EXPECT_EQ(reader.MLT_GetLine(box, qint32(lines.size())).toStdString(), "");

    box.setLineWrapMode(QPlainTextEdit::NoWrap);
    box.setPlainText(QString(1500, QLatin1Char('a')));
    EXPECT_EQ(reader.MLT_GetLine(box, 0).size(), 1000);
}
