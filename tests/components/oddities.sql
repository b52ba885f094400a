-- What a shop's tables may hold and the sample does not.

-- a line whose product is gone, taken back in part on the same day; one of an unknown kind; a second order
-- without lines, and one of a patient who is gone
INSERT INTO tPSOrderMaster (OrdM_PK, Cust_PK, OrdM_Date, OrdM_Total, OrdM_Misugum) VALUES
  (90001, 1, '2026-03-14', NULL, NULL),
  (90002, 2, '2026-03-14', 5000, 1500),
  (90003, 2, '2026-03-14', 700, 700),
  (90004, 99999, '2026-03-14', 700, 700);

-- a discount that nobody stored is none
INSERT INTO tPSOrderDetail (OrdM_PK, PM_PK, OrdD_UnitPrice, OrdD_HalinUnit, OrdD_Count, OrdD_OrderType) VALUES
  (90001, 99999, 7000, 500, 3, NULL),
  (90001, 99999, 6500, 100, -1, NULL),
  (90002, 1, 2500, 0, 2, 3),
  (90002, 2, 0, 0, 4, 2),
  (90003, 1, 800, NULL, 2, 0),
  (90003, 1, 800, NULL, -1, 0);

-- every method, known or not, and operators that are no payment
INSERT INTO tPSTransaction (tpstrans_Customer_PK, tpstrans_OrderM_PK, tpstrans_Date, tpstrans_Operator, tpstrans_Money, tpstrans_Method) VALUES
  (1, 90001, '2026-03-14', 3, 11, NULL),
  (1, 90001, '2026-03-14', 3, 13, ''),
  (1, 90001, '2026-03-14', 3, 17, '02'),
  (1, 90001, '2026-03-14', 3, 17, '02'),
  (99999, 90004, '2026-03-14', 3, 67, '00'),
  (4, 90002, '2026-03-15', 3, 71, '10'),
  (1, 90001, '2026-03-14', 3, 19, '03'),
  (2, 90002, '2026-03-14', 3, 23, '10'),
  (2, 90002, '2026-03-14', 3, 29, '11'),
  (2, 90002, '2026-03-14', 3, 31, '12'),
  (2, 90002, '2026-03-14', 4, 37, '11'),
  (2, 90002, '2026-03-14', 4, 41, '12'),
  (2, 90002, '2026-03-14', 4, 43, NULL),
  (2, 90002, '2026-03-14', NULL, 47, '00'),
  (3, 10000001, '2026-03-14', 3, 53, '00'),
  (1, 90002, '2026-03-14', 1, 59, ''),
  (2, 90002, '2026-03-16', 3, 61, '10');

-- two prices on the last day of purchase, one later without a price; sold without a purchase
INSERT INTO tPSProductMaster (PM_PK, PM_Catagory, PM_Name, PM_UnitPrice, PM_IsTaxed, PM_IsValid) VALUES
  (9001, '시험', '두 값', 1000, 1, 1),
  (9002, '시험', '없이 판 것', 1000, 0, 1),
  (9003, '시험', '다 판 것', 1000, 0, 1);

INSERT INTO tPSIncoming (PM_PK, CM_PK, IN_Date, IN_Count, IN_UnitPrice) VALUES
  (9001, 1, '2026-01-05', 50, 900),
  (9001, 1, '2026-06-05', 30, 400),
  (9001, 1, '2026-06-05', 20, 450),
  (9001, 1, NULL, 5, 999),
  (9003, 1, '2026-06-05', 2, 10);

INSERT INTO tPSOrderDetail (OrdM_PK, PM_PK, OrdD_UnitPrice, OrdD_HalinUnit, OrdD_Count, OrdD_OrderType) SELECT MAX(OrdM_PK), 9001, 1000, 0, 91, NULL FROM tPSOrderMaster WHERE OrdM_PK < 90000;

INSERT INTO tPSOrderDetail (OrdM_PK, PM_PK, OrdD_UnitPrice, OrdD_HalinUnit, OrdD_Count, OrdD_OrderType) VALUES
  (90002, 9002, 1000, 0, 3, 1),
  (90002, 9003, 1000, 0, 2, 0);
