-- 제목: 수량이 없거나 범위를 벗어난 판매 내역
-- 조치: 그 내역을 삭제하고 다시 추가하십시오.
SELECT OrdD_PK AS 내역번호, OrdM_PK AS 거래번호, PM_PK AS 물품번호, OrdD_Count AS 수량
FROM tPSOrderDetail
WHERE OrdD_Count IS NULL OR OrdD_Count NOT BETWEEN -32768 AND 32767
ORDER BY OrdD_PK
