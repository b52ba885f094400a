#include "data/clsSQL.h"

#include "data/StatementText.h"

using statement::fill;
using statement::number;

QString clsSQL::getProductMasterSQL(bool bShowAll) const
{
    if (bShowAll)
        return QStringLiteral("SELECT * FROM tPSProductMaster ORDER BY PM_Catagory, PM_Name, PM_AddedDate ");
    return QStringLiteral("SELECT * FROM tPSProductMaster WHERE PM_IsHide = 0 OR PM_IsHide IS NULL "
                          "ORDER BY PM_Catagory, PM_Name, PM_AddedDate ");
}

QString clsSQL::getProductTextsSQL()
{
    return QStringLiteral("SELECT PM_PK, PM_Name, PM_Catagory, PM_EtcMemo FROM tPSProductMaster");
}

QString clsSQL::getDealerTextsSQL()
{
    return QStringLiteral("SELECT CM_PK, CM_Name, CM_RegNum, CM_Tel, CM_Address, CM_EtcMemo FROM tPSCompanyMaster");
}

QString clsSQL::getDealerSQL(const QString &strDealerName) const
{
    if (strDealerName.isEmpty())
        return QStringLiteral("SELECT * FROM tPSCompanyMaster ORDER BY CM_Name");
    // Quirk (docs/architecture.md): the text has no such place, so the name never enters it.
    return fill(u"SELECT * FROM tPSCompanyMaster WHERE CM_Name LIKE '%[CPNAME]%' ORDER BY CM_Name",
                {{u"[CMNAME]", strDealerName}});
}

QString clsSQL::getCmpnyMstrSQL() const
{
    return QStringLiteral("SELECT * FROM tPSCompanyMaster ORDER BY CM_Name");
}

QString clsSQL::getCmpnyNameSQL(qint32 lngCMPK) const
{
    return fill(u"SELECT CM_Name FROM tPSCompanyMaster WHERE CM_PK = [CMPK]", {{u"[CMPK]", number(lngCMPK)}});
}

QString clsSQL::getProdIncomingSQL(qint32 lngPMPK) const
{
    return fill(u"SELECT * FROM tPSIncoming WHERE PM_PK = [PMPK] ORDER BY IN_Date DESC",
                {{u"[PMPK]", number(lngPMPK)}});
}

QString clsSQL::getNumOfSameProdName(const QString &strPMName) const
{
    return fill(u"SELECT COUNT(PM_Name) AS NAMECOUNT FROM tPSProductMaster WHERE PM_Name = '[PMNAME]'",
                {{u"[PMNAME]", strPMName}});
}

QString clsSQL::getNumOfUsedProdSQL(qint32 lngPMPK) const
{
    return fill(u"SELECT   COUNT(tPSOrderDetail.PM_PK) AS NUMOFPRO FROM      tPSOrderDetail "
                u"INNER JOIN tPSProductMaster ON tPSOrderDetail.PM_PK = tPSProductMaster.PM_PK "
                u"WHERE tPSProductMaster.PM_IsValid = 1 AND tPSProductMaster.PM_PK = [PMPK] ",
                {{u"[PMPK]", number(lngPMPK)}});
}

QString clsSQL::getNumOfUsedCmpnySQL(qint32 lngCMPK) const
{
    return fill(u"SELECT Count(CM_PK) AS CMPNYCOUNT FROM tPSIncoming WHERE CM_PK = [CMPK] ",
                {{u"[CMPK]", number(lngCMPK)}});
}

QString clsSQL::delAProductSQL(qint32 lngPMPK) const
{
    return fill(u"DELETE FROM tPSProductMaster WHERE PM_PK = [PMPK]", {{u"[PMPK]", number(lngPMPK)}});
}

QString clsSQL::getStockIncomingTotCountSQL(qint32 lngPMPK) const
{
    return fill(u"SELECT   SUM(IN_Count) AS 입고량 FROM tPSIncoming WHERE (PM_PK = [PMPK])",
                {{u"[PMPK]", number(lngPMPK)}});
}

QString clsSQL::getStockSaleTotCountSQL(qint32 lngPMPK) const
{
    return fill(u"SELECT     SUM(망실) AS 망실토탈, SUM(서비스) AS 서비스토탈, SUM(일반판매) AS 일반판매토탈 "
                u"FROM "
                u"(SELECT     "
                u"CASE WHEN OrdD_OrderType IS NULL OR OrdD_OrderType = 0 THEN SUM(OrdD_Count) END AS 일반판매, "
                u"CASE WHEN OrdD_OrderType = 1 THEN SUM(OrdD_Count) END AS 서비스, "
                u"CASE WHEN OrdD_OrderType = 2 THEN SUM(OrdD_Count) END AS 망실 FROM tPSOrderDetail "
                u"WHERE (PM_PK = [PMPK]) "
                u"GROUP BY OrdD_OrderType) AS TTT ",
                {{u"[PMPK]", number(lngPMPK)}});
}

QString clsSQL::getPropValues() const
{
    return QStringLiteral("SELECT * FROM tPSProperties");
}
