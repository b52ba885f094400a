#include "data/clsSQL.h"

#include "data/StatementText.h"
#include "data/modGeneralSQL.h"
#include "platform/runtime/Conversions.h"

// Orders and their lines. The ledger's statements stand in clsSQLLedger.cpp, those of products, dealers, purchases and
// settings in clsSQLProducts.cpp.

using runtime::Currency;
using statement::amount;
using statement::date;
using statement::fill;
using statement::number;

namespace {

/// The narrowing of insDB2OrderMasterSQL: an amount beyond 16 bits raises Overflow.
QString narrowed(Currency money)
{
    return QString::number(runtime::CInt(QVariant::fromValue(money)));
}

} // namespace

clsSQL::clsSQL(QObject *parent)
    : QObject(parent)
{
}

QString clsSQL::getOrderMasterPKSQL(qint32 lngCustPK, const QVariant &dtDate) const
{
    return fill(u"SELECT OrdM_PK FROM tPSOrderMaster WHERE Cust_PK = [CUSTPK] AND OrdM_Date = '[ORDMDATE]'",
                {{u"[CUSTPK]", number(lngCustPK)}, {u"[ORDMDATE]", date(dtDate)}});
}

QString clsSQL::getOrderMasterSQL(qint32 lngCustPK) const
{
    return fill(u"SELECT * FROM tPSOrderMaster WHERE Cust_PK = [CUSTPK] ORDER BY OrdM_Date DESC",
                {{u"[CUSTPK]", number(lngCustPK)}});
}

QString clsSQL::getOrderDetailSQL(qint32 lngOrdMPK) const
{
    return fill(u"SELECT * FROM tPSOrderDetail WHERE OrdM_PK = [ORDMPK] AND OrdM_PK > 0 ORDER BY OrdD_PK DESC ",
                {{u"[ORDMPK]", number(lngOrdMPK)}});
}

QString clsSQL::insDB2OrderMasterSQL(qint32 lngCustPK, const QDate &dtDate, qint16 intGubun, const QString &strAddress,
                                     const QString &strTel, const QString &strCell, const QString &strTakBaeMemo,
                                     Currency curTaxTotal, Currency curTaxFreeTotal, Currency curHalinTotal,
                                     Currency curTotal, Currency curMisuGum, const QString &strETCMemo) const
{
    return fill(u"INSERT INTO tPSOrderMaster(Cust_PK, OrdM_Date, OrdM_Gubun, OrdM_Address, OrdM_Tel, "
                u"OrdM_Cel, OrdM_TakbaeMemo, OrdM_TaxTotal, OrdM_TaxFreeTotal, OrdM_HalinTotal, "
                u"OrdM_Total, OrdM_Misugum, OrdM_ETCMemo) VALUES(<Cust_PK>, '<OrdM_Date>', "
                u"<OrdM_Gubun>, '<OrdM_Address>', '<OrdM_Tel>', '<OrdM_Cel>', '<OrdM_TakbaeMemo>', "
                u"<OrdM_TaxTotal>, <OrdM_TaxFreeTotal>, <OrdM_HalinTotal>, <OrdM_Total>, "
                u"<OrdM_Misugum>, '<OrdM_ETCMemo>')",
                {{u"<Cust_PK>", number(lngCustPK)},
                 {u"<OrdM_Date>", date(dtDate)},
                 {u"<OrdM_Gubun>", number(intGubun)},
                 {u"<OrdM_Address>", strAddress},
                 {u"<OrdM_Tel>", strTel},
                 {u"<OrdM_Cel>", strCell},
                 {u"<OrdM_TakbaeMemo>", strTakBaeMemo},
                 {u"<OrdM_TaxTotal>", narrowed(curTaxTotal)},
                 {u"<OrdM_TaxFreeTotal>", narrowed(curTaxFreeTotal)},
                 {u"<OrdM_HalinTotal>", narrowed(curHalinTotal)},
                 {u"<OrdM_Total>", narrowed(curTotal)},
                 {u"<OrdM_Misugum>", narrowed(curMisuGum)},
                 {u"<OrdM_ETCMemo>", strETCMemo}});
}

QString clsSQL::insDB2OrderDetailSQL(qint32 lngOrdMPK, qint32 lngPMPK, Currency curUnitPrice, Currency curHalinUnit,
                                     qint16 intOrderCount, qint16 intSellType) const
{
    return fill(u"INSERT INTO tPSOrderDetail(OrdM_PK, PM_PK, OrdD_UnitPrice, OrdD_HalinUnit, "
                u"OrdD_Count, OrdD_OrderType) VALUES(<OrdM_PK>, <PM_PK>, <OrdD_UnitPrice>, "
                u"<OrdD_HalinUnit>, <OrdD_Count>, <OrdD_OrderType>)",
                {{u"<OrdM_PK>", number(lngOrdMPK)},
                 {u"<PM_PK>", number(lngPMPK)},
                 {u"<OrdD_UnitPrice>", amount(curUnitPrice)},
                 {u"<OrdD_HalinUnit>", amount(curHalinUnit)},
                 {u"<OrdD_Count>", number(intOrderCount)},
                 {u"<OrdD_OrderType>", number(intSellType)}});
}

QString clsSQL::insDB2RfndOrderDetailSQL(qint32 lngOrdMPK, qint32 lngPMPK, Currency curRfndUnitSalePricee,
                                         qint16 intOrderCount, const QString &strRfndMemo) const
{
    // The place <OrdD_FrndMemo> is misspelled in the text and below alike, so it is filled all the same.
    return fill(u"INSERT INTO tPSOrderDetail(OrdM_PK, PM_PK, OrdD_UnitPrice, OrdD_HalinUnit, "
                u"OrdD_Count, OrdD_RfndMemo) VALUES(<OrdM_PK>, <PM_PK>, <OrdD_UnitPrice>, "
                u"<OrdD_HalinUnit>, <OrdD_Count>, '<OrdD_FrndMemo>')",
                {{u"<OrdM_PK>", number(lngOrdMPK)},
                 {u"<PM_PK>", number(lngPMPK)},
                 {u"<OrdD_UnitPrice>", amount(curRfndUnitSalePricee)},
                 {u"<OrdD_HalinUnit>", QStringLiteral("0")},
                 {u"<OrdD_Count>", number(intOrderCount)},
                 {u"<OrdD_FrndMemo>", strRfndMemo}});
}

QString clsSQL::getCountOrderMasterSQL(qint32 lngCustPK, const QDate &dtTdyDate) const
{
    return fill(u"SELECT Count(OrdM_PK) AS ORDERMASTERCOUNT FROM tPSOrderMaster WHERE Cust_PK = [CUSTPK] "
                u"AND OrdM_Date = '[TDYDATE]'",
                {{u"[CUSTPK]", number(lngCustPK)}, {u"[TDYDATE]", date(dtTdyDate)}});
}

QString clsSQL::updateOrderMasterFullSQL(qint32, qint16 intGubun, const QString &strAddress, const QString &strTel,
                                         const QString &strCell, const QString &strTakBaeMemo, Currency curTaxTotal,
                                         Currency curTaxFreeTotal, Currency curHalinTotal, Currency curTotal,
                                         Currency curMisuGum, const QString &strETCMemo) const
{
    return fill(u"UPDATE tPSOrderMaster SET OrdM_Gubun=<GUBUN>, OrdM_Address='<ADDRESS>', "
                u"OrdM_Tel='<TEL>', OrdM_Cel='<CEL>', OrdM_TakbaeMemo='<TAKBAEMEMO>', "
                u"OrdM_TaxTotal=<TAXTOTAL>, OrdM_TaxFreeTotal=<TAXFREETOTAL>, "
                u"OrdM_HalinTotal=<HALINTOTAL>, OrdM_Total=<TOTAL>, OrdM_Misugum=<MISUGUM>, OrdM_ETCMemo='<ETCMEMO>' "
                u"WHERE OrdM_PK = lngOrdMPK ",
                {{u"<GUBUN>", number(intGubun)},
                 {u"<ADDRESS>", strAddress},
                 {u"<TEL>", strTel},
                 {u"<CEL>", strCell},
                 {u"<TAKBAEMEMO>", strTakBaeMemo},
                 {u"<TAXTOTAL>", amount(curTaxTotal)},
                 {u"<TAXFREETOTAL>", amount(curTaxFreeTotal)},
                 {u"<HALINTOTAL>", amount(curHalinTotal)},
                 {u"<TOTAL>", amount(curTotal)},
                 {u"<MISUGUM>", amount(curMisuGum)},
                 {u"<ETCMEMO>", strETCMemo}});
}

QString clsSQL::updateOrderMasterTotalSQL(qint32 lngOrdMPK, Currency curTaxTotal, Currency curTaxFreeTotal,
                                          Currency curHalinTotal, Currency curTotal, Currency) const
{
    return fill(u"UPDATE tPSOrderMaster SET OrdM_TaxTotal=<TAXTOTAL>, "
                u"OrdM_TaxFreeTotal=<TAXFREETOTAL>, OrdM_HalinTotal=<HALINTOTAL>, OrdM_Total=<TOTAL> "
                u"WHERE OrdM_PK = [ORDMPK]",
                {{u"[ORDMPK]", number(lngOrdMPK)},
                 {u"<TAXTOTAL>", amount(curTaxTotal)},
                 {u"<TAXFREETOTAL>", amount(curTaxFreeTotal)},
                 {u"<HALINTOTAL>", amount(curHalinTotal)},
                 {u"<TOTAL>", amount(curTotal)}});
}

QString clsSQL::getSumTaxOrTaxFreeTotalSQL(qint32 lngOrdMPK, bool bIsTaxed) const
{
    return fill(u"SELECT   SUM(TAXORFREETOT) AS TAXORFREETOTAL "
                u"FROM      "
                u"(SELECT   (tPSOrderDetail.OrdD_UnitPrice - tPSOrderDetail.OrdD_HalinUnit) * "
                u"tPSOrderDetail.OrdD_Count AS TAXORFREETOT FROM      tPSProductMaster "
                u"INNER JOIN tPSOrderDetail ON tPSProductMaster.PM_PK = tPSOrderDetail.PM_PK "
                u"WHERE (tPSOrderDetail.OrdM_PK = [ORDMPK] AND tPSProductMaster.PM_IsTaxed = [TAXED])) TTT1",
                {{u"[ORDMPK]", number(lngOrdMPK)}, {u"[TAXED]", bIsTaxed ? QStringLiteral("1") : QStringLiteral("0")}});
}

QString clsSQL::getHalinTotalSQL(qint32 lngOrdMPK) const
{
    return fill(u"SELECT OrdM_HalinTotal AS HALINTOTAL FROM tPSOrderMaster WHERE OrdM_PK = [ORDMPK]",
                {{u"[ORDMPK]", number(lngOrdMPK)}});
}

QString clsSQL::getSumHalinTotalSQL(qint32 lngOrdMPK) const
{
    return fill(u"SELECT SUM(OrdD_HalinUnit * OrdD_Count) AS HALINTOTAL FROM tPSOrderDetail WHERE OrdM_PK = [ORDMPK]",
                {{u"[ORDMPK]", number(lngOrdMPK)}});
}

QString clsSQL::getOrderMasterMisuEtcPartSQL(qint32 lngOrdMPK) const
{
    return fill(u"SELECT OrdM_HalinTotal AS HALINTOTAL, OrdM_Total as TOTAL, OrdM_Misugum AS MISUGUM "
                u"FROM tPSOrderMaster WHERE OrdM_PK = [ORDMPK]",
                {{u"[ORDMPK]", number(lngOrdMPK)}});
}

QString clsSQL::delCustSaleDetailSQL(qint32 lngOrdDPK) const
{
    return fill(u"DELETE FROM tPSOrderDetail WHERE OrdD_PK = [ORDDPK]", {{u"[ORDDPK]", number(lngOrdDPK)}});
}

QString clsSQL::delCustSaleDetailByOrdMPKSQL(qint32 lngOrdMPK) const
{
    return fill(u"DELETE FROM tPSOrderDetail WHERE OrdM_PK = [ORDMMPK]", {{u"[ORDMMPK]", number(lngOrdMPK)}});
}

QString clsSQL::delCustSaleMasterSQL(qint32 lngOrdMPK, qint32 lngCustPK, const QDate &dtDate) const
{
    return fill(
        u"DELETE FROM tPSOrderMaster WHERE OrdM_PK = [ORDMPK] AND Cust_PK = [CUSTPK] "
        u"AND OrdM_Date = '[DTDATE]'",
        {{u"[ORDMPK]", number(lngOrdMPK)}, {u"[CUSTPK]", number(lngCustPK)}, {u"[DTDATE]", runtime::text(dtDate)}});
}

QVariant clsSQL::updateOrderMasterMemoSQL(qint32, qint32, const QString &strMemo) const
{
    return fill(u"Update OrdM_ETCMemo FROM tPSOrderMaster SET OrdM_ETCMemo = '[ORDMMEMO]')",
                {{u"[ORDMMEMO]", strMemo}});
}

QString clsSQL::getOrderDetailWithNameSQL(qint32 lngOrdMPK) const
{
    return fill(u"SELECT   tPSProductMaster.PM_Catagory, tPSProductMaster.PM_Name, "
                u"tPSProductMaster.PM_IsTaxed, tPSProductMaster.PM_IsValid, "
                u"tPSOrderDetail.OrdD_UnitPrice, tPSOrderDetail.OrdD_HalinUnit, "
                u"tPSOrderDetail.OrdD_Count, tPSOrderDetail.OrdD_OrderType FROM      tPSOrderDetail "
                u"INNER JOIN tPSProductMaster ON tPSOrderDetail.PM_PK = tPSProductMaster.PM_PK "
                u"WHERE tPSOrderDetail.OrdM_PK = [ORDMPK] AND tPSOrderDetail.OrdM_PK > 0 "
                u"AND (tPSOrderDetail.OrdD_OrderType <> 2 OR tPSOrderDetail.OrdD_OrderType IS NULL) "
                u"ORDER BY OrdD_PK DESC ",
                {{u"[ORDMPK]", number(lngOrdMPK)}});
}

QString clsSQL::UpdatePSMisuMoney(qint32 lngOrdMPK, qint32 lngMoney) const
{
    return fill(u"UPDATE tPSOrderMaster SET OrdM_Misugum=OrdM_Misugum-([MISUSUNAP]) WHERE OrdM_PK=[ORDMPK]",
                {{u"[MISUSUNAP]", number(lngMoney)}, {u"[ORDMPK]", number(lngOrdMPK)}});
}
