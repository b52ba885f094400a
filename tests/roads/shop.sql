-- A shop as another program's installer made it: what the sale asks for and little else, one table and one column short, with a
-- table of that program's own that refers to the patients and some money in a type that works with less. KEY is a counted key of the engine.
CREATE TABLE Customer (Customer_PK KEY, name VARCHAR(30) NOT NULL, sn VARCHAR(12), ssn1 VARCHAR(6), ssn2 VARCHAR(7),
    Insu_Type VARCHAR(20), Insu_Symbol VARCHAR(20), Insu_No VARCHAR(20), allergy TEXT);
CREATE TABLE visits (visit KEY, Customer_PK INTEGER NOT NULL REFERENCES Customer (Customer_PK), seen DATE NOT NULL);
CREATE TABLE Receipt (Receipt_PK KEY, Customer_PK INTEGER NOT NULL, TxDate DATE, Bonin_Money NUMERIC(12), Cheonggu_Money NUMERIC(12),
    General_Money DOUBLE PRECISION);
CREATE TABLE t_HospSetup (HS_KEY VARCHAR(50) NOT NULL PRIMARY KEY, HS_Value TEXT);
CREATE TABLE tPSProductMaster (PM_PK KEY, PM_Catagory VARCHAR(30), PM_Name VARCHAR(60), PM_UnitPrice NUMERIC(12),
    PM_IsTaxed SMALLINT, PM_IsValid SMALLINT, PM_IsHide SMALLINT, PM_EtcMemo TEXT, PM_AddedDate DATE);
CREATE TABLE tPSCompanyMaster (CM_PK KEY, CM_Name VARCHAR(60), CM_RegNum VARCHAR(20), CM_Tel VARCHAR(20), CM_Address TEXT,
    CM_EtcMemo TEXT, CM_IsValid SMALLINT);
CREATE TABLE tPSIncoming (PM_PK INTEGER, CM_PK INTEGER, IN_Date DATE, IN_Count DOUBLE PRECISION, IN_UnitPrice NUMERIC(12),
    IN_HalinTotal NUMERIC(12), IN_Total NUMERIC(12), IN_EtcMemo TEXT);
CREATE TABLE tPSOrderMaster (OrdM_PK KEY, Cust_PK INTEGER NOT NULL, OrdM_Date DATE NOT NULL, OrdM_Gubun SMALLINT, OrdM_Address TEXT,
    OrdM_Tel TEXT, OrdM_Cel TEXT, OrdM_TakbaeMemo TEXT, OrdM_TaxTotal NUMERIC(12), OrdM_TaxFreeTotal NUMERIC(12),
    OrdM_HalinTotal DOUBLE PRECISION, OrdM_Total NUMERIC(12), OrdM_Misugum NUMERIC(12), OrdM_ETCMemo TEXT);
CREATE TABLE tPSOrderDetail (OrdD_PK KEY, OrdM_PK INTEGER NOT NULL, PM_PK INTEGER NOT NULL, OrdD_UnitPrice NUMERIC(12),
    OrdD_HalinUnit NUMERIC(12), OrdD_Count SMALLINT, OrdD_OrderType SMALLINT);
CREATE TABLE tPSTransaction (tpstrans_PK KEY, tpstrans_Customer_PK INTEGER, tpstrans_OrderM_PK INTEGER, tpstrans_Date DATE,
    tpstrans_Operator SMALLINT, tpstrans_Money INTEGER, tpstrans_Method VARCHAR(2), tpstrans_Memo TEXT, trans_temp TEXT,
    trans_NotSubmit SMALLINT);

WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 30)
INSERT INTO Customer (name, sn, allergy) SELECT '환자 ' || i, '0000' || (10 + i), '없음' FROM n;
INSERT INTO visits (Customer_PK, seen) SELECT Customer_PK, '2026-10-01' FROM Customer;
WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 12)
INSERT INTO tPSProductMaster (PM_Catagory, PM_Name, PM_UnitPrice, PM_IsTaxed, PM_IsValid, PM_IsHide, PM_AddedDate)
    SELECT '탕약', '물품 ' || i, i * 1000, i % 2, 1, 0, '2026-01-01' FROM n;
INSERT INTO tPSCompanyMaster (CM_Name, CM_IsValid) VALUES ('한약상', 1);
INSERT INTO tPSIncoming (PM_PK, CM_PK, IN_Date, IN_Count, IN_UnitPrice, IN_HalinTotal, IN_Total)
    SELECT PM_PK, 1, '2026-02-01', 100, 500, 0, 50000 FROM tPSProductMaster;
WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 40)
INSERT INTO tPSOrderMaster (Cust_PK, OrdM_Date, OrdM_Gubun, OrdM_HalinTotal, OrdM_Misugum)
    SELECT i % 30 + 1, '2026-11-01', 1, 0, 0 FROM n;
INSERT INTO tPSOrderDetail (OrdM_PK, PM_PK, OrdD_UnitPrice, OrdD_HalinUnit, OrdD_Count, OrdD_OrderType)
    SELECT OrdM_PK, PM_PK, PM_UnitPrice, 0, 2, 0 FROM tPSOrderMaster JOIN tPSProductMaster ON PM_PK IN (OrdM_PK % 12 + 1, OrdM_PK % 7 + 1);
UPDATE tPSOrderMaster SET
    OrdM_TaxTotal = (SELECT COALESCE(SUM(d.OrdD_UnitPrice * d.OrdD_Count), 0) FROM tPSOrderDetail d JOIN tPSProductMaster p
        ON p.PM_PK = d.PM_PK WHERE d.OrdM_PK = tPSOrderMaster.OrdM_PK AND p.PM_IsTaxed = 1),
    OrdM_Total = (SELECT SUM(d.OrdD_UnitPrice * d.OrdD_Count) FROM tPSOrderDetail d WHERE d.OrdM_PK = tPSOrderMaster.OrdM_PK);
UPDATE tPSOrderMaster SET OrdM_TaxFreeTotal = OrdM_Total - OrdM_TaxTotal;
INSERT INTO tPSTransaction (tpstrans_Customer_PK, tpstrans_OrderM_PK, tpstrans_Date, tpstrans_Operator, tpstrans_Money,
    tpstrans_Method, trans_temp, trans_NotSubmit) SELECT Cust_PK, OrdM_PK, OrdM_Date, 3, OrdM_Total, '00', '', 0 FROM tPSOrderMaster;
