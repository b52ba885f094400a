-- Products in the order of the list: taxed, tax-free, not handled; two customers.

INSERT INTO tPSProductMaster (PM_Catagory, PM_Name, PM_UnitPrice, PM_IsTaxed, PM_IsValid, PM_IsHide, PM_EtcMemo, PM_AddedDate) VALUES
  ('가', '감초차', 1000, 1, 1, 0, '', '2026-01-01'),
  ('나', '경옥고', 50000, 0, 1, NULL, '', '2026-01-01'),
  ('다', '옛날환', 1000, 1, 0, 0, '', '2026-01-01');

INSERT INTO Customer (Customer_PK, name, sn) VALUES
  (7, '남궁보람', '000007'),
  (8, '서문하늘', '000008');
