-- One with every field, one with none, one of no dealings.

INSERT INTO tPSCompanyMaster (CM_Name, CM_RegNum, CM_Address, CM_Tel, CM_EtcMemo, CM_IsValid) VALUES
  ('Acme', '1', '서울', '02', '외상', 1),
  ('xyz', NULL, NULL, NULL, NULL, NULL),
  ('한약방', NULL, NULL, NULL, NULL, 0);
