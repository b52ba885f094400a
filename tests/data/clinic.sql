-- A small clinic with every oddity that a statement may meet. One statement a table, the keys given.

INSERT INTO Customer (Customer_PK, name, sn, ssn1, ssn2, Insu_Type, Insu_Symbol, Insu_No) VALUES
  (1, '김영희', '0001', '700101', '2000000', '건강보험', 'A1', '77'),
  (2, '박''철수', '0002', NULL, NULL, NULL, NULL, ''),
  (3, '가람', NULL, '', '', '', '', NULL);

-- Hidden by 0 and NULL, not handled, twice the same name, the same name in another case, no group, no date.
INSERT INTO tPSProductMaster (PM_PK, PM_Catagory, PM_Name, PM_UnitPrice, PM_IsTaxed, PM_IsValid, PM_IsHide, PM_EtcMemo, PM_AddedDate) VALUES
  (1, '한약', '경옥고', 1000, 1, 1, NULL, '', '2026-01-01'),
  (2, '건강식품', '홍삼정', 30000, 0, 1, 0, NULL, '2026-01-02'),
  (3, '건강식품', '배즙', 2500, 1, 1, 1, '숨김', '2026-01-03'),
  (4, '한약', '공진단', 100000, 1, 0, 0, '', '2026-01-04'),
  (5, NULL, '대추차', NULL, 0, 1, NULL, '', NULL),
  (6, '건강식품', '홍삼정', 31000, 0, 1, 0, '', '2025-12-31'),
  (7, 'tea', 'Zinger', 500, 0, 1, 0, '', '2026-01-05'),
  (8, 'TEA', 'apple', 500, 0, 1, 0, '', '2026-01-05'),
  (9, '', '빈 분류', 0, 0, 1, 0, '', '2026-01-06');

INSERT INTO tPSCompanyMaster (CM_PK, CM_Name, CM_RegNum, CM_Tel, CM_Address, CM_EtcMemo, CM_IsValid) VALUES
  (1, '한국약업', '123-45-67890', '02-1', '서울', '', 0),
  (2, '[CPNAME] 상사', '', '', '', '', 1),
  (3, 'Pine', '', NULL, '', '', 0),
  (4, 'zoo', '', '', '', '', NULL),
  (5, NULL, '', '', '', '', 0),
  (6, '동원', '', '', '', '', 0),
  (7, 'banana', '', '', '', '', 0);

INSERT INTO tPSIncoming (IN_PK, PM_PK, CM_PK, IN_Date, IN_Count, IN_UnitPrice, IN_HalinTotal, IN_Total, IN_EtcMemo) VALUES
  (1, 1, 1, '2026-02-01', 10.5, 600, 0, 6300, ''),
  (2, 1, 3, '2026-03-01', 3, 500, 100, 1400, NULL),
  (3, 1, 1, NULL, NULL, NULL, NULL, NULL, NULL),
  (4, 2, 1, '2026-02-01', 1, 20000, 0, 20000, '');

-- Two orders of one customer on one date; an order without lines; totals and kind NULL.
INSERT INTO tPSOrderMaster (OrdM_PK, Cust_PK, OrdM_Date, OrdM_Gubun, OrdM_Address, OrdM_Tel, OrdM_Cel, OrdM_TakbaeMemo, OrdM_TaxTotal, OrdM_TaxFreeTotal, OrdM_HalinTotal, OrdM_Total, OrdM_Misugum, OrdM_ETCMemo) VALUES
  (101, 1, '2026-11-01', NULL, '서울', '02-1', '010', '', 2700, 0, 300, 2700, 500, ''),
  (102, 1, '2026-11-01', 2, '', '', '', '문 앞', 0, 60000, 0, 60000, 0, ''),
  (103, 1, '2026-11-20', 1, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL),
  (104, 2, '2026-11-24', 1, '', '', '', '', -900, 0, 0, -900, -300, ''),
  (105, 2, '2026-10-30', 1, '', '', '', '', 0, 0, 0, 0, 0, '빈 주문');

-- A sale, its return, service, loss, a product that is gone, a line without price, lines without a valid order.
INSERT INTO tPSOrderDetail (OrdD_PK, OrdM_PK, PM_PK, OrdD_UnitPrice, OrdD_HalinUnit, OrdD_Count, OrdD_OrderType, OrdD_RfndMemo) VALUES
  (1, 101, 1, 1000, 100, 3, 0, '▶2026-11-02일 (-1)개 반품'),
  (2, 101, 1, 900, 0, -1, NULL, '▷반품'),
  (3, 101, 2, 0, 0, 1, 1, ''),
  (4, 101, 1, 0, 0, 2, 2, NULL),
  (5, 102, 2, 30000, 0, 2, 0, NULL),
  (6, 102, 999, 5000, 10, 2, 0, NULL),
  (7, 103, 5, NULL, NULL, 1, 0, NULL),
  (8, 104, 1, 900, 0, -1, NULL, ''),
  (9, 103, 4, 100000, 0, 1, NULL, NULL),
  (10, 0, 1, 1, 0, 1, 0, NULL),
  (11, -1, 1, 1, 0, 1, 0, NULL),
  (12, 102, 2, 30000, 5000, 1, 3, NULL);

INSERT INTO tPSTransaction (tpstrans_PK, tpstrans_Customer_PK, tpstrans_OrderM_PK, tpstrans_Date, tpstrans_Operator, tpstrans_Money, tpstrans_Method, tpstrans_Memo, trans_temp, trans_NotSubmit) VALUES
  (1, 1, 101, '2026-11-01', 1, 70, '', '', NULL, 0),
  (2, 1, 101, '2026-11-01', 2, 200, '', NULL, NULL, NULL),
  (3, 1, 101, '2026-11-01', 3, 1000, NULL, '', NULL, 0),
  (4, 1, 101, '2026-11-01', 3, 1000, '00', '', NULL, 1),
  (5, 1, 101, '2026-11-02', 3, 400, '01', '', '표', NULL),
  (6, 1, 101, '2026-11-03', 4, 300, '00', '', '표''시', 0),
  (7, 1, 101, '2026-11-03', 3, 1000, '00', '', NULL, 0),
  (8, 1, 102, '2026-11-05', 3, 10000, '10', '', NULL, 0),
  (9, 1, 102, '2026-11-05', 3, 5000, '11', '', NULL, 0),
  (10, 1, 102, '2026-11-06', 3, 2000, '12', '', NULL, 0),
  (11, 1, 102, '2026-11-06', 3, 50, '03', '', NULL, 0),
  (12, 1, 102, '2026-11-06', 3, 800, '02', '', NULL, 0),
  (13, 1, 102, '2026-11-07', 3, -500, '10', '', NULL, 0),
  (14, 1, 102, '2026-11-07', 4, 300, '11', '', NULL, 0),
  (15, 1, 103, '2026-11-20', NULL, 90, NULL, '', NULL, 0),
  (16, 1, 103, '2026-11-20', 3, NULL, '00', '', NULL, 0),
  (17, 1, 103, '2026-11-20', 4, 40, NULL, '', NULL, 0),
  (18, 1, 103, '2026-11-20', 3, 0, '01', '', NULL, 0),
  (19, 2, 104, '2026-11-24', 4, 900, NULL, '', NULL, NULL),
  (20, 2, 104, NULL, 5, 11, '01', '', NULL, 0),
  (21, 1, 9001, '2026-11-01', 1, 10, '', '', NULL, 0),
  (22, 1, 9001, '2026-11-02', 3, 4000, '01', '', NULL, 0),
  (23, 1, 9001, '2026-11-02', 3, 990, NULL, '', NULL, 0),
  (24, 1, 9003, '2026-11-20', 4, 700, '00', '', NULL, 0),
  (25, 1, 9003, '2026-11-20', 2, 30, '', '', NULL, 0),
  (26, 2, 9004, '2026-11-24', 3, 1, '00', '', NULL, 0),
  (27, 2, 104, '2026-12-01', 3, 500, '01', '', NULL, 0),
  (28, 2, 104, '2026-12-01', 3, 300, '01', '', NULL, 0),
  (29, 2, 104, '2026-12-01', 2, 20, '', '', NULL, 0),
  (30, 2, 104, '2026-12-01', 2, 30, NULL, '', NULL, 0);

INSERT INTO Receipt (Receipt_PK, Customer_PK, TxDate, Bonin_Money, Cheonggu_Money, General_Money) VALUES
  (9001, 1, '2026-11-01', 5000, 12000, 0),
  (9002, 1, '2026-11-02', NULL, NULL, NULL),
  (9003, 1, '2026-11-20', 1500, 3000, 20000),
  (9004, 2, '2026-11-24', 1, 2, 3);

INSERT INTO tPSProperties (tpsps_PK, tpsps_Key, tpsps_Value) VALUES
  (1, '지점명', '젤보'),
  (2, '홈페이지주소', NULL),
  (3, '우편번호', '');

INSERT INTO t_HospSetup (HS_KEY, HS_Value) VALUES
  ('사회복지법인여부', '1'),
  ('대행청구사용여부', '아니오'),
  ('대행청구단체코드', '원장''s'),
  ('EDI기본수신처', NULL);
