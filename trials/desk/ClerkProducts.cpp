#include "trials/desk/Clerk.h"

#include "platform/runtime/Conversions.h"
#include "platform/runtime/RuntimeError.h"

namespace trial {

namespace {

/// Products of the trial beyond which no desk adds one, or the lists would grow beyond any shop's.
constexpr std::size_t MostProducts = 150;

} // namespace

std::vector<qint32> Clerk::trialProducts() const
{
    std::vector<qint32> keys;
    const ado::Recordset &products = *session_.rsSaleProductListsManager;
    for (int row = 0; row < products.rowCount(); ++row) {
        const qint32 key = runtime::CLng(products.bookmarkAt(row));
        if (key > task_.productsBefore)
            keys.push_back(key);
    }
    return keys;
}

void Clerk::addProduct()
{
    if (trialProducts().size() >= MostProducts)
        return;
    const qint64 token = next();
    const ProductEdit product{QStringLiteral("시험"),
                              QStringLiteral("물품 %1").arg(token),
                              QString::number(1'000 * (1 + roll(50))),
                              QString::number(token),
                              roll(2) == 1,
                              true,
                              day()};
    perform("product", {{"product-token", token}},
            [&] { return products_.add(product) == SaveOutcome::Saved ? Outcome::Done : Outcome::Failed; });
}

/// One of the trial, which may be sold meanwhile, or gone: this list is a while old.
void Clerk::deleteProduct()
{
    const std::vector<qint32> keys = trialProducts();
    if (keys.empty())
        return;
    const qint32 key = keys[std::size_t(roll(int(keys.size())))];
    perform("delete-product", {{"product", key}}, [&] {
        return products_.remove(ProductKey(key)) == ProductOperations::Deletion::Deleted ? Outcome::Done
                                                                                         : Outcome::Stopped;
    });
}

} // namespace trial
