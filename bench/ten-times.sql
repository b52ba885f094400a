-- Half of the rows of a clinic of ten million orders, from those of the large one, which stands in the schema "large": five
-- of its kind side by side. bench/growth runs it twice, for the years before (HALF 0) and for its own (HALF 1), AGO being how
-- dates become those of the half; so keys go up with the days, as they do where each order is written on its own day.
CREATE TEMP TABLE beside (number integer);
INSERT INTO beside VALUES (0), (1), (2), (3), (4);
INSERT INTO Customer (Customer_PK, name, sn, ssn1, ssn2, Insu_Type, Insu_Symbol, Insu_No, sex, birth, zipcode, address, phone,
                      cell, vip)
    SELECT Customer_PK + (HALF * 5 + number) * 50021, name,
           CAST(1000000 + Customer_PK + (HALF * 5 + number) * 50021 AS text), ssn1, ssn2, Insu_Type, Insu_Symbol, Insu_No,
           sex, birth, zipcode, address, phone, cell, vip
    FROM large.Customer, beside;
-- Beyond the keys of all orders, as those of the large clinic are.
INSERT INTO Receipt (Receipt_PK, Customer_PK, TxDate, Bonin_Money, Cheonggu_Money, General_Money)
    SELECT (HALF * 5 + number + 10) * 1000000 + Receipt_PK, Customer_PK + (HALF * 5 + number) * 50021, AGO(TxDate),
           Bonin_Money, Cheonggu_Money, General_Money
    FROM large.Receipt, beside;
INSERT INTO tPSIncoming (PM_PK, CM_PK, IN_Date, IN_Count, IN_UnitPrice, IN_HalinTotal, IN_Total, IN_EtcMemo)
    SELECT PM_PK, CM_PK, AGO(IN_Date), IN_Count, IN_UnitPrice, IN_HalinTotal, IN_Total, IN_EtcMemo
    FROM large.tPSIncoming, beside;
INSERT INTO tPSOrderMaster (OrdM_PK, Cust_PK, OrdM_Date, OrdM_Gubun, OrdM_Address, OrdM_Tel, OrdM_Cel, OrdM_TakbaeMemo,
                            OrdM_TaxTotal, OrdM_TaxFreeTotal, OrdM_HalinTotal, OrdM_Total, OrdM_Misugum, OrdM_ETCMemo)
    SELECT (HALF * 1000000 + OrdM_PK - 1) * 5 + number + 1, Cust_PK + (HALF * 5 + number) * 50021, AGO(OrdM_Date),
           OrdM_Gubun, OrdM_Address, OrdM_Tel, OrdM_Cel, OrdM_TakbaeMemo, OrdM_TaxTotal, OrdM_TaxFreeTotal,
           OrdM_HalinTotal, OrdM_Total, OrdM_Misugum, OrdM_ETCMemo
    FROM large.tPSOrderMaster, beside;
INSERT INTO tPSOrderDetail (OrdM_PK, PM_PK, OrdD_UnitPrice, OrdD_HalinUnit, OrdD_Count, OrdD_OrderType, OrdD_RfndMemo)
    SELECT (HALF * 1000000 + OrdM_PK - 1) * 5 + number + 1, PM_PK, OrdD_UnitPrice, OrdD_HalinUnit, OrdD_Count,
           OrdD_OrderType, OrdD_RfndMemo
    FROM large.tPSOrderDetail, beside;
INSERT INTO tPSTransaction (tpstrans_Customer_PK, tpstrans_OrderM_PK, tpstrans_Date, tpstrans_Operator, tpstrans_Money,
                            tpstrans_Method, tpstrans_Memo)
    SELECT tpstrans_Customer_PK + (HALF * 5 + number) * 50021, (HALF * 1000000 + tpstrans_OrderM_PK - 1) * 5 + number + 1,
           AGO(tpstrans_Date), tpstrans_Operator, tpstrans_Money, tpstrans_Method, tpstrans_Memo
    FROM large.tPSTransaction, beside;
DROP TABLE beside;
