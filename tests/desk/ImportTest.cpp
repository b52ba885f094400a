#include "desk/exchange/Csv.h"
#include "desk/exchange/Exchange.h"
#include "tests/support/Cases.h"
#include "tests/support/Refusal.h"
#include "tests/support/TestDatabase.h"

#include <gmock/gmock.h>

#include <QFile>
#include <QSet>
#include <QStringEncoder>

namespace {

class Import : public testing::TestWithParam<ado::Engine>
{
protected:
    Import() { beAsBefore(); }

    void beAsBefore()
    {
        for (const char *statement :
             {"DELETE FROM tPSProductMaster", "DELETE FROM Customer",
              "INSERT INTO tPSProductMaster (PM_Catagory, PM_Name, PM_UnitPrice, PM_IsTaxed, PM_IsValid, PM_EtcMemo, "
              "PM_AddedDate) VALUES ('탕약', '쌍화탕', 12000, 1, 1, '따뜻하게', '2024-01-05')",
              "INSERT INTO tPSProductMaster (PM_Catagory, PM_Name, PM_UnitPrice, PM_IsTaxed, PM_IsValid) VALUES "
              "('환', '공진단', NULL, 0, 1), ('소모품', '침', 50, 0, 1), ('비품', ' 침', 60, 0, 1)",
              "INSERT INTO Customer (sn, name, sex, birth) VALUES ('7', '김환자', 0, '1990-01-01')"})
            clinic_.run(QString::fromUtf8(statement));
    }
    QString products()
    {
        return clinic_
            .rows("SELECT PM_Catagory, PM_Name, PM_UnitPrice, PM_IsTaxed, PM_IsValid, PM_IsHide, PM_EtcMemo, "
                  "PM_AddedDate FROM tPSProductMaster ORDER BY PM_PK")
            .join('/');
    }
    QString patients()
    {
        return clinic_.rows("SELECT sn, name, sex, birth, zipcode, phone FROM Customer ORDER BY Customer_PK").join('/');
    }

    exchange::Imported import(const QByteArray &bytes, bool dryRun = false)
    {
        const QString name = folder_.filePath("list.csv");
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        file.close();
        return exchange::importFile(*clinic_.connection(), name, dryRun);
    }
    /// What came of a file: the rows that were not there before, or the refusal.
    template <typename Rows>
    void tryAll(const char *cases, Rows rowsNow)
    {
        for (const QStringList &line : casesOf(cases, 2)) {
            const QStringList before = rowsNow().split('/');
            std::string told = refusal([&] { import(line[0].toUtf8(), true); });
            EXPECT_EQ(rowsNow(), before.join('/')) << "it was not to be done";
            EXPECT_EQ(refusal([&] { import(line[0].toUtf8()); }), told) << line[0].toStdString();
            QStringList rows = rowsNow().split('/');
            const bool changed = rows != before;
            rows.removeIf([&](const QString &row) { return before.contains(row); });
            if (told.empty())
                EXPECT_EQ(rows.join('/').toStdString(), line[1].toStdString()) << line[0].toStdString();
            else
                EXPECT_THAT(told, testing::HasSubstr(line[1].isEmpty() ? "nothing" : line[1].toStdString()));
            EXPECT_EQ(changed, told.empty() && !line[1].isEmpty()) << line[0].toStdString();
            beAsBefore();
        }
    }

    TestDatabase clinic_{GetParam()};
    const QTemporaryDir folder_;
};
INSTANTIATE_TEST_SUITE_P(Engines, Import, testing::ValuesIn(allEngines), engineName);

} // namespace

TEST_P(Import, TakesAListOrRefusesItByTheLine)
{
    tryAll("desk/import.cases", [this] { return products(); });
    tryAll("desk/import-patients.cases", [this] { return patients(); });
}

TEST_P(Import, TakesTheListThatWasExportedAndChangesNothing)
{
    for (const char *odd : {"=1+1", "'=1", "''", "-7", "a,b", "\"", "줄\r\n바꿈", " 빈칸 ", "@", "🌿", "＝1", "'\r=1",
                            "00012", "=\"12\"", "8801234567890"})
        clinic_.run(QStringLiteral("INSERT INTO tPSProductMaster (PM_Catagory, PM_Name, PM_UnitPrice, PM_IsHide, "
                                   "PM_EtcMemo) VALUES ('가', '%1', -922337203685477, 0, '%1')")
                        .arg(QString::fromUtf8(odd).replace("'", "''")));
    clinic_.run("INSERT INTO tPSProductMaster (PM_Catagory, PM_Name) VALUES ('겹', '겹'), ('겹', '겹')");
    const QString before = products();
    const QString list = folder_.filePath("prices.csv");
    EXPECT_EQ(exchange::exportProducts(*clinic_.connection(), list), 21);
    const exchange::Imported outcome = exchange::importFile(*clinic_.connection(), list);
    EXPECT_EQ(outcome.same, 21) << outcome.told.join('\n').toStdString();
    EXPECT_EQ(products(), before);
    TestDatabase other(GetParam());
    clinic_.run("DELETE FROM tPSProductMaster WHERE PM_Name = '겹'");
    EXPECT_TRUE(QFile::remove(list));
    exchange::exportProducts(*clinic_.connection(), list);
    exchange::importFile(*other.connection(), list);
    const QString inBoth = "SELECT PM_Name, PM_UnitPrice, PM_IsTaxed, PM_IsHide FROM tPSProductMaster WHERE PM_IsTaxed "
                           "IS NOT NULL AND PM_Name NOT LIKE ' %' ORDER BY PM_PK";
    const auto sorted = [&](TestDatabase &one) {
        QStringList rows = one.rows(inBoth);
        rows.removeIf([](const QString &row) { return !row.startsWith("쌍") && !row.startsWith("공"); });
        rows.sort();
        return rows.join('/').toStdString();
    };
    EXPECT_EQ(sorted(other), sorted(clinic_));
}

TEST_P(Import, KnowsTheEncodingOfAFile)
{
    const QString list = QStringLiteral("분류,물품명,판매단가\n탕약,똠방각하,7\n");
    QStringEncoder korean("windows-949");
    const QByteArray bytes = korean(list);
    for (const QByteArray &file : {list.toUtf8(), "\xef\xbb\xbf" + list.toUtf8(), bytes}) {
        EXPECT_EQ(import(file).added, 1);
        EXPECT_EQ(clinic_.value("SELECT PM_UnitPrice FROM tPSProductMaster WHERE PM_Name = '똠방각하'"), "7");
        beAsBefore();
    }
    for (const QByteArray &file : {bytes + "\xff\xff", bytes.chopped(5) + bytes.right(5).left(1), "\xff\xfe" + bytes,
                                   list.toUtf8() + "\xed", list.toUtf8() + '\0'})
        EXPECT_NE(refusal([&] { import(file); }), "");
}

TEST_P(Import, WritesMoreRowsThanGoIntoOneStatement)
{
    for (const int price : {1'000, 2'000}) {
        QByteArray list = "분류,물품명,판매단가,등록일\n";
        for (int number = 0; number < 1'057; ++number)
            list += QStringLiteral("묶음,물품 %1,%2,2024-01-%3\n")
                        .arg(number)
                        .arg(price + number)
                        .arg(1 + number % 31, 2, 10, QChar('0'))
                        .toUtf8();
        const exchange::Imported outcome = import(list);
        EXPECT_EQ(outcome.added + outcome.changed, 1057);
        EXPECT_EQ(clinic_.value("SELECT COUNT(*) FROM tPSProductMaster WHERE PM_Catagory = '묶음'"), "1057");
        EXPECT_EQ(clinic_.value("SELECT SUM(PM_UnitPrice) FROM tPSProductMaster WHERE PM_Catagory = '묶음'"),
                  QString::number(1057 * price + 1056 * 1057 / 2));
    }
}
