-- 제목: 삭제된 물품의 판매 내역이 총액에서 빠진 거래
-- 조치: 받을 금액이 총액보다 많을 수 있습니다. 내역합계와 비교하여 확인하십시오. 판매한 물품을 나중에 삭제한 거래도 다시 계산되면 여기에 나옵니다.
-- The old total of a product that was deleted stands until a recalculation leaves the product out of it; a line that was
-- added when its product was gone was never in it.
SELECT o.OrdM_PK AS 거래번호, o.Cust_PK AS 환자번호, o.OrdM_Date AS 거래일자, o.OrdM_Total AS 총액, s.amount AS 내역합계
FROM tPSOrderMaster o
INNER JOIN (SELECT d.OrdM_PK, SUM((d.OrdD_UnitPrice - d.OrdD_HalinUnit) * d.OrdD_Count) AS amount, COUNT(*) AS counted,
                   COUNT(p.PM_PK) AS known
            FROM tPSOrderDetail d
            LEFT JOIN tPSProductMaster p ON p.PM_PK = d.PM_PK
            GROUP BY d.OrdM_PK) s ON s.OrdM_PK = o.OrdM_PK
WHERE s.known < s.counted AND COALESCE(o.OrdM_Total, 0) <> COALESCE(s.amount, 0)
ORDER BY o.OrdM_PK
