#include "tests/ado/Desks.h"

class Positions : public Desks
{
};
INSTANTIATE_TEST_SUITE_P(Engines, Positions, testing::ValuesIn(allEngines), engineName);

TEST_P(Positions, OpenRequeryAndSortStandOnTheFirstRowAndTellIt)
{
    addProducts({"b", "c", "a"});
    Recordset products;
    Told told(products);
    products.Open(allProducts, desk, CursorType::Static, LockType::ReadOnly);
    EXPECT_EQ(told.take(), QStringLiteral("reset changed"));
    EXPECT_EQ(products.value("PM_Name"), "b");

    products.moveTo(2);
    EXPECT_EQ(told.take(), QStringLiteral("changed"));
    products.Sort(QStringLiteral("[PM_Name] DESC"));
    EXPECT_EQ(told.take(), QStringLiteral("reset changed"));
    EXPECT_EQ(products.currentRow(), 0);
    EXPECT_EQ(column(products, "PM_Name"), "c b a");

    told.take();
    products.Requery();
    EXPECT_EQ(told.take(), QStringLiteral("reset changed"));
    EXPECT_EQ(column(products, "PM_Name"), "b c a");
    products.Close();
    EXPECT_FALSE(products.isOpen());
    EXPECT_EQ(errorOf([&] { products.Requery(); }), ErrorNumber::ObjectClosed);
    EXPECT_EQ(products.rowCount(), 0);
}

TEST_P(Positions, AnEmptySetHasItsColumnsButNoRow)
{
    for (CursorType cursor : {CursorType::Keyset, CursorType::Static, CursorType::ForwardOnly}) {
        Recordset products;
        Told told(products);
        products.Open(allProducts, desk, cursor, LockType::Optimistic);
        EXPECT_EQ(told.take(), QStringLiteral("reset changed")) << "panes reset themselves on it";
        EXPECT_TRUE(products.Bof() && products.Eof());
        EXPECT_FALSE(products.hasCurrent());
        EXPECT_EQ(products.currentRow(), -1);
        EXPECT_EQ(products.fieldNames().value(1), QStringLiteral("PM_Catagory"));
        EXPECT_EQ(errorOf([&] { products.value("PM_Name"); }), ErrorNumber::NoCurrentRow);
        EXPECT_EQ(errorOf([&] { products.MoveNext(); }), ErrorNumber::NoCurrentRow);
        EXPECT_EQ(errorOf([&] { products.value("PM_None"); }), ErrorNumber::InvalidCall);
        products.MoveFirst();
        EXPECT_EQ(products.valueAt(0, 0), QVariant());
    }
}

TEST_P(Positions, MovesStopAtTheEnd)
{
    addProducts({"a", "b"});
    const auto products = opened(allProducts);
    EXPECT_EQ(column(*products, "pm_name"), "a b") << "field names ignore case";
    EXPECT_TRUE(products->Eof());
    EXPECT_FALSE(products->Bof());
    products->moveTo(1);
    EXPECT_EQ(products->value("PM_Name"), "b");
    products->moveTo(7);
    EXPECT_TRUE(products->Eof());
    products->MoveFirst();
    EXPECT_EQ(products->value("PM_Name"), "a");
    EXPECT_EQ(errorOf([&] { products->Open(allProducts, desk, CursorType::Static, LockType::ReadOnly); }),
              ErrorNumber::InvalidCall);
}

TEST_P(Positions, ABookmarkFindsItsRowAfterARequeryOrElseTheFirst)
{
    addProducts({"b", "d", "e"});
    const QString byName = QStringLiteral("SELECT * FROM tPSProductMaster ORDER BY PM_Name");
    for (CursorType cursor : {CursorType::Keyset, CursorType::Static}) {
        const auto products = opened(byName, cursor);
        products->moveTo(1);
        const ado::Bookmark mark = products->bookmark();
        clinic.run(QStringLiteral("INSERT INTO tPSProductMaster (PM_Name) VALUES ('a')"));
        products->Requery();
        EXPECT_EQ(products->value("PM_Name"), "a");
        products->setBookmark(mark);
        EXPECT_EQ(products->value("PM_Name"), "d");
        EXPECT_EQ(products->currentRow(), 2);
        EXPECT_EQ(products->bookmarkAt(2), mark);

        clinic.run(QStringLiteral("DELETE FROM tPSProductMaster WHERE PM_Name = 'd'"));
        products->Requery();
        products->setBookmark(mark);
        EXPECT_EQ(products->value("PM_Name"), "a");
        clinic.run(QStringLiteral("DELETE FROM tPSProductMaster WHERE PM_Name = 'a'"));
        clinic.run(QStringLiteral("INSERT INTO tPSProductMaster (PM_Name) VALUES ('d')"));
    }
}

TEST_P(Positions, ADeletedRowGivesWayToTheNextElseTheLastElseTheEnd)
{
    addProducts({"a", "b", "c"});
    const auto products = opened(allProducts);
    Told told(*products);
    products->moveTo(1);
    told.take();
    products->Delete();
    EXPECT_EQ(told.take(), QStringLiteral("removed1 changed"));
    EXPECT_EQ(products->value("PM_Name"), "c");
    products->Delete();
    EXPECT_EQ(products->value("PM_Name"), "a");
    EXPECT_EQ(products->currentRow(), 0);
    told.take();
    products->Delete();
    EXPECT_EQ(told.take(), QStringLiteral("removed0 changed"));
    EXPECT_TRUE(products->Bof() && products->Eof());
    EXPECT_EQ(errorOf([&] { products->Delete(); }), ErrorNumber::NoCurrentRow);
    EXPECT_TRUE(names().isEmpty());
}

TEST_P(Positions, AKeysetKeepsItsMembersAndReadsARowWhenItBecomesCurrent)
{
    addProducts({"a", "b", "c"});
    const auto products = opened(QStringLiteral("SELECT * FROM tPSProductMaster WHERE PM_UnitPrice < 3500"));
    clinic.run(QStringLiteral("INSERT INTO tPSProductMaster (PM_Name, PM_UnitPrice) VALUES ('d', 1)"));
    clinic.run(QStringLiteral("UPDATE tPSProductMaster SET PM_UnitPrice = 9000 WHERE PM_Name = 'b'"));
    clinic.run(QStringLiteral("DELETE FROM tPSProductMaster WHERE PM_Name = 'c'"));
    EXPECT_EQ(products->rowCount(), 3);
    products->MoveNext();
    EXPECT_EQ(runtime::text(products->value("PM_UnitPrice")), "9000") << "also where it no longer meets the filter";
    EXPECT_EQ(runtime::text(products->valueAt(1, products->columnIndex("PM_UnitPrice"))), "9000");
    products->MoveNext();
    EXPECT_EQ(errorOf([&] { products->value("PM_Name"); }), ErrorNumber::Conflict) << "gone at another desk";
    EXPECT_EQ(products->valueAt(2, 1), QVariant());
    products->Requery();
    EXPECT_EQ(column(*products, "PM_Name"), "a d");
}

TEST_P(Positions, AStaticSetShowsWhatWasThereWhenItWasOpened)
{
    addProducts({"a", "b"});
    const auto products = opened(allProducts, CursorType::Static, LockType::ReadOnly);
    clinic.run(QStringLiteral("UPDATE tPSProductMaster SET PM_Name = 'z'"));
    EXPECT_EQ(column(*products, "PM_Name"), "a b");
    EXPECT_EQ(errorOf([&] { products->setValue("PM_Name", "x"); }), ErrorNumber::InvalidCall);
    EXPECT_EQ(errorOf([&] { products->AddNew(); }), ErrorNumber::InvalidCall);
    products->MoveFirst();
    EXPECT_EQ(errorOf([&] { products->Delete(); }), ErrorNumber::InvalidCall);
}

TEST_P(Positions, ACloneSharesTheRowsWithAPositionOfItsOwn)
{
    addProducts({"a", "b", "c", "d"});
    const auto products = opened(allProducts);
    const std::unique_ptr<Recordset> clone = products->Clone();
    Told told(*products);
    clone->setBookmark(products->bookmarkAt(2));
    EXPECT_EQ(clone->value("PM_Name"), "c");
    EXPECT_EQ(products->value("PM_Name"), "a");
    EXPECT_EQ(told.take(), QString());

    products->Delete(); // "a": the clone stays on "c"
    EXPECT_EQ(clone->rowCount(), 3);
    EXPECT_EQ(clone->currentRow(), 1);
    EXPECT_EQ(clone->value("PM_Name"), "c");

    products->Requery();
    EXPECT_EQ(clone->rowCount(), 0);
    EXPECT_TRUE(clone->Eof());
    clone->setBookmark(products->bookmarkAt(1));
    EXPECT_EQ(errorOf([&] { clone->value("PM_Name"); }), ErrorNumber::NoCurrentRow);
    EXPECT_EQ(products->Clone()->rowCount(), 3);
}

TEST_P(Positions, ACloneOnADeletedRowGivesNoOtherRowsValues)
{
    addProducts({"a", "b", "c"});
    const auto products = opened(allProducts);
    const std::unique_ptr<Recordset> onDeleted = products->Clone();
    const std::unique_ptr<Recordset> onNext = products->Clone();
    onDeleted->moveTo(1);
    onNext->moveTo(2);
    products->moveTo(1);
    products->Delete();
    EXPECT_FALSE(onDeleted->hasCurrent());
    EXPECT_EQ(onDeleted->bookmark(), QVariant());
    EXPECT_EQ(errorOf([&] { onDeleted->value("PM_Name"); }), ErrorNumber::NoCurrentRow);
    EXPECT_EQ(onNext->value("PM_Name"), "c");
    EXPECT_EQ(onNext->bookmark(), onNext->value("PM_PK"));

    products->AddNew();
    products->setValue("PM_Name", "new");
    products->Update();
    EXPECT_FALSE(onDeleted->hasCurrent()) << "nor those of a row that came later";
    EXPECT_EQ(products->value("PM_Name"), "new");
}

TEST_P(Positions, ACloneOutlivesItsOriginal)
{
    addProducts({"a", "b"});
    auto products = opened(allProducts, CursorType::Static, LockType::ReadOnly);
    const std::unique_ptr<Recordset> clone = products->Clone();
    products.reset();
    EXPECT_EQ(column(*clone, "PM_Name"), "a b");
}

TEST_P(Positions, AHandlerMayCloseOrDropTheRecordset)
{
    addProducts({"a", "b"});
    auto products = opened(allProducts);
    QObject context;
    QObject::connect(products.get(), &Recordset::rowsReset, &context, [&] { products.reset(); });
    products->Requery();
    EXPECT_FALSE(products);

    products = opened(allProducts);
    QObject::connect(products.get(), &Recordset::rowRead, &context, [&] { products->Close(); });
    products->MoveNext();
    EXPECT_FALSE(products->isOpen());
}

TEST_P(Positions, LargeSetsAreReadInScreenfuls)
{
    for (int block = 0; block < 3; ++block) {
        QStringList values;
        for (int row = 0; row < 70; ++row)
            values << QStringLiteral("('p%1')").arg(block * 70 + row, 3, 10, QLatin1Char('0'));
        clinic.run(QStringLiteral("INSERT INTO tPSProductMaster (PM_Name) VALUES ") + values.join(u','));
    }
    const auto products = opened(QStringLiteral("SELECT * FROM tPSProductMaster ORDER BY PM_Name DESC"));
    ASSERT_EQ(products->rowCount(), 210);
    const int name = products->columnIndex("PM_Name");
    for (int row : {0, 63, 64, 127, 209, 130})
        EXPECT_EQ(products->valueAt(row, name), QStringLiteral("p%1").arg(209 - row, 3, 10, QLatin1Char('0')));
    EXPECT_EQ(products->currentRow(), 0);
}
