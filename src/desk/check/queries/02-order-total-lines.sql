-- 제목: 총액이 판매 내역의 합계와 다른 거래
-- 조치: 판매 내역을 저장하고 합계를 계산하기 전에 프로그램이 꺼진 거래입니다. 그 거래를 선택해 물품 하나를 추가했다가 삭제하십시오. 날짜를 물으면 '아니오'를 누르십시오.
-- A product that was deleted, or that is neither taxed nor tax-free, drops out of the sums at the next recalculation: until
-- then the old total stands, so nothing can be said about the orders that sold it.
SELECT o.OrdM_PK AS 거래번호, o.Cust_PK AS 환자번호, o.OrdM_Date AS 거래일자, o.OrdM_Total AS 총액, s.amount AS 내역합계
FROM tPSOrderMaster o
LEFT JOIN (SELECT d.OrdM_PK, SUM((d.OrdD_UnitPrice - d.OrdD_HalinUnit) * d.OrdD_Count) AS amount, COUNT(*) AS counted,
                  COUNT(p.PM_IsTaxed) AS summed
           FROM tPSOrderDetail d
           LEFT JOIN tPSProductMaster p ON p.PM_PK = d.PM_PK
           GROUP BY d.OrdM_PK) s ON s.OrdM_PK = o.OrdM_PK
WHERE COALESCE(s.counted, 0) = COALESCE(s.summed, 0) AND COALESCE(o.OrdM_Total, 0) <> COALESCE(s.amount, 0)
ORDER BY o.OrdM_PK
