#include "settings/clsProperties.h"

#include "tests/settings/SettingsDatabase.h"

using Properties = SettingsDatabase;

TEST_F(Properties, ReadingAnUnknownKeyMakesItWithAnEmptyValue)
{
    EXPECT_EQ(clsProperties().PropValue("지점명"), QString());
    EXPECT_THAT(properties(), ElementsAre("지점명|"));
    clsProperties().PropValue("지점명");
    EXPECT_EQ(properties().size(), 1u);
}

TEST_F(Properties, ARowMadeByAWriteIsCutAndOneThatExistsIsNot)
{
    const QString longKey = QStringLiteral("가나다라마바사아자차카타파하거너더러머버서어저처커");
    const QString longValue(300, u'값');
    clsProperties setting;
    setting.PropValue(longKey, QStringLiteral("하나"));
    setting.PropValue("긴값", longValue);
    EXPECT_THAT(properties(),
                ElementsAre(longKey.left(20).toStdString() + "|하나", "긴값|" + longValue.left(250).toStdString()));

    // The whole key misses the row that was cut, and makes a second one, whole.
    EXPECT_EQ(setting.PropValue(longKey), QString());
    EXPECT_EQ(properties().size(), 3u);
    setting.PropValue("긴값", longValue);
    EXPECT_EQ(setting.PropValue("긴값"), longValue);
}

TEST_F(Properties, AQuoteFailsWhereTheRowIsMadeAndPassesWhereItExists)
{
    const QString value = QStringLiteral("O'Neill");
    clsProperties setting;
    setting.PropValue("지점대표자", value);
    EXPECT_THAT(properties(), IsEmpty());
    setting.PropValue("지점대표자"); // makes the row
    setting.PropValue("지점대표자", value);
    EXPECT_EQ(setting.PropValue("지점대표자"), value);
}

TEST_F(Properties, ATableWithTheTwoColumnsAloneIsReadAndWritten)
{
    atOtherDesk("DROP TABLE tPSProperties");
    atOtherDesk("CREATE TABLE tPSProperties (tpsps_Key TEXT, tpsps_Value TEXT)");
    atOtherDesk("INSERT INTO tPSProperties VALUES ('지점명', '종로점'), ('우편번호', NULL)");
    clsProperties setting;
    EXPECT_EQ(setting.PropValue("지점명"), QStringLiteral("종로점"));
    EXPECT_EQ(setting.PropValue("우편번호"), QString());

    const QString longValue = QStringLiteral("O'Neill [KEYNAME] ") + QString(300, u'값');
    setting.PropValue("지점명", longValue);
    setting.PropValue("지점주소", QStringLiteral("서울"));
    EXPECT_EQ(setting.PropValue("지점명"), longValue);
    EXPECT_EQ(setting.PropValue("지점주소"), QStringLiteral("서울"));
    EXPECT_EQ(setting.PropValue("우편번호"), QString()) << "its neighbours stay as they were";
    EXPECT_EQ(properties().size(), 3u);
}

TEST_F(Properties, ErrorsAreTrappedWithoutAWord)
{
    atOtherDesk("DROP TABLE tPSProperties");
    EXPECT_EQ(clsProperties().PropValue("지점명"), QString());
    clsProperties().PropValue("지점명", QStringLiteral("종로점"));
    gcnnMasterDB.reset(); // the window can stand without a connection
    EXPECT_EQ(clsProperties().PropValue("지점명"), QString());
    clsProperties().PropValue("지점명", QStringLiteral("종로점"));
}
