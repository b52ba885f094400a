-- 제목: 단가가 0원이 아닌 서비스·망실 내역
-- 조치: 서비스와 망실은 단가가 0원이어야 합니다. 그 내역을 삭제하고 다시 추가하십시오.
SELECT OrdD_PK AS 내역번호, OrdM_PK AS 거래번호, PM_PK AS 물품번호, OrdD_OrderType AS 판매종류, OrdD_UnitPrice AS 단가,
       OrdD_HalinUnit AS 단가할인
FROM tPSOrderDetail
WHERE OrdD_OrderType IN (1, 2) AND (OrdD_UnitPrice <> 0 OR OrdD_HalinUnit <> 0)
ORDER BY OrdD_PK
