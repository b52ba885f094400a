-- 제목: 수령 방법이 잘못된 거래
-- 조치: 그 거래를 수정하여 직접수령이나 택배를 선택하고 저장하십시오.
SELECT OrdM_PK AS 거래번호, Cust_PK AS 환자번호, OrdM_Date AS 거래일자, OrdM_Gubun AS 수령방법
FROM tPSOrderMaster
WHERE OrdM_Gubun NOT IN (1, 2)
ORDER BY OrdM_PK
