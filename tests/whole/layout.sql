-- Long names, addresses and sums: what a layout must bear.

INSERT INTO tPSCompanyMaster (CM_PK, CM_Name, CM_RegNum, CM_Address, CM_Tel, CM_EtcMemo, CM_IsValid) VALUES
  (1, '푸른 들 약초 영농조합법인 중부 지사', '105-81-00001', '충청북도 제천시 한방엑스포로 19, 약초 유통 센터 2층 204호', '043-555-0100', '월말 정산', 1);

INSERT INTO tPSIncoming (PM_PK, CM_PK, IN_Count, IN_UnitPrice, IN_Total, IN_HalinTotal, IN_Date, IN_EtcMemo) VALUES
  (1, 1, 30000, 123456, 1999999999, 10000, '2026-02-01', '한 번에 들어온 물량');

UPDATE tPSProductMaster SET PM_Name = '열두 가지 약재로 달인 어른용 가을 보약 서른 봉지', PM_UnitPrice = 1234567890 WHERE PM_PK = 2;
UPDATE tPSOrderMaster SET OrdM_TaxTotal = 1234567890, OrdM_TaxFreeTotal = 1999999999, OrdM_HalinTotal = 123456789,
  OrdM_Total = 1999999999, OrdM_Misugum = 1999999999, OrdM_Tel = '02-0658-0138', OrdM_Cel = '010-0331-5289',
  OrdM_Address = '충청북도 제천시 한방엑스포로 19, 약초 유통 센터 2층 204호 (택배는 옆 가게에 맡겨 주십시오)',
  OrdM_ETCMemo = '다음 달에 아드님이 대신 찾으러 오십니다. 냉장 보관이 필요한 물품은 빼고 상온 물품만 먼저 보내 달라고 하셨습니다.' WHERE OrdM_PK = 2;
