#include "money/LedgerEntry.h"
#include "money/OutstandingMoney.h"
#include "sales/RefundOperations.h"
#include "tests/money/LedgerWalk.h"

#include <algorithm>

using runtime::Currency;

namespace {

class LedgerAddsUp : public LedgerWalk
{
private:
    void act() override
    {
        using Step = void (LedgerAddsUp::*)();
        static constexpr Step steps[] = {
            &LedgerAddsUp::sellOnNewOrder, &LedgerAddsUp::sell, &LedgerAddsUp::sell, &LedgerAddsUp::sell, &LedgerAddsUp::takeBack,
            &LedgerAddsUp::takeBack, &LedgerAddsUp::payFirst, &LedgerAddsUp::payFirst, &LedgerAddsUp::payFurther,
            &LedgerAddsUp::payFurther, &LedgerAddsUp::addEntry, &LedgerAddsUp::addEntry, &LedgerAddsUp::changeEntry,
            &LedgerAddsUp::rewriteEntry, &LedgerAddsUp::deleteEntry, &LedgerAddsUp::collect, &LedgerAddsUp::collect,
            &LedgerAddsUp::editOrder, &LedgerAddsUp::deleteLine, &LedgerAddsUp::deleteOrder, &LedgerAddsUp::emptyLedger,
            &LedgerAddsUp::recalculate, &LedgerAddsUp::forgetOwed, &LedgerAddsUp::dropProduct,
        };
        const Step step = steps[roll(std::size(steps))];
        if (books_.orders.empty())
            return sellOnNewOrder();
        stand(anyOf(books_.orders));
        (this->*step)();
    }
    EntryLine typed(Books::Line &line)
    {
        line.product = anyOf(books_.products);
        session_.rsSaleProductLists->setBookmark(line.product);
        const int kindOfLine = roll(5) ? 0 : 1 + roll(2);
        const int discount = roll(3) * 50;
        line.count = 1 + roll(5);
        line.price = kindOfLine == 0 ? books_.products[line.product].price : 0;
        line.discount = kindOfLine == 0 ? discount : 0;
        return {std::int16_t(kindOfLine), QString::number(discount), QString::number(line.count)};
    }
    void sellOnNewOrder()
    {
        const QDate date = day();
        Books::Line line{};
        const EntryLine entry = typed(line);
        note("sell on a new order of day", date.day(), line.count);
        sales_.setToday([date] { return date; });
        require(sales_.addDetailToNewOrder(entry) == Outcome::Done, QStringLiteral("failed"));
        adoptOrder(date);
        adoptLine(line, date);
    }
    void sell()
    {
        Books::Line line{};
        const EntryLine entry = typed(line);
        note("sell on order", key_, line.count);
        require(sales_.addDetailToSelectedOrder(entry) == Outcome::Done, QStringLiteral("failed"));
        adoptLine(line, books_.orders[key_].date);
        require(books_.lines.rbegin()->second.order == key_, QStringLiteral("on another order"));
    }
    void takeBack()
    {
        if (books_.lines.empty())
            return;
        const int sold = anyOf(books_.lines);
        standOnLine(sold);
        const int price = roll(40) * 50;
        const Refund refund{std::int16_t(-1 - roll(3)), roll(2) ? day() : books_.orders[key_].date, {}, Currency::fromWon(price)};
        note("take back of line", sold, refund.count);
        const bool hasOrder = std::any_of(books_.orders.begin(), books_.orders.end(), [&](const auto &o) { return o.second.date == refund.date; });
        require(returns_.takeBack(returns_.currentLine(), refund) == Outcome::Done, QStringLiteral("failed"));
        if (!hasOrder)
            adoptOrder(refund.date);
        adoptLine({0, books_.lines[sold].product, price, 0, refund.count}, refund.date);
    }
    void deleteLine()
    {
        if (books_.lines.empty())
            return;
        const int line = anyOf(books_.lines);
        standOnLine(line);
        note("delete line", line);
        require(sales_.deleteDetail() == Outcome::Done, QStringLiteral("failed"));
        books_.lines.erase(line);
        books_.sum(key_);
    }

    void payFirst()
    {
        const QDate date = day();
        const struct { int kind, money; } parts[] = {{ledger::Discount, roll(2) ? money() : 0}, {ledger::Cut, roll(2) ? roll(10) * 10 : 0},
                                                     {ledger::Payment, money()}, {ledger::Payment, roll(2) ? money() : 0}};
        std::vector<Books::Entry> written;
        for (const auto &part : parts)
            if (part.money != 0)
                written.push_back({key_, part.kind, part.money, date});
        const int rest = money();
        note("first payment on order", key_, rest);
        ledger::appendFirstPayment(*gcnnMasterDB, {Patient, key_, date, float(parts[0].money), float(parts[1].money),
                                                   float(parts[2].money), float(parts[3].money)});
        ledger::addOutstanding(orders(), Currency::fromWon(rest));
        adoptEntries(written);
        addOwed(rest);
    }
    void payFurther()
    {
        const Books::Entry entry{key_, kind(), money(), day()};
        note("further operation on order", key_, entry.money);
        ledger::append(*gcnnMasterDB, {Patient, key_, entry.date, qint16(entry.kind), entry.money, QStringLiteral("01")});
        adoptEntries({entry});
        if (roll(2)) {
            ledger::addOutstanding(orders(), -Currency::fromWon(entry.money));
            addOwed(-entry.money);
        }
    }
    LedgerEntry typed(const Books::Entry &entry)
    {
        return {entry.date, qint16(entry.kind), roll(2) ? QVariant(ledger::CashMethod) : QVariant(), Currency::fromWon(entry.money), {}, roll(2) == 1};
    }
    void addEntry()
    {
        const Books::Entry entry{key_, kind(), money(), day()};
        const LedgerEntry form = typed(entry);
        note(form.recalculates ? "entry, recalculating, on order" : "entry on order", key_, entry.money);
        openLedger();
        require(ledger::addEntry(session_, form), QStringLiteral("failed"));
        adoptEntries({entry});
        ledger::followAddedEntry(session_, form);
        if (form.recalculates && entry.kind == ledger::Payment)
            owedIsBalance();
        else if (form.recalculates && entry.kind == ledger::Refund)
            *owed_ = *owed_ ? **owed_ + entry.money : 0; // meant so: without outstanding money it only becomes 0
    }
    void changeEntry()
    {
        if (books_.entries.empty())
            return;
        Books::Entry &entry = books_.entries[standOnEntry()];
        entry.money = money();
        entry.date = day();
        LedgerEntry form = typed(entry);
        form.intOperator = kind(); // the row keeps its own
        note(form.recalculates ? "change of an entry, recalculating, on order" : "change of an entry on order", key_, entry.money);
        require(ledger::changeEntry(session_, form), QStringLiteral("failed"));
        if (form.recalculates)
            owedIsBalance();
    }
    void rewriteEntry()
    {
        if (books_.entries.empty())
            return;
        const int key = standOnEntry();
        books_.entries[key] = {key_, kind(), money(), day()};
        const Books::Entry &entry = books_.entries[key];
        note("entry rewritten", key, entry.money);
        ledger::change(*gcnnMasterDB, key, {Patient, key_, entry.date, qint16(entry.kind), entry.money, {}});
    }
    void deleteEntry()
    {
        if (books_.entries.empty())
            return;
        const int key = standOnEntry();
        note("delete entry", key);
        session_.rsCustTranManage->Delete();
        books_.entries.erase(key);
    }
    void emptyLedger()
    {
        note("delete all entries of order", key_);
        require(clsOperationMoney().OPM_DeleteAllByReceipt(gcnnMasterDB, key_) == 0, QStringLiteral("failed"));
        std::erase_if(books_.entries, [this](const auto &entry) { return entry.second.order == key_; });
    }
    void collect()
    {
        const Books::Entry entry{key_, ledger::Payment, money(), day()};
        note("collect outstanding money of order", key_, entry.money);
        outstanding::pay(*gcnnMasterDB, {Patient, key_, entry.date, ledger::Payment, entry.money, QStringLiteral("10")});
        adoptEntries({entry});
        if (*owed_)
            addOwed(-entry.money);
    }

    void editOrder()
    {
        orders().Resync();
        Books::Order &order = books_.orders[key_];
        order.date = day();
        order.discount = money(); // whatever was typed stands until the lines are summed again
        order.owed = money();
        note("edit of order", key_, *order.owed);
        require(sales_.saveOrder({{}, {}, {}, {}, {}, QString::number(order.discount), QString::number(*order.owed), false, order.date})
                    == Outcome::Done, QStringLiteral("failed"));
    }
    void recalculate()
    {
        note("sums of order", key_);
        sumAnew();
        books_.sum(key_);
    }
    void deleteOrder()
    {
        note("delete order", key_);
        orders().Resync();
        require(sales_.deleteOrder() == Outcome::Done, QStringLiteral("failed"));
        std::erase_if(books_.lines, [this](const auto &line) { return line.second.order == key_; });
        std::erase_if(books_.entries, [this](const auto &entry) { return entry.second.order == key_; });
        books_.orders.erase(key_);
    }
    /// An order of the time before outstanding money was kept, written by another desk.
    void forgetOwed()
    {
        note("no outstanding money on order", key_);
        database_.run(QStringLiteral("UPDATE tPSOrderMaster SET OrdM_Misugum = NULL WHERE OrdM_PK = %1").arg(key_));
        owed_->reset();
    }
    /// The sums of the orders stay until their next recalculation.
    void dropProduct()
    {
        if (books_.products.size() == 1)
            return;
        const int product = anyOf(books_.products);
        note("delete product", product);
        gcnnMasterDB->Execute(clsSQL().delAProductSQL(product));
        session_.rsSaleProductLists->Requery();
        books_.products.erase(product);
    }

    OrderOperations sales_{session_};
    RefundOperations returns_{session_};
};

} // namespace

TEST_P(LedgerAddsUp, WhateverIsSoldPaidTakenBackAndDeleted)
{
    const unsigned seeds = GetParam() == ado::Engine::SQLite ? 1000 : 100;
    for (unsigned seed = 1; seed <= seeds; ++seed) {
        const std::string fault = faultOf(seed, 30);
        ASSERT_TRUE(fault.empty()) << fault;
    }
}

INSTANTIATE_TEST_SUITE_P(Engines, LedgerAddsUp, testing::Values(ado::Engine::SQLite, ado::Engine::PostgreSQL), engineName);
