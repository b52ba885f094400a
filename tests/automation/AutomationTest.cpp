#include "platform/automation/Automation.h"
#include "platform/ado/Connection.h"
#include "platform/controls/EventEdge.h"
#include "platform/runtime/Currency.h"
#include "tests/support/Refusal.h"

#include <QApplication>
#include <QDate>
#include <QFile>
#include <QLibrary>
#include <QTemporaryDir>
#include <QWidget>

#include <gtest/gtest.h>

#include <optional>
#include <thread>

using runtime::Currency;
using runtime::ErrorNumber;

namespace {

const QString till = QStringLiteral("testShop.Till");

QString libraryPath()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/test_component");
}

int exported(const char *name)
{
    const auto function = reinterpret_cast<int (*)()>(QLibrary::resolve(libraryPath(), name));
    return function ? function() : -1;
}

class Automation : public testing::Test
{
protected:
    Automation()
    {
        automation::classRegister::setFile(registerFile_);
        automation::classRegister::registerLibrary(libraryPath());
    }
    ~Automation() override { automation::classRegister::setFile(QString()); }

    QTemporaryDir folder_;
    QString registerFile_ = folder_.filePath("classes.ini");
};

/// With an object at hand.
class CallByName : public Automation
{
protected:
    QVariant call(const char *member, QVariantList arguments = {})
    {
        return automation::call(*object_, QString::fromLatin1(member), arguments);
    }
    std::string text(const char *member, const QVariantList &arguments)
    {
        return call(member, arguments).toString().toStdString();
    }

    automation::ObjectPtr object_ = automation::createObject(till);
};

} // namespace

TEST_F(Automation, EveryCreationGivesAnObjectOfItsOwnAndTheLibraryCountsThem)
{
    EXPECT_EQ(exported("DllCanUnloadNow"), automation::Ok);
    automation::ObjectPtr first = automation::createObject(till);
    automation::ObjectPtr second = automation::createObject(QStringLiteral("TESTSHOP.till"));
    QVariantList three{3};
    automation::call(*first, QStringLiteral("Add"), three);
    EXPECT_EQ(automation::call(*first, QStringLiteral("Count")), 3);
    EXPECT_EQ(automation::call(*second, QStringLiteral("Count")), 0);

    first.reset();
    EXPECT_EQ(exported("DllCanUnloadNow"), automation::False);
    second.reset();
    EXPECT_EQ(exported("DllCanUnloadNow"), automation::Ok);
}

TEST_F(Automation, ALibraryIsNeededAsLongAsItsWindowsOrAnEventAre)
{
    automation::ObjectPtr object = automation::createObject(till);
    automation::call(*object, QStringLiteral("Open"));
    object.reset();
    EXPECT_EQ(exported("DllCanUnloadNow"), automation::False) << "the window outlives the object that opened it";
    for (QWidget *window : QApplication::topLevelWidgets())
        window->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(exported("DllCanUnloadNow"), automation::Ok);

    QWidget hosts;
    hosts.show();
    EXPECT_EQ(exported("DllCanUnloadNow"), automation::Ok) << "a window of the host's";
    {
        const controls::EventScope event;
        EXPECT_EQ(exported("DllCanUnloadNow"), automation::False);
        controls::runWhenFree([] { return false; }, [] {});
    }
    EXPECT_EQ(exported("DllCanUnloadNow"), automation::False) << "something waits for the end of the event";
    QCoreApplication::processEvents();
    EXPECT_EQ(exported("DllCanUnloadNow"), automation::Ok);
}

TEST_F(Automation, WhatCannotBeCreatedSaysSo)
{
    automation::classRegister::add(QStringLiteral("lost.Library"), folder_.filePath("missing"));
    automation::classRegister::add(QStringLiteral("testShop.Other"), libraryPath());
    QFile text(folder_.filePath("text.so"));
    ASSERT_TRUE(text.open(QIODevice::WriteOnly) && text.write("no library") > 0);
    text.close();
    automation::classRegister::add(QStringLiteral("text.File"), text.fileName());

    for (const char *id : {"", "nobody.Knows", "lost.Library", "text.File", "testShop.Other", "testShop.Broken"})
        EXPECT_EQ(errorOf([id] { automation::createObject(QString::fromLatin1(id)); }), ErrorNumber::CannotCreateObject)
            << id;
    EXPECT_EQ(exported("DllCanUnloadNow"), automation::Ok) << "a failed creation must not count";
}

TEST_F(Automation, RegistrationIsWrittenByTheLibraryAndClearedByIt)
{
    const QString served = automation::classRegister::libraryOf(till);
    EXPECT_TRUE(QFile::exists(served)) << "the path stands in full";
    EXPECT_EQ(exported("DllUnregisterServer"), automation::Ok);
    EXPECT_EQ(automation::classRegister::libraryOf(till), QString());
    EXPECT_EQ(errorOf([] { automation::createObject(till); }), ErrorNumber::CannotCreateObject);

    // Called bare, as by a host with a loader of its own, and from a folder that is not the program's.
    const QString elsewhere = folder_.filePath("elsewhere.so");
    ASSERT_TRUE(QFile::copy(served, elsewhere));
    const auto registerServer = reinterpret_cast<int (*)()>(QLibrary::resolve(elsewhere, "DllRegisterServer"));
    ASSERT_TRUE(registerServer);
    EXPECT_EQ(registerServer(), automation::Ok);
    EXPECT_EQ(automation::classRegister::libraryOf(till), elsewhere);
    EXPECT_TRUE(automation::createObject(till));

    automation::classRegister::setFile(QStringLiteral("/proc/nowhere/classes.ini"));
    EXPECT_EQ(exported("DllRegisterServer"), automation::Failed);
    EXPECT_EQ(errorOf([this] { automation::classRegister::registerLibrary(folder_.filePath("missing")); }),
              ErrorNumber::CannotCreateObject);
}

TEST_F(CallByName, IgnoresCaseConvertsArgumentsAndFillsTheOptionalOnes)
{
    const struct
    {
        const char *member;
        QVariantList arguments;
        const char16_t *result;
    } cases[] = {
        {"Describe", {QStringLiteral("쌍화차")}, u"쌍화차/1/보관"},
        {"describe", {QStringLiteral("쌍화차"), 2}, u"쌍화차/2/보관"},
        {"DESCRIBE", {12, QStringLiteral("\\1,000"), -1}, u"12/1000/판매"},
        {"Describe", {QDate(2026, 11, 24), 2.5, QStringLiteral("0")}, u"2026-11-24/2/보관"},
        {"Describe", {QVariant()}, u"/1/보관"},
        {"Echo", {QStringLiteral("그대로")}, u"그대로"},
        {"NextDay", {QStringLiteral("2026-11-30")}, u"2026-12-01"},
    };
    for (const auto &c : cases)
        EXPECT_EQ(call(c.member, c.arguments).toString(), QString::fromUtf16(c.result)) << c.member;

    EXPECT_FALSE(call("Echo", {QVariant()}).isValid()) << "an empty value stays empty";
    EXPECT_EQ(call("Total", {QStringLiteral("\\1,500"), 3}).value<Currency>(), Currency::fromWon(4500));
    EXPECT_FALSE(call("Add", {1}).isValid()) << "a member without a result gives none";
}

TEST_F(CallByName, WritesBackWhatIsTakenByReferenceAndNothingElse)
{
    QVariantList arguments{QStringLiteral("7"), QStringLiteral("35")};
    automation::call(*object_, QStringLiteral("Exchange"), arguments);
    EXPECT_EQ(arguments, (QVariantList{QStringLiteral("35"), 7}));

    arguments = {QVariant()};
    automation::call(*object_, QStringLiteral("Fill"), arguments);
    EXPECT_EQ(arguments.first().toString(), QStringLiteral("채움"));

    arguments = {QStringLiteral("1"), QStringLiteral("2")};
    automation::call(*object_, QStringLiteral("Describe"), arguments);
    EXPECT_EQ(arguments, (QVariantList{QStringLiteral("1"), QStringLiteral("2")})) << "the caller's texts stay texts";

    const QString firstAddress = QStringLiteral("sqlite:") + folder_.filePath("first.db");
    const QString secondAddress = QStringLiteral("sqlite:") + folder_.filePath("second.db");
    arguments = {QVariant::fromValue(ado::Connection::open(firstAddress, true)), secondAddress};
    EXPECT_EQ(automation::call(*object_, QStringLiteral("Replace"), arguments).toString(), firstAddress);
    EXPECT_EQ(arguments.first().value<ado::ConnectionPtr>()->address(), secondAddress);
}

TEST_F(CallByName, TellsAnUnknownMemberFromWrongArguments)
{
    const struct
    {
        const char *member;
        QVariantList arguments;
        ErrorNumber error;
    } cases[] = {
        {"Refund", {}, ErrorNumber::NoSuchMember},
        {"Secret", {}, ErrorNumber::NoSuchMember},
        {"counted", {}, ErrorNumber::NoSuchMember},
        {"deleteLater", {}, ErrorNumber::NoSuchMember},
        {"Add", {}, ErrorNumber::WrongArguments},
        {"Add", {1, 2}, ErrorNumber::WrongArguments},
        {"Add", {QStringLiteral("많이")}, ErrorNumber::WrongArguments},
        {"Describe", {QStringLiteral("a"), 40000}, ErrorNumber::WrongArguments},
        {"NextDay", {QStringLiteral("내일")}, ErrorNumber::WrongArguments},
        {"Replace", {QStringLiteral("no connection"), QString()}, ErrorNumber::WrongArguments},
    };
    for (const auto &c : cases)
        EXPECT_EQ(errorOf([&] { call(c.member, c.arguments); }), c.error) << c.member;
    EXPECT_EQ(call("Count"), 0) << "a refused call does nothing";
}

TEST_F(CallByName, IsRefusedOnAnotherThread)
{
    std::optional<ErrorNumber> called, created;
    std::thread([&] {
        called = errorOf([&] { call("Add", {1}); });
        created = errorOf([] { automation::createObject(till); });
    }).join();
    EXPECT_EQ(called, ErrorNumber::InvalidCall);
    EXPECT_EQ(created, ErrorNumber::InvalidCall);
    EXPECT_EQ(call("Count"), 0);
}
