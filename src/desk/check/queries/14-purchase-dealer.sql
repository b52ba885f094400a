-- 제목: 거래처가 없는 구매 내역
-- 조치: 판매물품관리에서 그 구매 내역을 수정하여 거래처를 다시 선택하십시오.
SELECT i.PM_PK AS 물품번호, i.CM_PK AS 거래처번호, i.IN_Date AS 구매일, i.IN_Count AS 수량, i.IN_Total AS 총액
FROM tPSIncoming i
WHERE NOT EXISTS (SELECT 1 FROM tPSCompanyMaster c WHERE c.CM_PK = i.CM_PK)
ORDER BY i.PM_PK, i.IN_Date
