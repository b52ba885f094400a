#include "platform/registry/AppSettings.h"
#include "platform/runtime/RuntimeError.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <array>

using registry::GetSetting;
using registry::SaveSetting;

namespace {

const QString application = QStringLiteral("Zelvo Desk");
const QString section = QStringLiteral("접수실 설정");

class AppSettings : public testing::Test
{
protected:
    AppSettings() { registry::setStoreFolder(folder_.path()); }
    ~AppSettings() override { registry::setStoreFolder(QString()); }

    QTemporaryDir folder_;
};

} // namespace

TEST_F(AppSettings, GiveBackEveryTextUnderEveryNameAndTheDefaultForTheRest)
{
    const struct
    {
        QString section;
        QString key;
        QString value;
    } cases[] = {
        {QStringLiteral("젤보 데스크"), QStringLiteral("영수증프린터디바이스"), QStringLiteral("<자동설정>")},
        {QStringLiteral("원장실 설정"), QStringLiteral("시작시최대화"), QStringLiteral("1")},
        {section, QStringLiteral("시작시최대화"), QStringLiteral("0")},
        {section, QStringLiteral("최상위윈도우(TTTTreat)"), QStringLiteral("a, b; \"c\"\r\n\\\\server\\printer")},
        {section, QStringLiteral("a/b"), QStringLiteral("@slash")},
        {section + QStringLiteral("/a"), QStringLiteral("b"), QStringLiteral("group")},
        {section, QStringLiteral("a\\b=%2F"), QString()},
        {QStringLiteral("General"), QStringLiteral("ZelvoOCS Server IP"), QStringLiteral(" 10.0.0.1 ")},
    };
    for (const auto &c : cases)
        EXPECT_EQ(GetSetting(application, c.section, c.key, QStringLiteral("없음")), QStringLiteral("없음"));
    for (const auto &c : cases)
        SaveSetting(application, c.section, c.key, c.value);
    for (const auto &c : cases)
        EXPECT_EQ(GetSetting(application, c.section, c.key, QStringLiteral("없음")), c.value) << c.key.toStdString();
    EXPECT_EQ(GetSetting(QStringLiteral("Other Desk"), section, QStringLiteral("시작시최대화")), QString());
}

TEST_F(AppSettings, SurviveProgramsThatWriteAtOnce)
{
    constexpr int keys = 150;
    std::array<QProcess, 3> programs;
    for (std::size_t i = 0; i < programs.size(); ++i)
        programs[i].start(QCoreApplication::applicationDirPath() + QStringLiteral("/settings_writer"),
                          {folder_.path(), QStringLiteral("키%1-").arg(i), QString::number(keys)});
    for (int i = 0; i < keys; ++i)
        SaveSetting(application, section, QStringLiteral("own%1").arg(i), QString::number(i));
    for (QProcess &program : programs) {
        ASSERT_TRUE(program.waitForFinished(60'000));
        ASSERT_EQ(program.exitCode(), 0);
    }

    QStringList lost;
    for (const char16_t *name : {u"own", u"키0-", u"키1-", u"키2-"}) {
        for (int i = 0; i < keys; ++i) {
            const QString key = QString::fromUtf16(name) + QString::number(i);
            if (GetSetting(application, section, key) != QString::number(i))
                lost << key;
        }
    }
    EXPECT_EQ(lost.join(u' ').toStdString(), "");
}

TEST_F(AppSettings, RaiseWhenTheStoreCannotBeWritten)
{
    registry::setStoreFolder(QStringLiteral("/proc/nowhere"));
    EXPECT_THROW(SaveSetting(application, section, QStringLiteral("a"), QStringLiteral("b")), runtime::RuntimeError);
    EXPECT_EQ(GetSetting(application, section, QStringLiteral("a"), QStringLiteral("c")), QStringLiteral("c"));
}
