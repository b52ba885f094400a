CREATE TABLE tPSProductMaster (
    PM_PK INTEGER PRIMARY KEY AUTOINCREMENT,
    PM_Catagory TEXT,
    PM_Name TEXT,
    PM_UnitPrice INTEGER,
    PM_IsTaxed INTEGER CHECK (PM_IsTaxed IN (0, 1)),
    PM_IsValid INTEGER CHECK (PM_IsValid IN (0, 1)),
    PM_IsHide INTEGER CHECK (PM_IsHide IN (0, 1)),
    PM_EtcMemo TEXT,
    PM_AddedDate TEXT CHECK (date(PM_AddedDate, '+0 days') IS PM_AddedDate)
) STRICT;
--
CREATE TABLE tPSCompanyMaster (
    CM_PK INTEGER PRIMARY KEY AUTOINCREMENT,
    CM_Name TEXT,
    CM_RegNum TEXT,
    CM_Tel TEXT,
    CM_Address TEXT,
    CM_EtcMemo TEXT,
    CM_IsValid INTEGER CHECK (CM_IsValid IN (0, 1))
) STRICT;
--
CREATE TABLE tPSIncoming (
    IN_PK INTEGER PRIMARY KEY AUTOINCREMENT,
    PM_PK INTEGER CHECK (PM_PK BETWEEN -2147483648 AND 2147483647),
    CM_PK INTEGER CHECK (CM_PK BETWEEN -2147483648 AND 2147483647),
    IN_Date TEXT CHECK (date(IN_Date, '+0 days') IS IN_Date),
    IN_Count REAL,
    IN_UnitPrice INTEGER,
    IN_HalinTotal INTEGER,
    IN_Total INTEGER,
    IN_EtcMemo TEXT
) STRICT;
--
CREATE TABLE tPSOrderMaster (
    OrdM_PK INTEGER PRIMARY KEY AUTOINCREMENT,
    Cust_PK INTEGER NOT NULL CHECK (Cust_PK BETWEEN -2147483648 AND 2147483647),
    OrdM_Date TEXT NOT NULL CHECK (date(OrdM_Date, '+0 days') IS OrdM_Date),
    OrdM_Gubun INTEGER CHECK (OrdM_Gubun BETWEEN -32768 AND 32767),
    OrdM_Address TEXT,
    OrdM_Tel TEXT,
    OrdM_Cel TEXT,
    OrdM_TakbaeMemo TEXT,
    OrdM_TaxTotal INTEGER,
    OrdM_TaxFreeTotal INTEGER,
    OrdM_HalinTotal INTEGER,
    OrdM_Total INTEGER,
    OrdM_Misugum INTEGER,
    OrdM_ETCMemo TEXT
) STRICT;
--
CREATE TABLE tPSOrderDetail (
    OrdD_PK INTEGER PRIMARY KEY AUTOINCREMENT,
    OrdM_PK INTEGER NOT NULL CHECK (OrdM_PK BETWEEN -2147483648 AND 2147483647),
    PM_PK INTEGER NOT NULL CHECK (PM_PK BETWEEN -2147483648 AND 2147483647),
    OrdD_UnitPrice INTEGER,
    OrdD_HalinUnit INTEGER,
    OrdD_Count INTEGER CHECK (OrdD_Count BETWEEN -32768 AND 32767),
    OrdD_OrderType INTEGER CHECK (OrdD_OrderType BETWEEN -32768 AND 32767),
    OrdD_RfndMemo TEXT
) STRICT;
--
CREATE TABLE tPSTransaction (
    tpstrans_PK INTEGER PRIMARY KEY AUTOINCREMENT,
    tpstrans_Customer_PK INTEGER CHECK (tpstrans_Customer_PK BETWEEN -2147483648 AND 2147483647),
    tpstrans_OrderM_PK INTEGER CHECK (tpstrans_OrderM_PK BETWEEN -2147483648 AND 2147483647),
    tpstrans_Date TEXT CHECK (date(tpstrans_Date, '+0 days') IS tpstrans_Date),
    tpstrans_Operator INTEGER CHECK (tpstrans_Operator BETWEEN -32768 AND 32767),
    tpstrans_Money INTEGER CHECK (tpstrans_Money BETWEEN -2147483648 AND 2147483647),
    tpstrans_Method TEXT CHECK (length(tpstrans_Method) <= 2),
    tpstrans_Memo TEXT,
    trans_temp TEXT,
    trans_NotSubmit INTEGER CHECK (trans_NotSubmit IN (0, 1))
) STRICT;
--
CREATE TABLE tPSProperties (
    tpsps_PK INTEGER PRIMARY KEY AUTOINCREMENT,
    tpsps_Key TEXT NOT NULL,
    tpsps_Value TEXT
) STRICT;
--
CREATE TABLE Customer (
    Customer_PK INTEGER PRIMARY KEY AUTOINCREMENT,
    name TEXT NOT NULL,
    sn TEXT,
    ssn1 TEXT,
    ssn2 TEXT,
    Insu_Type TEXT,
    Insu_Symbol TEXT,
    Insu_No TEXT,
    sex INTEGER CHECK (sex IN (0, 1)),
    birth TEXT CHECK (date(birth, '+0 days') IS birth),
    zipcode TEXT,
    address TEXT,
    phone TEXT,
    cell TEXT,
    vip TEXT
) STRICT;
--
CREATE TABLE Receipt (
    Receipt_PK INTEGER PRIMARY KEY AUTOINCREMENT,
    Customer_PK INTEGER NOT NULL CHECK (Customer_PK BETWEEN -2147483648 AND 2147483647),
    TxDate TEXT CHECK (date(TxDate, '+0 days') IS TxDate),
    Bonin_Money INTEGER,
    Cheonggu_Money INTEGER,
    General_Money INTEGER
) STRICT;
--
CREATE TABLE t_HospSetup (
    HS_KEY TEXT NOT NULL PRIMARY KEY,
    HS_Value TEXT
) STRICT;
--
CREATE TABLE IF NOT EXISTS t_DeskSchema (
    DS_Key integer PRIMARY KEY CHECK (DS_Key = 1),
    DS_Version integer NOT NULL,
    DS_Generation integer NOT NULL
);
--
INSERT INTO t_DeskSchema VALUES (1, 1, 0) ON CONFLICT (DS_Key) DO UPDATE SET DS_Version = excluded.DS_Version;
--
CREATE INDEX ixOrderMasterCustomer ON tPSOrderMaster (Cust_PK, OrdM_Date);
--
CREATE INDEX ixOrderMasterDate ON tPSOrderMaster (OrdM_Date, OrdM_PK);
--
CREATE INDEX ixOrderMasterOutstanding ON tPSOrderMaster (Cust_PK, OrdM_Date) WHERE OrdM_Misugum <> 0;
--
CREATE INDEX ixOrderDetailOrder ON tPSOrderDetail (OrdM_PK);
--
CREATE INDEX ixOrderDetailProduct ON tPSOrderDetail (PM_PK, OrdD_OrderType, OrdD_Count);
--
CREATE INDEX ixTransactionOrder ON tPSTransaction (tpstrans_OrderM_PK);
--
CREATE INDEX ixTransactionCustomer ON tPSTransaction (tpstrans_Customer_PK, tpstrans_Date);
--
CREATE INDEX ixTransactionDate ON tPSTransaction (tpstrans_Date);
--
CREATE INDEX ixIncomingProduct ON tPSIncoming (PM_PK, IN_Date, IN_UnitPrice, IN_Count);
--
CREATE INDEX ixReceiptCustomer ON Receipt (Customer_PK);
--
