-- 제목: 환자가 없는 거래
-- 조치: 어느 데스크에서도 열리지 않고 미수금 목록에도 나오지 않습니다. 개발사로 문의하여 삭제된 환자를 복구하십시오.
SELECT o.OrdM_PK AS 거래번호, o.Cust_PK AS 환자번호, o.OrdM_Date AS 거래일자, o.OrdM_Total AS 총액, o.OrdM_Misugum AS 미수금
FROM tPSOrderMaster o
WHERE NOT EXISTS (SELECT 1 FROM Customer c WHERE c.Customer_PK = o.Cust_PK)
ORDER BY o.OrdM_PK
