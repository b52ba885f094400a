-- 제목: 입력할 수 없는 날짜의 내역
-- 조치: 화면에서 선택할 수 없는 날짜라 기간별 합계에서 빠집니다. 그 내역을 수정하여 날짜를 다시 선택하십시오.
SELECT '거래' AS 내역, OrdM_PK AS 번호, OrdM_Date AS 날짜
FROM tPSOrderMaster
WHERE NOT OrdM_Date BETWEEN '1752-09-14' AND '9999-12-31'
UNION ALL
SELECT '수납' AS 내역, tpstrans_PK AS 번호, tpstrans_Date AS 날짜
FROM tPSTransaction
WHERE NOT tpstrans_Date BETWEEN '1752-09-14' AND '9999-12-31'
UNION ALL
SELECT '구매' AS 내역, PM_PK AS 번호, IN_Date AS 날짜
FROM tPSIncoming
WHERE NOT IN_Date BETWEEN '1752-09-14' AND '9999-12-31'
