-- The third order of customer 7 owes still, after a payment.

INSERT INTO Customer (Customer_PK, name, sn) VALUES
  (7, '남궁보람', 'A-00007');

INSERT INTO tPSOrderMaster (Cust_PK, OrdM_Date, OrdM_Gubun, OrdM_TaxTotal, OrdM_TaxFreeTotal, OrdM_HalinTotal, OrdM_Total, OrdM_Misugum) VALUES
  (7, '2026-02-28', 1, 9000, 0, 0, 9000, 4000);

INSERT INTO tPSTransaction (tpstrans_Customer_PK, tpstrans_OrderM_PK, tpstrans_Date, tpstrans_Operator, tpstrans_Money, tpstrans_Method) VALUES
  (7, 4, '2026-02-28', 3, 5000, '00');
