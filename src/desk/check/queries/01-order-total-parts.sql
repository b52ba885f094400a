-- 제목: 총액이 과세·비과세 합계와 다른 거래
-- 조치: 그 거래를 선택해 물품 하나를 추가했다가 삭제하십시오. 날짜를 물으면 '아니오'를 누르십시오.
SELECT OrdM_PK AS 거래번호, Cust_PK AS 환자번호, OrdM_Date AS 거래일자, OrdM_TaxTotal AS 과세, OrdM_TaxFreeTotal AS 비과세,
       OrdM_Total AS 총액
FROM tPSOrderMaster
WHERE COALESCE(OrdM_Total, 0) <> COALESCE(OrdM_TaxTotal, 0) + COALESCE(OrdM_TaxFreeTotal, 0)
ORDER BY OrdM_PK
