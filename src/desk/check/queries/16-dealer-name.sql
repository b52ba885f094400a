-- 제목: 이름이 없는 거래처
-- 조치: 판매물품관리에서 그 거래처를 수정하여 이름을 입력하십시오.
SELECT CM_PK AS 거래처번호, CM_Name AS 이름, CM_RegNum AS 사업자번호
FROM tPSCompanyMaster
WHERE CM_Name IS NULL OR CM_Name = ''
ORDER BY CM_PK
