-- 제목: 분류나 물품명이 없는 물품
-- 조치: 판매물품관리에서 그 물품을 수정하여 분류와 물품명을 입력하십시오.
SELECT PM_PK AS 물품번호, PM_Catagory AS 분류, PM_Name AS 물품명
FROM tPSProductMaster
WHERE PM_Catagory IS NULL OR TRIM(PM_Catagory) = '' OR PM_Name IS NULL OR TRIM(PM_Name) = ''
ORDER BY PM_PK
