-- Customer 7 with order 1, and order 2 of two lines and a payment; order 3 is another customer's.

INSERT INTO tPSOrderMaster (Cust_PK, OrdM_Date, OrdM_Gubun, OrdM_TaxTotal, OrdM_TaxFreeTotal, OrdM_HalinTotal, OrdM_Total, OrdM_Misugum, OrdM_ETCMemo) VALUES
  (7, '2026-03-01', 1, 1000, 0, 0, 1000, 0, ''),
  (7, '2026-03-02', 1, 2000, 50000, 0, 52000, 900, ''),
  (8, '2026-03-03', 1, 3000, 0, 0, 3000, 0, '');

INSERT INTO tPSOrderDetail (OrdM_PK, PM_PK, OrdD_UnitPrice, OrdD_HalinUnit, OrdD_Count, OrdD_OrderType) VALUES
  (1, 1, 1000, 0, 1, 0),
  (2, 2, 50000, 0, 1, 0),
  (2, 1, 1000, 0, 2, 0);

INSERT INTO tPSTransaction (tpstrans_Customer_PK, tpstrans_OrderM_PK, tpstrans_Date, tpstrans_Operator, tpstrans_Money, tpstrans_Method, tpstrans_Memo) VALUES
  (7, 2, '2026-03-02', 3, 500, '00', '');
