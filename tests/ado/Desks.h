#pragma once

#include "platform/ado/Recordset.h"
#include "platform/runtime/Conversions.h"
#include "tests/support/Refusal.h"
#include "tests/support/TestDatabase.h"

#include <gtest/gtest.h>

using ado::CursorLocation;
using ado::CursorType;
using ado::LockType;
using ado::Recordset;
using runtime::Currency;
using runtime::ErrorNumber;

/// One suite over all engines: a clinic's database with this desk and another on it.
class Desks : public testing::TestWithParam<ado::Engine>
{
protected:
    TestDatabase clinic{GetParam()};
    const ado::ConnectionPtr &desk = clinic.connection();

    std::unique_ptr<Recordset> opened(const QString &statement, CursorType cursor = CursorType::Keyset,
                                      LockType lock = LockType::Optimistic, const ado::ConnectionPtr &where = {})
    {
        auto recordset = std::make_unique<Recordset>();
        recordset->Open(statement, where ? where : desk, cursor, lock);
        return recordset;
    }

    /// As a window opens its list: the one before it has left its rows.
    std::unique_ptr<Recordset> openedNext(const QString &statement, const ado::ConnectionPtr &where = {})
    {
        auto recordset = std::make_unique<Recordset>();
        recordset->openWithKeptRows();
        recordset->Open(statement, where ? where : desk, CursorType::Static, LockType::ReadOnly);
        return recordset;
    }

    /// Products "one", "two", ... with the prices 1000, 2000, ... in the category "C".
    void addProducts(std::initializer_list<const char *> names)
    {
        int price = 0;
        for (const char *name : names) {
            clinic.run(QStringLiteral("INSERT INTO tPSProductMaster (PM_Catagory, PM_Name, PM_UnitPrice, PM_IsTaxed, "
                                      "PM_IsValid, PM_AddedDate) VALUES ('C', '%1', %2, 1, 1, '2026-11-24')")
                           .arg(QString::fromUtf8(name))
                           .arg(price += 1000));
        }
    }

    QStringList names() { return clinic.rows(QStringLiteral("SELECT PM_Name FROM tPSProductMaster ORDER BY PM_PK")); }
};

inline const QString allProducts = QStringLiteral("SELECT * FROM tPSProductMaster");

/// Every value of one field, from the current row to the end, joined by blanks.
inline QString column(Recordset &recordset, const QString &field)
{
    QStringList values;
    for (; !recordset.Eof(); recordset.MoveNext())
        values << (recordset.value(field).isValid() ? runtime::text(recordset.value(field)) : QStringLiteral("NULL"));
    return values.join(u' ');
}

inline std::ostream &operator<<(std::ostream &out, ErrorNumber number)
{
    return out << static_cast<int>(number);
}

/// What a recordset told its views, in order.
class Told
{
public:
    explicit Told(Recordset &recordset)
    {
        QObject::connect(&recordset, &Recordset::rowChanged, &context_, [this] { said_ << QStringLiteral("changed"); });
        QObject::connect(&recordset, &Recordset::rowsReset, &context_, [this] { said_ << QStringLiteral("reset"); });
        QObject::connect(&recordset, &Recordset::rowRemoved, &context_,
                         [this](int row) { said_ << QStringLiteral("removed%1").arg(row); });
        QObject::connect(&recordset, &Recordset::rowRead, &context_,
                         [this](int row) { said_ << QStringLiteral("read%1").arg(row); });
    }

    QString take() { return std::exchange(said_, {}).join(u' '); }

private:
    QObject context_;
    QStringList said_;
};

inline void PrintTo(const QVariant &value, std::ostream *out)
{
    *out << (value.isValid() ? value.typeName() : "NULL") << ' ' << runtime::text(value).toStdString();
}
