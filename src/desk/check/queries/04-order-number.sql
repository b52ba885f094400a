-- 제목: 번호가 0 이하인 거래
-- 조치: 화면에 판매 내역이 나오지 않습니다. 다른 프로그램이 저장한 거래이므로 개발사로 문의하십시오.
SELECT OrdM_PK AS 거래번호, Cust_PK AS 환자번호, OrdM_Date AS 거래일자, OrdM_Total AS 총액
FROM tPSOrderMaster
WHERE OrdM_PK <= 0
ORDER BY OrdM_PK
