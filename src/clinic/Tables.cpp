#include "clinic/Tables.h"

namespace clinic {

std::span<const Table> tables()
{
    using enum ado::ColumnType;
    constexpr bool Own = true;
    static const std::vector<Table> all{
        {"tPSProductMaster",
         {{"PM_PK", Key},
          {"PM_Catagory", Text},
          {"PM_Name", Text},
          {"PM_UnitPrice", Money},
          {"PM_IsTaxed", Flag},
          {"PM_IsValid", Flag},
          {"PM_IsHide", Flag},
          {"PM_EtcMemo", Text},
          {"PM_AddedDate", Date}}},
        {"tPSCompanyMaster",
         {{"CM_PK", Key},
          {"CM_Name", Text},
          {"CM_RegNum", Text},
          {"CM_Tel", Text},
          {"CM_Address", Text},
          {"CM_EtcMemo", Text},
          {"CM_IsValid", Flag}}},
        {"tPSIncoming",
         {{"IN_PK", Key, false, 0, Own},
          {"PM_PK", Long},
          {"CM_PK", Long},
          {"IN_Date", Date},
          {"IN_Count", Number},
          {"IN_UnitPrice", Money},
          {"IN_HalinTotal", Money},
          {"IN_Total", Money},
          {"IN_EtcMemo", Text}}},
        {"tPSOrderMaster",
         {{"OrdM_PK", Key},
          {"Cust_PK", Long, true},
          {"OrdM_Date", Date, true},
          {"OrdM_Gubun", Integer},
          {"OrdM_Address", Text},
          {"OrdM_Tel", Text},
          {"OrdM_Cel", Text},
          {"OrdM_TakbaeMemo", Text},
          {"OrdM_TaxTotal", Money},
          {"OrdM_TaxFreeTotal", Money},
          {"OrdM_HalinTotal", Money},
          {"OrdM_Total", Money},
          {"OrdM_Misugum", Money},
          {"OrdM_ETCMemo", Text}}},
        {"tPSOrderDetail",
         {{"OrdD_PK", Key},
          {"OrdM_PK", Long, true},
          {"PM_PK", Long, true},
          {"OrdD_UnitPrice", Money},
          {"OrdD_HalinUnit", Money},
          {"OrdD_Count", Integer},
          {"OrdD_OrderType", Integer},
          {"OrdD_RfndMemo", Text}}},
        {"tPSTransaction",
         {{"tpstrans_PK", Key},
          {"tpstrans_Customer_PK", Long},
          {"tpstrans_OrderM_PK", Long},
          {"tpstrans_Date", Date},
          {"tpstrans_Operator", Integer},
          {"tpstrans_Money", Long},
          {"tpstrans_Method", Text, false, 2},
          {"tpstrans_Memo", Text},
          {"trans_temp", Text},
          {"trans_NotSubmit", Flag}}},
        // A key cut to 20 characters on insert may stand twice, so the name is not unique.
        {"tPSProperties", {{"tpsps_PK", Key, false, 0, Own}, {"tpsps_Key", Text, true}, {"tpsps_Value", Text}}},
        {"Customer",
         {{"Customer_PK", Key},
          {"name", Text, true},
          {"sn", Text},
          {"ssn1", Text},
          {"ssn2", Text},
          {"Insu_Type", Text},
          {"Insu_Symbol", Text},
          {"Insu_No", Text},
          {"sex", Flag, false, 0, Own},
          {"birth", Date, false, 0, Own},
          {"zipcode", Text, false, 0, Own},
          {"address", Text, false, 0, Own},
          {"phone", Text, false, 0, Own},
          {"cell", Text, false, 0, Own},
          {"vip", Text, false, 0, Own}}},
        {"Receipt",
         {{"Receipt_PK", Key},
          {"Customer_PK", Long, true},
          {"TxDate", Date},
          {"Bonin_Money", Money},
          {"Cheonggu_Money", Money},
          {"General_Money", Money}}},
        {"t_HospSetup", {{"HS_KEY", Text, true}, {"HS_Value", Text}}},
    };
    return all;
}

void registerTables()
{
    std::vector<ado::Table> known;
    for (const Table &table : tables()) {
        ado::Table described{
            QString::fromLatin1(table.name), QString::fromLatin1(table.key().name), {}, !table.key().own};
        for (const Column &column : table.columns)
            described.columns.push_back({QString::fromLatin1(column.name), column.holds});
        known.push_back(std::move(described));
    }
    ado::registerTables(known);
}

} // namespace clinic
