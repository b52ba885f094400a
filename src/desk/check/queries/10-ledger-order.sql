-- 제목: 거래도 진료 영수증도 없는 수납 내역
-- 조치: 한 데스크가 거래를 삭제할 때 다른 데스크가 수납하면 생깁니다. 받은 금액이므로 수납 내역과 맞춘 뒤 개발사로 문의하십시오.
SELECT t.tpstrans_PK AS 수납번호, t.tpstrans_OrderM_PK AS 거래번호, t.tpstrans_Customer_PK AS 환자번호,
       t.tpstrans_Date AS 일자, t.tpstrans_Operator AS 방법, t.tpstrans_Money AS 금액
FROM tPSTransaction t
WHERE NOT EXISTS (SELECT 1 FROM tPSOrderMaster o WHERE o.OrdM_PK = t.tpstrans_OrderM_PK)
  AND NOT EXISTS (SELECT 1 FROM Receipt r WHERE r.Receipt_PK = t.tpstrans_OrderM_PK)
ORDER BY t.tpstrans_PK
