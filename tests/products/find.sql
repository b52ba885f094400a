-- Products in the order of the list, with codes of packets in their remarks; dealers by name.

INSERT INTO tPSProductMaster (PM_Catagory, PM_Name, PM_UnitPrice, PM_IsTaxed, PM_IsValid, PM_EtcMemo) VALUES
  ('가', '감초차', 1000, 1, 1, NULL),
  ('가', '경옥고', 50000, 1, 1, '8801234567890'),
  ('나', '공진단', 70000, 1, 1, '코드 880123'),
  ('다', 'Vitamin C', 9000, 1, 1, 'AB-12, 인기'),
  ('라', '홍삼정', 30000, 1, 1, '옥 상자, 인기');

INSERT INTO tPSCompanyMaster (CM_Name, CM_Tel) VALUES
  ('가람약업', '02-000-1234'),
  ('나래상사', '02-000-5678');
