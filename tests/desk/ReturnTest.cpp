#include "tests/desk/SaleDesk.h"

#include <QDate>
#include <QDateEdit>

namespace {

std::string isoDate(int daysAgo)
{
    return QDate::currentDate().addDays(-daysAgo).toString(Qt::ISODate).toStdString();
}

class ReturnAtTheDesk : public testing::TestWithParam<ado::Engine>
{
};

} // namespace

// Goods sold last week come back today, in two parts: today's order is made for the first and found for the second.
TEST_P(ReturnAtTheDesk, GoesOnAnOrderOfTodayAndIsNotedOnTheSoldLine)
{
    SaleDesk desk(GetParam());
    desk.open();
    desk.addLine(0, "3");
    desk.database.run(QStringLiteral("UPDATE tPSOrderMaster SET OrdM_Date = '%1'").arg(QString::fromStdString(isoDate(7))));
    desk.window()->close();
    walk::settle();
    desk.open();

    const auto takeBack = [&](int order, const char *quantity) {
        desk.choose("tdbCustSaleMaster", order);
        desk.choose("tdbCustSaleDetails", 0);
        desk.actor.inModalWindow([&] { desk.click("chkCmdRefund"); },
                                 [&](QWidget *refund) {
                                     auto &actor = desk.actor;
                                     actor.typeInto(actor.control(refund, QStringLiteral("txtRfndUnitCount")), QString::fromLatin1(quantity));
                                     actor.typeInto(actor.control(refund, QStringLiteral("txtRfndUnitSalePrice")), QStringLiteral("800"));
                                     actor.picture(QStringLiteral("return"), refund);
                                     actor.click(actor.control(refund, QStringLiteral("chkCmdSave")));
                                 });
    };
    takeBack(0, "-1");
    takeBack(1, "-2"); // today's order stands first by now
    EXPECT_TRUE(desk.boxes.messages.isEmpty()) << desk.boxes.texts().join(u'\n').toStdString();

    EXPECT_EQ(desk.orders(), "1|7|" + isoDate(7) + "|3000|0|0|3000|0\n"
                             "2|7|" + isoDate(0) + "|-2400|0|0|-2400|0");
    EXPECT_EQ(desk.lines(), "1|1|1000|0|3|0\n"
                            "2|1|800|0|-1|NULL\n"
                            "2|1|800|0|-2|NULL");
    EXPECT_EQ(desk.text("txtOrderMaster_9").toStdString(), "-\\2,400");

    // A return cannot come back itself.
    desk.choose("tdbCustSaleMaster", 0);
    desk.choose("tdbCustSaleDetails", 0);
    desk.click("chkCmdRefund");
    EXPECT_EQ(desk.boxes.texts(), QStringList{QStringLiteral("반품된 물품이므로 반품처리를 할 수 없습니다.")});
}

INSTANTIATE_TEST_SUITE_P(Engines, ReturnAtTheDesk, testing::ValuesIn(allEngines), engineName);
