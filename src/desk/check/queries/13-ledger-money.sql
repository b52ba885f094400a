-- 제목: 금액이 없거나 범위를 벗어난 수납 내역
-- 조치: 그 수납 내역을 삭제하고 다시 수납하십시오.
SELECT tpstrans_PK AS 수납번호, tpstrans_OrderM_PK AS 거래번호, tpstrans_Customer_PK AS 환자번호, tpstrans_Money AS 금액
FROM tPSTransaction
WHERE tpstrans_Money IS NULL OR tpstrans_Money NOT BETWEEN -2147483648 AND 2147483647
ORDER BY tpstrans_PK
