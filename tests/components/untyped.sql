-- Tables that were never told the types of their columns, and cells in them that hold no amount.

CREATE TABLE tPSProductMaster (PM_PK, PM_Catagory, PM_Name, PM_IsTaxed, PM_IsValid);
CREATE TABLE tPSIncoming (PM_PK, CM_PK, IN_Date, IN_Count, IN_UnitPrice);
CREATE TABLE tPSOrderMaster (OrdM_PK, Cust_PK, OrdM_Date, OrdM_Total);
CREATE TABLE tPSOrderDetail (OrdM_PK, PM_PK, OrdD_UnitPrice, OrdD_HalinUnit, OrdD_Count, OrdD_OrderType);
CREATE TABLE tPSTransaction (tpstrans_Customer_PK, tpstrans_OrderM_PK, tpstrans_Date, tpstrans_Operator, tpstrans_Money, tpstrans_Method);
CREATE TABLE Customer (Customer_PK, name, sn);

INSERT INTO tPSProductMaster (PM_PK, PM_Name, PM_IsTaxed, PM_IsValid) VALUES
  (1, '가', 1, 1),
  (2, '나', 1, 1);

INSERT INTO tPSIncoming (PM_PK, CM_PK, IN_Date, IN_Count, IN_UnitPrice) VALUES
  (1, 1, '2026-06-05', 3, '삼백'),
  (2, 1, '2026-06-05', 3, 300);

INSERT INTO tPSOrderMaster (OrdM_PK, Cust_PK, OrdM_Date, OrdM_Total) VALUES
  (1, 1, '2026-06-10', 1000),
  (2, 1, '2026-06-11', 9e999);

INSERT INTO tPSOrderDetail (OrdM_PK, PM_PK, OrdD_UnitPrice, OrdD_Count) VALUES
  (1, 1, 1000, 1),
  (2, 2, 9e999, 1);

INSERT INTO tPSTransaction (tpstrans_Customer_PK, tpstrans_OrderM_PK, tpstrans_Date, tpstrans_Operator, tpstrans_Money, tpstrans_Method) VALUES
  (1, 1, '2026-06-10', 3, 1000, '00'),
  (1, 2, '2026-06-11', 3, 9e999, '01');
