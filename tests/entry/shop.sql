-- A small shop: three products, one of them hidden; customer 7 with two orders and customer 8 with one.

INSERT INTO tPSProductMaster (PM_Catagory, PM_Name, PM_UnitPrice, PM_IsTaxed, PM_IsValid, PM_IsHide) VALUES
  ('가', '감초차', 1000, 1, 1, 0),
  ('나', '경옥고', 50000, 0, 1, NULL),
  ('다', '숨은차', 2000, 1, 1, 1);

INSERT INTO tPSCompanyMaster (CM_Name, CM_IsValid) VALUES
  ('동의약업', 1);

INSERT INTO tPSIncoming (PM_PK, CM_PK, IN_Date, IN_Count) VALUES
  (1, 1, '2026-01-05', 10);

INSERT INTO tPSOrderMaster (Cust_PK, OrdM_Date, OrdM_Gubun, OrdM_TaxTotal, OrdM_TaxFreeTotal, OrdM_HalinTotal, OrdM_Total, OrdM_Misugum, OrdM_ETCMemo) VALUES
  (7, '2026-03-01', 1, 1000, 0, 0, 1000, 0, '첫째'),
  (7, '2026-03-02', 1, 2000, 0, 0, 2000, 0, '둘째'),
  (8, '2026-03-03', 1, 3000, 0, 0, 3000, 0, '남의 것');

INSERT INTO tPSOrderDetail (OrdM_PK, PM_PK, OrdD_UnitPrice, OrdD_HalinUnit, OrdD_Count, OrdD_OrderType) VALUES
  (1, 1, 1000, 0, 1, 0),
  (2, 1, 1000, 0, 2, 0),
  (3, 1, 1000, 0, 3, 0);

INSERT INTO tPSTransaction (tpstrans_Customer_PK, tpstrans_OrderM_PK, tpstrans_Date, tpstrans_Operator, tpstrans_Money, tpstrans_Method) VALUES
  (7, 2, '2026-03-02', 3, 2000, '00');
