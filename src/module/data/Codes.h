#pragma once

#include <QLatin1String>
#include <QString>

#include <array>

/// The codes that the tables hold, and the Korean that grids, forms and receipts show for them. The statistic components
/// and the desk's sample clinics know nothing of the module's folders and keep those that they need themselves.

namespace ledger {

/// tpstrans_Operator, the kind of a ledger row; none is no kind but a choice not made.
enum Operator : qint16 { NoOperator = 0, Cut = 1, Discount = 2, Payment = 3, Refund = 4 };
inline constexpr std::array operators{Cut, Discount, Payment, Refund};

inline QString operatorText(Operator code)
{
    static constexpr const char16_t *texts[] = {u"", u"절사", u"할인", u"수납", u"환불"};
    return QString::fromUtf16(texts[code]);
}

/// tpstrans_Method, the medium of a payment. NULL counts as cash; cuts and discounts bear an empty one.
struct Method
{
    QLatin1String stored;
    const char16_t *text;
    const char16_t *dialogText; ///< in the dialogs, where cash is the blank entry and is stored as an empty text
};
inline constexpr QLatin1String CashMethod("00");
inline constexpr QLatin1String CardMethod("01");
inline constexpr std::array<Method, 5> methods{{
    {CashMethod, u"현금", u""},
    {CardMethod, u"카드", u"카드"},
    {QLatin1String("10"), u"현금(미수)", u"미수(현금)"},
    {QLatin1String("11"), u"카드(미수)", u"미수(카드)"},
    {QLatin1String("12"), u"통장(미수)", u"미수(통장)"},
}};
/// From here on `methods` are media of money that was taken against outstanding money.
inline constexpr std::size_t firstOwedMethod = 2;

} // namespace ledger

namespace sale {

/// OrdD_OrderType, the kind of a line; NULL is a normal sale as well.
enum LineType : qint16 { NormalSale = 0, Service = 1, Loss = 2 };
inline constexpr std::array lineTypes{NormalSale, Service, Loss};

inline QString lineTypeText(LineType code)
{
    static constexpr const char16_t *texts[] = {u"일반판매", u"서비스", u"망실"};
    return QString::fromUtf16(texts[code]);
}

/// OrdM_Gubun, how the goods reach the customer; NULL is a pick-up as well.
enum Delivery : qint16 { PickUp = 1, Courier = 2 };

inline QString deliveryText(Delivery code)
{
    return code == PickUp ? QStringLiteral("직접수령") : QStringLiteral("택배");
}

} // namespace sale
