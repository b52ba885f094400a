-- 제목: 방법이나 결재방법이 잘못된 수납 내역
-- 조치: 어느 합계에 드는지 정해지지 않은 금액입니다. 그 수납 내역을 삭제하고 다시 수납하십시오.
SELECT tpstrans_PK AS 수납번호, tpstrans_OrderM_PK AS 거래번호, tpstrans_Customer_PK AS 환자번호, tpstrans_Operator AS 방법,
       tpstrans_Method AS 결재방법, tpstrans_Money AS 금액
FROM tPSTransaction
WHERE tpstrans_Operator NOT IN (1, 2, 3, 4) OR tpstrans_Method NOT IN ('', '00', '01', '02', '10', '11', '12')
ORDER BY tpstrans_PK
