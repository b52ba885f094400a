-- One order with every field, one with as few as may be.

INSERT INTO tPSOrderMaster (Cust_PK, OrdM_Date, OrdM_Gubun, OrdM_Address, OrdM_Tel, OrdM_Cel, OrdM_TakbaeMemo, OrdM_TaxTotal, OrdM_TaxFreeTotal, OrdM_HalinTotal, OrdM_Total, OrdM_Misugum, OrdM_ETCMemo) VALUES
  (41, '2026-11-20', 2, '서울', '02', '010', '문앞', 2700, 300, 100, 3000, 500, '단골'),
  (41, '2026-01-02', NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL);
