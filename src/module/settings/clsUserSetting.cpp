#include "settings/clsUserSetting.h"

#include "data/Vocabulary.h"
#include "platform/registry/AppSettings.h"
#include "platform/runtime/Conversions.h"

namespace {

constexpr const char16_t *general = u"젤보 데스크";
constexpr const char16_t *doctorsRoom = u"원장실 설정";
constexpr const char16_t *reception = u"접수실 설정";

constexpr clsUserSetting::Property sharedVocabulary[] = {
    {u"GongJiURL", general, u"공지사항 URL"},
    {u"SujinjaConfirmURL", general, u"수진자 확인 URL"},
    {u"NhicUserName", general, u"심평원사용자아이디"},
    {u"NhicPassWord", general, u"심평원사용자암호"},
    {u"ShowGongjiAtStart", general, u"시작시 공지 보기"},
    {u"DefaultTreatBed", general, u"치료실기본BED"},
    {u"HangulChojinChart", general, u"초진챠트한글사용"},
    {u"AppPathZelvoDesk", general, u"원장실폴더파일"},
    {u"AppPathRegister", general, u"접수실폴더파일"},
    {u"AppPathTreat", general, u"치료실폴더파일"},
    {u"AppPathSQLManager", general, u"관리툴폴더파일"},
    {u"AppPathMoneyManager", general, u"금전출납폴더파일"},
    {u"AppPathDMManager", general, u"DM발송폴더파일"},
    {u"AppPathMDBBackUp", general, u"자료백업폴더파일"},
    {u"AppPathMDBCompact", general, u"자료압축폴더파일"},
    {u"MainDataBaseSetting", general, u"메인데이터베이스"},
    {u"TTTTreatTopMost", general, u"최상위윈도우(TTTTreat)"},
    {u"TTTTreatRefreshInterval", general, u"최신정보(TTTTreat)"},
    {u"TTTTreatWarningInterval", general, u"치료완료경고시간"},
    {u"TTTTreatWarningWav", general, u"치료완료경고음"},
    {u"TTTTreatWarningWavFile", general, u"치료완료경고음파일"},
    {u"TTTTreatTrackingUser", general, u"치료항목추적진료의사"},
    {u"TTTTreatWindowLeft", general, u"치료추적윈도우왼쪽"},
    {u"TTTTreatWindowTop", general, u"치료추적윈도우위쪽"},
    {u"TTTTreatWindowWidth", general, u"치료추적윈도우너비"},
    {u"TTTTreatWindowHeight", general, u"치료추적윈도우높이"},
    {u"TTTDrugPrepareTopMost", general, u"최상위윈도우(TTTDrugPrepare)"},
    {u"TTTDrugPrepareRefreshInterval", general, u"최신정보(TTTDrugPrepare)"},
    {u"TTTDrugPrepareWarningInterval", general, u"첩약준비완료경고시간"},
    {u"TTTDrugPrepareWarningWav", general, u"첩약준비완료경고음"},
    {u"TTTDrugPrepareWarningWavFile", general, u"첩약준비완료경고음파일"},
    {u"TTTDrugPrepareTrackingUser", general, u"첩약준비항목추적진료의사"},
    {u"TTTDrugPrepareWindowLeft", general, u"첩약준비윈도우왼쪽"},
    {u"TTTDrugPrepareWindowTop", general, u"첩약준비윈도우위쪽"},
    {u"TTTDrugPrepareWindowWidth", general, u"첩약준비윈도우너비"},
    {u"TTTDrugPrepareWindowHeight", general, u"첩약준비윈도우높이"},
    {u"TTTDrugEatTopMost", general, u"최상위윈도우(TTTDrugEat)"},
    {u"TTTDrugEatRefreshInterval", general, u"최신정보(TTTDrugEat)"},
    {u"TTTDrugEatWarningInterval", general, u"첩약복용완료경고시간"},
    {u"TTTDrugEatWarningWav", general, u"첩약복용완료경고음"},
    {u"TTTDrugEatWarningWavFile", general, u"첩약복용완료경고음파일"},
    {u"TTTDrugEatTrackingUser", general, u"첩약복용항목추적진료의사"},
    {u"TTTDrugEatWindowLeft", general, u"첩약복용윈도우왼쪽"},
    {u"TTTDrugEatWindowTop", general, u"첩약복용윈도우위쪽"},
    {u"TTTDrugEatWindowWidth", general, u"첩약복용윈도우너비"},
    {u"TTTDrugEatWindowHeight", general, u"첩약복용윈도우높이"},
    {u"RefreshWaitInterval", general, u"대기자목록갱신주기"},
    {u"DisplayWaitTitle1", general, u"대기자표시타이틀1"},
    {u"DisplayWaitTitle2", general, u"대기자표시타이틀2"},
    {u"DisplayWaitTitle3", general, u"대기자표시타이틀3"},
    {u"DisplayWaitTitle4", general, u"대기자표시타이틀4"},
    {u"DisplayWaitTitle5", general, u"대기자표시타이틀5"},
    {u"DisplayWaitDoctor1", general, u"대기자표시담당의사1"},
    {u"DisplayWaitDoctor2", general, u"대기자표시담당의사2"},
    {u"DisplayWaitDoctor3", general, u"대기자표시담당의사3"},
    {u"DisplayWaitDoctor4", general, u"대기자표시담당의사4"},
    {u"DisplayWaitDoctor5", general, u"대기자표시담당의사5"},
    {u"DisplayBoard", general, u"보드메세지표시"},
    {u"BoardMessage1", general, u"보드메세지내용1"},
    {u"BoardMessage2", general, u"보드메세지내용2"},
    {u"BoardMessage3", general, u"보드메세지내용3"},
    {u"BoardMessage4", general, u"보드메세지내용4"},
    {u"BoardMessage5", general, u"보드메세지내용5"},
    {u"CaptureDriverIndex", general, u"DRIVER INDEX"},
    {u"CaptureOverlaySelect", general, u"OVERLAY"},
    {u"CaptureVideoWidth", general, u"VIDEO WIDTH"},
    {u"CaptureVideoHeight", general, u"VIDEO HEIGHT"},
    {u"ReceiptPrintTarget", general, u"영수증출력형식"},
    {u"ReceiptPrintIncludeForm", general, u"영수증배경출력"},
    {u"PrintBackImageAsBitmap", general, u"양식출력배경형식"},
    {u"DBBackupUse", general, u"ZelvoDB예약백업사용"},
    {u"DBBackupFrequency", general, u"ZelvoDB예약백업주기"},
    {u"DBBackupWeekly", general, u"ZelvoDB예약백업요일"},
    {u"DBBackupTime", general, u"ZelvoDB예약백업시간"},
    {u"DBBackupUseZelvoAminBackupFolder", general, u"ZelvoDB예약관리툴예약폴더사용"},
    {u"DBBackupScheduleFolder", general, u"ZelvoDB예약백업폴더"},
    {u"DBBackupFileInfo", general, u"ZelvoDB백업파일정보"},
    {u"DBBackupFolder", general, u"SQL데이터백업폴더"},
    {u"BogYakHospName", general, u"복용법 추가메모1"},
    {u"BogYakPhoneNo", general, u"복용법 추가메모2"},
    {u"ZelvoOCSServerIP", general, u"ZelvoOCS Server IP"},
    {u"ZelvoOCSUserInfoDoctor", general, u"ZelvoOCS UserInfo Doctor"},
    {u"ZelvoOCSUserInfoNurse", general, u"ZelvoOCS UserInfo Nurse"},
    {u"ZelvoOCSSenderZip", general, u"ZelvoOCS Sender Zip"},
    {u"ZelvoOCSSenderAddress", general, u"ZelvoOCS Sender Address"},
    {u"ZelvoOCSDoctorCell", general, u"ZelvoOCS Doctor Cell"},
    {u"ShowVisitTime", general, u"대기실치료실내원시각표시"},
    {u"ReceiptPrinter", general, u"영수증프린터디바이스", u"<자동설정>"},
    {u"FranchiseGroup", general, u"프랜차이즈그룹이름"},
    {u"FranchiseLocalName", general, u"프랜차이즈가맹점이름"},
    {u"DefaultUser", doctorsRoom, u"기본 사용자"},
    {u"DefaultEDISusin", doctorsRoom, u"EDI 기본 수신처"},
    {u"PrintAllVisit", doctorsRoom, u"챠트확인범위"},
    {u"PrintTitle", doctorsRoom, u"챠트확인표지출력"},
    {u"PrintChojin", doctorsRoom, u"초진챠트출력"},
    {u"PrintTest", doctorsRoom, u"검사결과출력"},
    {u"PrintImageSelect", doctorsRoom, u"챠트표지그림선택"},
    {u"TrackingUserForDoctor", doctorsRoom, u"대기실치료실진료의사"},
    {u"MaxAtStartMain", doctorsRoom, u"시작시최대화"},
    {u"Chojin3090SameDisease", doctorsRoom, u"3090동일상병초진재진"},
    {u"ChojinWithoutOldTreat", doctorsRoom, u"내원기록무초진"},
    {u"OwnIonChim", doctorsRoom, u"전자침보유여부"},
    {u"OwnLaserChim", doctorsRoom, u"레이저침보유여부"},
    {u"OwnChimElectric", doctorsRoom, u"침전기자극보유여부"},
    {u"OwnYangDoRak", doctorsRoom, u"양도락보유여부"},
    {u"OwnMacJeonDo", doctorsRoom, u"맥전도보유여부"},
    {u"OwnKyeongRak", doctorsRoom, u"경락기능보유여부"},
    {u"CurrentAddNotice", doctorsRoom, u"대기실치료실환자추가알림"},
    {u"CurrentAddNoticeAutoUnload", doctorsRoom, u"환자추가알림자동닫기"},
    {u"ChartDoneAutoSet", doctorsRoom, u"자동으로챠팅완료설정"},
    {u"LastYakChimMoney", doctorsRoom, u"약침액진료비"},
    {u"MoneyDisplayForDoctor", doctorsRoom, u"발생진료비표시"},
    {u"ViewMarkedFreeNoteSummary", doctorsRoom, u"FREENOTE요약보기범위"},
    {u"ViewMarkedFreeNoteOnly1Red", doctorsRoom, u"FREENOTE1만빨강표시"},
    {u"AutoCheckForYagan", doctorsRoom, u"진료비야간가산자동체크"},
    {u"NoPrintWritingTime", doctorsRoom, u"진료기록시각출력안함"},
    {u"ShowPointFirst", doctorsRoom, u"챠트표시시혈자리먼저표시"},
    {u"ViewFreeNoteWindowPosition", doctorsRoom, u"VIEWFREENOTEWINPOS"},
    {u"DefaultDDDNumber", reception, u"기본 지역 번호"},
    {u"ManageMedicalInfo", reception, u"기본의학정보관리"},
    {u"TrackingUserForNurse", reception, u"대기실치료실진료의사"},
    {u"MaxAtStartRegist", reception, u"시작시최대화"},
    {u"MoneyDisplayForNurse", reception, u"발생진료비표시"},
    {u"TakBaeDLLUse", reception, u"택배라벨출력DLL사용"},
    {u"TakBaeSenderName", reception, u"택배라벨출력SenderName"},
    {u"TakBaeSenderCellPhone", reception, u"택배라벨출력SenderCell"},
    {u"TakBaeSenderPhone", reception, u"택배라벨출력SenderPhone"},
    {u"TakBaeSenderAddress", reception, u"택배라벨출력SenderAddress"},
    {u"TakBaeSenderZipCode", reception, u"택배라벨출력SenderZip"},
    {u"TakBaePrintDLLCallsign", reception, u"택배라벨출력dllsign"},
    {u"SSUseSimpleSunap", reception, u"간편수납기능사용여부"},
    {u"SSBohumBoninCatagory", reception, u"간편수납본인부담수납방식"},
    {u"SSDefaultJeolsa", reception, u"간편수납절사기본값"},
    {u"SSFixedBohumChojin", reception, u"간편수납정액보험초진"},
    {u"SSFixedBohumJejin", reception, u"간편수납정액보험재진"},
    {u"SSFixedBohumOldMan", reception, u"간편수납보험경로우대"},
    {u"SSFixedBoho2", reception, u"간편수납보호2종"},
    {u"SSFixedBoho2Handicap", reception, u"간편수납보호2종장애"},
    {u"SSFixedWriteHalin", reception, u"간편수납차액할인기록"},
    {u"SSFixedNotOverSunap", reception, u"간편수납과수납허용"},
    {u"SSGeneralAllSunap", reception, u"간편수납일반진료비수납"},
};

const QString sharedApplication = QStringLiteral("Zelvo Desk");

} // namespace

std::span<const clsUserSetting::Property> clsUserSetting::properties()
{
    return sharedVocabulary;
}

QString clsUserSetting::value(QStringView property) const
{
    const Property &found = findProperty(sharedVocabulary, property);
    return registry::GetSetting(sharedApplication, QString::fromUtf16(found.section), QString::fromUtf16(found.key),
                                QString::fromUtf16(found.defaultText));
}

void clsUserSetting::setValue(QStringView property, const QVariant &value) const
{
    const Property &found = findProperty(sharedVocabulary, property);
    registry::SaveSetting(sharedApplication, QString::fromUtf16(found.section), QString::fromUtf16(found.key),
                          runtime::text(value));
}
