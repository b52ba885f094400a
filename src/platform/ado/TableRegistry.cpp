#include "platform/ado/TableRegistry.h"

#include <QHash>

#include <algorithm>

namespace ado {

namespace {

using enum ColumnType;

constexpr Column productColumns[]{
    {u"PM_PK", Key},          {u"PM_Catagory", Text}, {u"PM_Name", Text},
    {u"PM_UnitPrice", Money}, {u"PM_IsTaxed", Flag},  {u"PM_IsValid", Flag},
    {u"PM_IsHide", Flag},     {u"PM_EtcMemo", Text},  {u"PM_AddedDate", Date},
};
constexpr Column dealerColumns[]{
    {u"CM_PK", Key},       {u"CM_Name", Text},    {u"CM_RegNum", Text},  {u"CM_Tel", Text},
    {u"CM_Address", Text}, {u"CM_EtcMemo", Text}, {u"CM_IsValid", Flag},
};
constexpr Column incomingColumns[]{
    {u"IN_PK", Key},           {u"PM_PK", Long},      {u"CM_PK", Long},
    {u"IN_Date", Date},        {u"IN_Count", Number}, {u"IN_UnitPrice", Money},
    {u"IN_HalinTotal", Money}, {u"IN_Total", Money},  {u"IN_EtcMemo", Text},
};
constexpr Column orderColumns[]{
    {u"OrdM_PK", Key},           {u"Cust_PK", Long},
    {u"OrdM_Date", Date},        {u"OrdM_Gubun", Integer},
    {u"OrdM_Address", Text},     {u"OrdM_Tel", Text},
    {u"OrdM_Cel", Text},         {u"OrdM_TakbaeMemo", Text},
    {u"OrdM_TaxTotal", Money},   {u"OrdM_TaxFreeTotal", Money},
    {u"OrdM_HalinTotal", Money}, {u"OrdM_Total", Money},
    {u"OrdM_Misugum", Money},    {u"OrdM_ETCMemo", Text},
};
constexpr Column detailColumns[]{
    {u"OrdD_PK", Key},
    {u"OrdM_PK", Long},
    {u"PM_PK", Long},
    {u"OrdD_UnitPrice", Money},
    {u"OrdD_HalinUnit", Money},
    {u"OrdD_Count", Integer},
    {u"OrdD_OrderType", Integer},
    {u"OrdD_RfndMemo", Text},
};
constexpr Column ledgerColumns[]{
    {u"tpstrans_PK", Key},      {u"tpstrans_Customer_PK", Long}, {u"tpstrans_OrderM_PK", Long},
    {u"tpstrans_Date", Date},   {u"tpstrans_Operator", Integer}, {u"tpstrans_Money", Long},
    {u"tpstrans_Method", Text}, {u"tpstrans_Memo", Text},        {u"trans_temp", Text},
    {u"trans_NotSubmit", Flag},
};
constexpr Column propertyColumns[]{
    {u"tpsps_PK", Key},
    {u"tpsps_Key", Text},
    {u"tpsps_Value", Text},
};
constexpr Column customerColumns[]{
    {u"Customer_PK", Key}, {u"name", Text},        {u"sn", Text},      {u"ssn1", Text}, {u"ssn2", Text},
    {u"Insu_Type", Text},  {u"Insu_Symbol", Text}, {u"Insu_No", Text}, {u"sex", Flag},  {u"birth", Date},
    {u"zipcode", Text},    {u"address", Text},     {u"phone", Text},   {u"cell", Text}, {u"vip", Text},
};
constexpr Column receiptColumns[]{
    {u"Receipt_PK", Key},    {u"Customer_PK", Long},     {u"TxDate", Date},
    {u"Bonin_Money", Money}, {u"Cheonggu_Money", Money}, {u"General_Money", Money},
};
constexpr Column settingColumns[]{
    {u"HS_KEY", Text},
    {u"HS_Value", Text},
};

constexpr Table registry[]{
    {u"tPSProductMaster", u"PM_PK", productColumns},  {u"tPSCompanyMaster", u"CM_PK", dealerColumns},
    {u"tPSIncoming", u"IN_PK", incomingColumns},      {u"tPSOrderMaster", u"OrdM_PK", orderColumns},
    {u"tPSOrderDetail", u"OrdD_PK", detailColumns},   {u"tPSTransaction", u"tpstrans_PK", ledgerColumns},
    {u"tPSProperties", u"tpsps_PK", propertyColumns}, {u"Customer", u"Customer_PK", customerColumns},
    {u"Receipt", u"Receipt_PK", receiptColumns},      {u"t_HospSetup", u"HS_KEY", settingColumns},
};

bool same(QStringView a, const char16_t *b)
{
    return a.compare(QStringView(b), Qt::CaseInsensitive) == 0;
}

} // namespace

const Column *Table::column(QStringView wanted) const
{
    const auto found = std::ranges::find_if(columns, [&](const Column &column) { return same(wanted, column.name); });
    return found == columns.end() ? nullptr : &*found;
}

std::span<const Table> tables()
{
    return registry;
}

const Table *findTable(QStringView name)
{
    const auto found = std::ranges::find_if(registry, [&](const Table &table) { return same(name, table.name); });
    return found == std::end(registry) ? nullptr : found;
}

const Column *findColumn(QStringView name)
{
    // Every column of every answer is looked up here.
    static const QHash<QString, const Column *> columns = [] {
        QHash<QString, const Column *> found;
        for (const Table &table : registry) {
            for (const Column &column : table.columns) {
                const Column *&first = found[QString::fromUtf16(column.name).toLower()];
                first = first ? first : &column;
            }
        }
        return found;
    }();
    return columns.value(name.toString().toLower());
}

} // namespace ado
