-- 제목: 날짜가 달력을 벗어난 기록
-- 조치: 화면에서 고를 수 없는 날짜라 기간별 합계에서 빠집니다. 그 기록을 수정하여 날짜를 다시 고르십시오.
SELECT '주문' AS 기록, OrdM_PK AS 번호, OrdM_Date AS 날짜
FROM tPSOrderMaster
WHERE NOT OrdM_Date BETWEEN '1752-09-14' AND '9999-12-31'
UNION ALL
SELECT '수납' AS 기록, tpstrans_PK AS 번호, tpstrans_Date AS 날짜
FROM tPSTransaction
WHERE NOT tpstrans_Date BETWEEN '1752-09-14' AND '9999-12-31'
UNION ALL
SELECT '구매' AS 기록, PM_PK AS 번호, IN_Date AS 날짜
FROM tPSIncoming
WHERE NOT IN_Date BETWEEN '1752-09-14' AND '9999-12-31'
