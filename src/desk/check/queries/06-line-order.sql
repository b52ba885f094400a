-- 제목: 거래가 없는 판매 내역
-- 조치: 한 데스크가 거래를 삭제할 때 다른 데스크가 내역을 추가하면 생깁니다. 재고에서는 빠져 있으니 개발사로 문의하십시오.
SELECT d.OrdD_PK AS 내역번호, d.OrdM_PK AS 거래번호, d.PM_PK AS 물품번호, d.OrdD_Count AS 수량, d.OrdD_UnitPrice AS 단가
FROM tPSOrderDetail d
WHERE NOT EXISTS (SELECT 1 FROM tPSOrderMaster o WHERE o.OrdM_PK = d.OrdM_PK)
ORDER BY d.OrdD_PK
