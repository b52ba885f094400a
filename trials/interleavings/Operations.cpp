#include "trials/interleavings/Operations.h"

#include "money/LedgerSight.h"
#include "money/OutstandingMoney.h"
#include "session/modGlobalVars.h"

#include <algorithm>
#include <memory>
#include <stdexcept>

namespace trial {

namespace {

using Work = std::function<bool()>;

const QDate today(2026, 11, 24);
const ShownOrder order{OrderKey(1), CustomerKey(1), QDate(2026, 11, 20)};
const ShownOrder unpaid{OrderKey(2), CustomerKey(1), QDate(2026, 11, 19)};

/// One that desks with a failing disk run as well.
Operation known(const char *name, unsigned needs, unsigned minds, unsigned changes, unsigned sets = 0)
{
    const std::span<const ::Work> all = works();
    const auto found = std::ranges::find(all, std::string_view(name), &::Work::name);
    if (found == all.end())
        throw std::logic_error(name);
    const ::Work work = *found;
    return {name, needs, minds, changes, [work](Desk &desk) { return [work, &desk] { return work.run(desk); }; }, sets};
}

/// The ledger as the dialog shows it; what another desk took since is told, and the user answers no.
std::shared_ptr<LedgerSight> sightOf(const ShownOrder &shown)
{
    return std::make_shared<LedgerSight>(LedgerSight::of(*gcnnMasterDB, shown));
}

Work payFirstByDialog(Desk &desk)
{
    return [&desk, seen = sightOf(unpaid)] {
        const std::vector<ledger::Row> rows = ledger::rowsOf({unpaid, today, 10, 20, 300, 400});
        if (!seen->write([&] { ledger::insertRow(*gcnnMasterDB, rows[0], seen.get()); },
                         [](const QString &) { return false; }))
            return false;
        for (std::size_t row = 1; row < rows.size(); ++row)
            ledger::insertRow(*gcnnMasterDB, rows[row]);
        ledger::addOutstanding(*gcnnMasterDB, *desk.session.rsCustSaleMaster, unpaid, runtime::Currency::fromWon(270));
        return true;
    };
}

Work payFurtherByDialog(Desk &desk)
{
    return [&desk, seen = sightOf(order)] {
        const ledger::Row row{order, today, ledger::Payment, 300, ledger::CashMethod};
        if (!seen->write([&] { ledger::insertRow(*gcnnMasterDB, row, seen.get()); },
                         [](const QString &) { return false; }))
            return false;
        ledger::addOutstanding(*gcnnMasterDB, *desk.session.rsCustSaleMaster, order, runtime::Currency::fromWon(-300));
        return true;
    };
}

Work collectByDialog(Desk &)
{
    return [seen = sightOf(order)] {
        const ledger::Row row{order, today, ledger::Payment, 300, ledger::CashMethod};
        return seen->write([&] { outstanding::pay(*gcnnMasterDB, row, seen.get()); },
                           [](const QString &) { return false; });
    };
}

Work sellProduct2(Desk &desk)
{
    EntryLine line{0, QStringLiteral("0"), QStringLiteral("3"), {}, {}};
    desk.orders.takeCurrentProduct(line);
    return [&desk, line] { return desk.orders.addDetailToSelectedOrder(order, line) == Outcome::Done; };
}

Work changeProduct2(Desk &desk)
{
    desk.products.beginChange();
    return [&desk] {
        return desk.products.change({QStringLiteral("차"), QStringLiteral("감초차"), QStringLiteral("600"),
                                     QStringLiteral("값이 올랐음"), false, true, QDate(2026, 1, 2)})
               == SaveOutcome::Saved;
    };
}

/// Of the second product from the second dealer.
IncomingEdit purchase2()
{
    return {QStringLiteral("2"),
            QStringLiteral("7"),
            QStringLiteral("100"),
            QStringLiteral("0"),
            QStringLiteral("700"),
            QString(),
            today};
}

Work buyProduct2(Desk &desk)
{
    return [&desk] { return desk.purchases.add(ProductKey(2), purchase2()) == SaveOutcome::Saved; };
}

Work giveToDealer2(Desk &desk)
{
    return [&desk] { return desk.purchases.change(IncomingKey(1), purchase2()) == SaveOutcome::Saved; };
}

std::vector<Operation> all()
{
    // Whoever deletes the order needs all that the window shows of it; whoever goes to the order needs it.
    constexpr unsigned whole = Order1 | Lines1 | Line1 | Ledger1 | Entry1;
    return {
        known("line on a new order", Product2, 0, NewDay | Sold2),
        known("line on the selected order", Order1 | Product2, 0, Lines1 | Sold2),
        {"line of the other product", Order1 | Product2, 0, Lines1 | Sold2, sellProduct2},
        known("delete a line", Line1, Order1, Lines1 | Line1),
        known("delete an order", whole, Fields1 | Owed1, whole | Fields1 | Owed1),
        known("save an order", Fields1 | Owed1, Order1 | Lines1, Order1 | Fields1 | Owed1, Discount),
        known("return on the sale's day", Order1 | Line1, 0, Lines1 | Line1),
        known("return on a new order", Order1 | Line1, 0, Line1 | NewDay),
        known("first payment", 0, 0, Ledger2 | Owed2),
        {"first payment by its dialog", Ledger2 | Owed2, 0, Ledger2 | Owed2, payFirstByDialog},
        known("further payment", Order1, 0, Ledger1),
        {"further payment by its dialog", Order1 | Ledger1 | Entry1 | Owed1, 0, Ledger1 | Owed1, payFurtherByDialog},
        known("payment by the form", Order1, 0, Ledger1),
        known("change a ledger row by the form", Order1 | Entry1, 0, Ledger1 | Entry1 | Owed1, Owed),
        known("change a ledger row", Order1 | Entry1, 0, Ledger1 | Entry1),
        known("delete a ledger row", Entry1, 0, Ledger1 | Entry1),
        known("collect outstanding money", Order1, 0, Ledger1 | Owed1),
        {"collect by its dialog", Order1 | Ledger1 | Entry1 | Owed1, 0, Ledger1 | Owed1, collectByDialog},
        known("add a product", 0, 0, 0),
        known("change a product", Product2 | Fields2, 0, Fields2, TaxParts),
        {"change the other product", Product2 | Fields2, 0, Fields2, changeProduct2},
        known("delete a product", Product2 | Sold2, 0, Product2 | Fields2),
        known("add a purchase", 0, 0, 0),
        {"purchase of the other product", Product2 | Dealer2, 0, Bought2, buyProduct2},
        known("change a purchase", Purchase1, 0, Purchase1),
        {"give a purchase to the other dealer", Purchase1 | Dealer2, 0, Purchase1 | Bought2, giveToDealer2},
        known("delete a purchase", Purchase1, 0, Purchase1),
        known("add a dealer", 0, 0, 0),
        known("change a dealer", Dealer2 | DealerText2, 0, DealerText2),
        known("delete a dealer", Dealer2 | DealerText2 | Bought2, 0, Dealer2 | DealerText2),
    };
}

} // namespace

const std::vector<Operation> &operations()
{
    static const std::vector<Operation> list = all();
    return list;
}

void showRows(SaleSession &session)
{
    session.rsCustSaleDetails->setBookmark(LineKey(1).bookmark());
    session.rsCustTranManage->setBookmark(LedgerKey(1).bookmark());
    session.rsSaleProductLists->setBookmark(ProductKey(2).bookmark());
    session.rsSaleProductListsManager->setBookmark(ProductKey(2).bookmark());
    session.rsProductIncoming->setBookmark(IncomingKey(1).bookmark());
    session.rsCompanyMaster->setBookmark(DealerKey(2).bookmark());
}

int operationNamed(const QString &name)
{
    const auto &list = operations();
    const auto found = std::ranges::find(list, name, [](const Operation &one) { return QString::fromUtf8(one.name); });
    if (found == list.end())
        throw std::runtime_error("no operation has the name " + name.toStdString());
    return int(found - list.begin());
}

} // namespace trial
