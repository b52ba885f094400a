-- One with everything, one with nothing but its names.

INSERT INTO tPSProductMaster (PM_Catagory, PM_Name, PM_UnitPrice, PM_IsTaxed, PM_IsValid, PM_EtcMemo, PM_AddedDate) VALUES
  ('가', '홍삼', 12000, 0, 1, '6년근', '2026-01-02');

INSERT INTO tPSProductMaster (PM_Catagory, PM_Name) VALUES
  ('나', '보리차');
