-- Rows that engines, drivers and statements like to change on the way.
INSERT INTO tPSProductMaster (PM_PK, PM_Catagory, PM_Name, PM_UnitPrice, PM_IsTaxed, PM_EtcMemo, PM_AddedDate) VALUES (90001, '''', 'it''s "q"; -- DROP', 922337203685477, NULL, 'C:\n\\x ? $1 :a {fn} %1 %2', '0001-01-01');
INSERT INTO tPSProductMaster (PM_PK, PM_Catagory, PM_Name, PM_UnitPrice, PM_IsHide, PM_EtcMemo, PM_AddedDate) VALUES (90007, '', NULL, -922337203685477, 1, '첫 줄
둘째 줄	탭  ', '9999-12-31');
INSERT INTO tPSProductMaster (PM_PK, PM_Name, PM_UnitPrice, PM_AddedDate) VALUES (-5, '쌍화탕 🌿 e' || '́' || ' ﬁ ７', 0, '2024-02-29');
INSERT INTO tPSCompanyMaster (CM_PK) VALUES (2000000000);
INSERT INTO tPSIncoming (IN_PK, PM_PK, IN_Date, IN_Count, IN_Total) VALUES (70001, -2147483648, NULL, 0.1, NULL);
INSERT INTO tPSIncoming (IN_PK, PM_PK, IN_Count) VALUES (70002, 2147483647, CAST('-0' AS float8));
INSERT INTO tPSIncoming (IN_PK, IN_Count) VALUES (70003, 1.7976931348623157e308);
INSERT INTO tPSIncoming (IN_PK, IN_Count) VALUES (70004, 123456789012345680);
INSERT INTO tPSProperties (tpsps_Key, tpsps_Value) VALUES ('두번', NULL);
INSERT INTO tPSProperties (tpsps_Key, tpsps_Value) VALUES ('두번', '');
INSERT INTO t_HospSetup (HS_KEY, HS_Value) VALUES ('', 'a'), ('가', 'b'), ('A', 'c'), ('a', 'd'), (' a', 'e');
INSERT INTO tPSTransaction (tpstrans_OrderM_PK, tpstrans_Customer_PK, tpstrans_Operator, tpstrans_Money, tpstrans_Method, trans_NotSubmit) VALUES (7, 1, 3, -2147483648, '한글', 1);
INSERT INTO tPSOrderMaster (Cust_PK, OrdM_Date) VALUES (1, '2026-11-24');
DELETE FROM tPSOrderMaster WHERE OrdM_PK = 321;
