-- Customer 7 with order 1 of the 1st and order 2 of the 2nd, each with one line and one payment; customer 8 with order 3.

INSERT INTO tPSOrderMaster (OrdM_PK, Cust_PK, OrdM_Date, OrdM_Gubun, OrdM_TaxTotal, OrdM_TaxFreeTotal, OrdM_HalinTotal, OrdM_Total, OrdM_Misugum, OrdM_ETCMemo) VALUES
  (1, 7, '2026-03-01', 1, 1000, 0, 0, 1000, 0, '첫째'),
  (2, 7, '2026-03-02', 1, 2000, 0, 0, 2000, 0, '둘째'),
  (3, 8, '2026-03-03', 1, 3000, 0, 0, 3000, 0, '셋째');

INSERT INTO tPSOrderDetail (OrdD_PK, OrdM_PK, PM_PK, OrdD_UnitPrice, OrdD_HalinUnit, OrdD_Count, OrdD_OrderType) VALUES
  (1, 1, 1, 1000, 0, 1, 0),
  (2, 2, 1, 1000, 0, 2, 0),
  (3, 3, 1, 1000, 0, 3, 0);

INSERT INTO tPSTransaction (tpstrans_PK, tpstrans_Customer_PK, tpstrans_OrderM_PK, tpstrans_Date, tpstrans_Operator, tpstrans_Money, tpstrans_Method) VALUES
  (1, 7, 1, '2026-03-01', 3, 400, '00'),
  (2, 7, 2, '2026-03-02', 3, 500, '00');
