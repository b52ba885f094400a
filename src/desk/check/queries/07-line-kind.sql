-- 제목: 판매 종류가 잘못된 판매 내역
-- 조치: 재고에서 빠지지 않습니다. 그 내역을 삭제하고 다시 추가하십시오.
SELECT OrdD_PK AS 내역번호, OrdM_PK AS 거래번호, PM_PK AS 물품번호, OrdD_OrderType AS 판매종류
FROM tPSOrderDetail
WHERE OrdD_OrderType NOT IN (0, 1, 2)
ORDER BY OrdD_PK
