#include "settings/clsUserSetting.h"

#include "platform/registry/AppSettings.h"
#include "platform/runtime/RuntimeError.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <map>

namespace {

class UserSetting : public testing::Test
{
protected:
    UserSetting() { registry::setStoreFolder(folder_.path()); }
    ~UserSetting() override { registry::setStoreFolder(QString()); }

    QTemporaryDir folder_;
    clsUserSetting settings_;
};

} // namespace

TEST_F(UserSetting, EveryPropertyHasAPlaceOfItsOwn)
{
    std::map<QString, int> perSection;
    for (const clsUserSetting::Property &property : clsUserSetting::properties()) {
        const bool printer = QStringView(property.name) == u"ReceiptPrinter";
        EXPECT_EQ(settings_.value(property.name), printer ? QStringLiteral("<자동설정>") : QString())
            << QString::fromUtf16(property.name).toStdString();
        settings_.setValue(property.name, QString::fromUtf16(property.name));
        ++perSection[QString::fromUtf16(property.section)];
    }
    for (const clsUserSetting::Property &property : clsUserSetting::properties())
        EXPECT_EQ(settings_.value(property.name), QString::fromUtf16(property.name));
    const std::map<QString, int> sections{
        {QStringLiteral("젤보 데스크"), 90}, {QStringLiteral("원장실 설정"), 28}, {QStringLiteral("접수실 설정"), 23}};
    EXPECT_EQ(perSection, sections);
}

TEST_F(UserSetting, OtherProgramsFindTheValuesByTheirKeys)
{
    const struct
    {
        const char16_t *property;
        QVariant value;
        const char *section, *key, *stored;
    } cases[] = {
        {u"ReceiptPrinter", QStringLiteral("EPSON"), "젤보 데스크", "영수증프린터디바이스", "EPSON"},
        {u"MaxAtStartMain", true, "원장실 설정", "시작시최대화", "True"},
        {u"MaxAtStartRegist", 0, "접수실 설정", "시작시최대화", "0"},
        {u"TTTTreatWindowLeft", 120, "젤보 데스크", "치료추적윈도우왼쪽", "120"},
        {u"TrackingUserForDoctor", QStringLiteral("김"), "원장실 설정", "대기실치료실진료의사", "김"},
        {u"TrackingUserForNurse", QString(), "접수실 설정", "대기실치료실진료의사", ""},
    };
    for (const auto &row : cases)
        settings_.setValue(row.property, row.value);
    for (const auto &row : cases)
        EXPECT_EQ(registry::GetSetting(QStringLiteral("Zelvo Desk"), QString::fromUtf8(row.section),
                                       QString::fromUtf8(row.key), QStringLiteral("없음"))
                      .toStdString(),
                  row.stored)
            << row.key;
    EXPECT_EQ(settings_.ReceiptPrinter(), QStringLiteral("EPSON"));
    EXPECT_THROW(settings_.value(u"NoSuchSetting"), runtime::RuntimeError);
    EXPECT_THROW(settings_.setValue(u"receiptprinter", 1), runtime::RuntimeError);
}
