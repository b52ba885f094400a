-- Customer 41 owes for the orders 1 and 2, customer 42 for another.

INSERT INTO Customer (Customer_PK, name, sn) VALUES
  (41, '홍길동', 'C-1'),
  (42, '김영희', 'C-2');

INSERT INTO tPSOrderMaster (OrdM_PK, Cust_PK, OrdM_Date, OrdM_Gubun, OrdM_TaxTotal, OrdM_TaxFreeTotal, OrdM_HalinTotal, OrdM_Total, OrdM_Misugum) VALUES
  (1, 41, '2026-11-20', 1, 0, 0, 300, 12340, 5000),
  (2, 41, '2026-11-22', 1, 0, 0, 0, 9000, 2000),
  (3, 41, '2026-11-23', 1, 0, 0, 0, 700, 0),
  (4, 42, '2026-11-24', 1, 0, 0, 0, 100000, 900);
