#include "tests/data/FilledClinic.h"

#include "data/clsUserSettingDB.h"
#include "platform/runtime/RuntimeError.h"
#include "tests/support/MessageRecorder.h"

#include <gtest/gtest.h>

namespace {

class UserSettingDB : public testing::TestWithParam<ado::Engine>
{
protected:
    UserSettingDB()
        : database_(clinic::filledToWrite(GetParam()))
        , connection_(database_.connection())
    {
    }

    QString stored() { return database_.rows("SELECT * FROM t_HospSetup ORDER BY HS_KEY").join(u'\n'); }

    TestDatabase &database_;
    ado::ConnectionPtr connection_;
    clsUserSettingDB settings_;
    MessageRecorder boxes_;
};

TEST_P(UserSettingDB, ReadsWithoutWriting)
{
    const QString before = stored();
    const struct
    {
        const char16_t *property;
        QVariant value;
    } table[] = {
        {u"IsWelfare", true},    {u"IsUseDaeHaeng", false}, // anything but "1" is off
        {u"POSSumUse", false},   {u"DaeHaengCode", "원장's"},    {u"DefaultEDISusin", ""},
        {u"KTCashServerIP", ""}, {u"ProductServerCallSign", ""}, {u"처방지CallSign", ""},
    };
    for (const auto &row : table)
        EXPECT_EQ(settings_.value(connection_, row.property), row.value)
            << QString::fromUtf16(row.property).toStdString();
    EXPECT_EQ(stored(), before);
    EXPECT_TRUE(boxes_.messages.isEmpty());
}

TEST_P(UserSettingDB, WritesEveryPropertyToItsOwnRow)
{
    using Property = clsUserSettingDB::Property;
    ASSERT_EQ(clsUserSettingDB::properties().size(), 31u);
    const auto written = [](const Property &property) {
        return property.kind == clsUserSettingDB::Kind::Flag ? QVariant(true)
                                                             : QVariant(QString::fromUtf16(property.name) + "'s");
    };
    for (const Property &property : clsUserSettingDB::properties())
        settings_.setValue(connection_, property.name, written(property));
    for (const Property &property : clsUserSettingDB::properties())
        EXPECT_EQ(settings_.value(connection_, property.name), written(property))
            << QString::fromUtf16(property.key).toStdString();
    EXPECT_EQ(database_.value("SELECT COUNT(*) FROM t_HospSetup"), "31");
    settings_.setValue(connection_, u"IsWelfare", false);
    EXPECT_EQ(database_.value("SELECT HS_Value FROM t_HospSetup WHERE HS_KEY='사회복지법인여부'"), "0");
    settings_.setProductServerCallSign(connection_, "shop.Server");
    EXPECT_EQ(settings_.ProductServerCallSign(connection_), "shop.Server");
    EXPECT_TRUE(boxes_.messages.isEmpty());
}

TEST_P(UserSettingDB, WarnsOfAFailureAndGoesOnWithNothing)
{
    const ado::ConnectionPtr none;
    EXPECT_EQ(settings_.ProductServerCallSign(none), "");
    EXPECT_EQ(settings_.value(none, u"IsWelfare"), QVariant(false));
    settings_.setProductServerCallSign(none, "x");

    const char *titles[] = {"물품판매 중앙서버연동 호출기호 확인", "사회복지법인여부",
                            "물품판매 중앙서버연동 호출기호 확인"};
    ASSERT_EQ(boxes_.messages.size(), std::ssize(titles));
    for (qsizetype i = 0; i < std::ssize(titles); ++i) {
        const MessageRecorder::Message &box = boxes_.messages.at(i);
        EXPECT_EQ(box.title.toStdString(), titles[i]);
        EXPECT_EQ(box.flags, controls::ConfirmOnly + controls::WarningIcon);
        EXPECT_EQ(box.text.toStdString(),
                  "데이터베이스 접속에 오류가 발생했습니다. 데이터베이스\r접속을 확인하시고 다시 시도해 "
                  "주십시오. 오류가 지속되면\r개발사로 문의하시기 바랍니다.");
    }
    EXPECT_THROW(settings_.value(connection_, u"NoSuchSetting"), runtime::RuntimeError);
}

INSTANTIATE_TEST_SUITE_P(Engines, UserSettingDB, testing::ValuesIn(allEngines), engineName);

} // namespace
