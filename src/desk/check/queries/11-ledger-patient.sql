-- 제목: 다른 환자의 거래에 들어 있는 수납 내역
-- 조치: 그 거래의 화면에는 나오지 않지만 합계에는 들어갑니다. 두 환자의 수납 내역을 확인한 뒤 개발사로 문의하십시오.
SELECT t.tpstrans_PK AS 수납번호, t.tpstrans_OrderM_PK AS 거래번호, t.tpstrans_Customer_PK AS 환자번호,
       t.tpstrans_Date AS 일자, t.tpstrans_Operator AS 방법, t.tpstrans_Money AS 금액
FROM tPSTransaction t
LEFT JOIN tPSOrderMaster o ON o.OrdM_PK = t.tpstrans_OrderM_PK
LEFT JOIN Receipt r ON r.Receipt_PK = t.tpstrans_OrderM_PK
WHERE (o.OrdM_PK IS NOT NULL OR r.Receipt_PK IS NOT NULL)
  AND CASE WHEN o.Cust_PK = t.tpstrans_Customer_PK OR r.Customer_PK = t.tpstrans_Customer_PK THEN 1 ELSE 0 END = 0
ORDER BY t.tpstrans_PK
