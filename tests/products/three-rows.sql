-- Three rows in each list; the purchases are those of the first product, and name a dealer who is not on the list.

INSERT INTO tPSProductMaster (PM_Catagory, PM_Name, PM_EtcMemo) VALUES
  ('1', 'n', '첫째'),
  ('2', 'n', '둘째'),
  ('3', 'n', '셋째');

INSERT INTO tPSIncoming (PM_PK, CM_PK, IN_Date, IN_Count, IN_EtcMemo) VALUES
  (1, 99, '2026-11-29', 10, '첫째'),
  (1, 99, '2026-11-28', 10, '둘째'),
  (1, 99, '2026-11-27', 10, '셋째'),
  (3, 99, '2026-11-01', 7, '셋째의');

INSERT INTO tPSCompanyMaster (CM_Name, CM_EtcMemo) VALUES
  ('1', '첫째'),
  ('2', '둘째'),
  ('3', '셋째');
