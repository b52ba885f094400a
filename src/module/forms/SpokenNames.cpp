#include "forms/SpokenNames.h"

#include "forms/ControlsByName.h"

namespace {

struct SpokenName
{
    const char *control;
    const char16_t *name;
};

// clang-format off
constexpr SpokenName names[] = {
    // The sale.
    {"txtSaleProductLists_2", u"물품 판매단가"},
    {"txtSaleProductLists_3", u"물품 메모"},
    {"txtSaleProductLists_6", u"추가할 판매단가"},
    {"txtSaleProductLists_8", u"추가할 총액"},
    {"udNoOfProdPlusMinus_up", u"수량 1 늘리기"},
    {"udNoOfProdPlusMinus_down", u"수량 1 줄이기"},
    {"udNoOfProdPlusMinusBy5_up", u"수량 5 늘리기"},
    {"udNoOfProdPlusMinusBy5_down", u"수량 5 줄이기"},
    {"cmdCSAppendDetail", u"판매 내역 추가"},
    {"chkCmdOrderMasterED_0", u"거래 수정"},
    {"chkCmdOrderMasterED_1", u"거래 삭제"},
    {"chkcmdCSSaveInfo_0", u"거래 저장"},
    {"chkcmdCSSaveInfo_1", u"거래 수정 취소"},
    {"uxStartDateDTP", u"영수증 기간 시작일"},
    {"uxEndDateDTP", u"영수증 기간 종료일"},
    {"txtOrderMaster_3", u"배송 핸드폰"},
    {"txtOrderMaster_4", u"배송 전화번호"},
    {"txtOrderMaster_7", u"거래 미수금"},
    {"txtOrderMaster_9", u"거래 총액"},
    {"chkCmdRefund", u"판매 내역 반품"},
    {"chkCmdDelOrderDetail", u"판매 내역 삭제"},
    {"chkCmdMnuCustTrans", u"수납 메뉴"},
    {"chkcmdAddEditDelTran_0", u"수납 내역 추가"},
    {"chkcmdAddEditDelTran_1", u"수납 내역 수정"},
    {"chkcmdAddEditDelTran_2", u"수납 내역 삭제"},
    {"chkCmdSaveTrans_0", u"수납 내역 저장"},
    {"chkCmdSaveTrans_1", u"수납 내역 수정 취소"},
    {"chkCmdSaveMemo", u"수납 메모 저장"},
    {"dtpTransReceiveDate", u"수납 일자"},
    {"optTransOperator_0", u"방법 할인"},
    {"optTransOperator_1", u"방법 절사"},
    {"optTransOperator_2", u"방법 수납"},
    {"optTransOperator_3", u"방법 환불"},
    {"txtTransMoney", u"수납 내역 금액"},
    {"txtTransMemo", u"수납 메모"},
    // The management.
    {"chkCmdProdSaleAddEdiDel_0", u"물품 추가"},
    {"chkCmdProdSaleAddEdiDel_1", u"물품 수정"},
    {"chkCmdProdSaleAddEdiDel_2", u"물품 삭제"},
    {"chkCmdSaveProduct_0", u"물품 저장"},
    {"chkCmdSaveProduct_1", u"물품 수정 취소"},
    {"txtProSaleInfo_3", u"물품 메모"},
    {"tdbProductIncoming", u"구매 내역"},
    {"chkcmdIncomingAED_0", u"구매 내역 추가"},
    {"chkcmdIncomingAED_1", u"구매 내역 수정"},
    {"chkcmdIncomingAED_2", u"구매 내역 삭제"},
    {"chkcmdIncomingSave_0", u"구매 내역 저장"},
    {"chkcmdIncomingSave_1", u"구매 내역 수정 취소"},
    {"udIincomingCount_up", u"구매수량 1 늘리기"},
    {"udIincomingCount_down", u"구매수량 1 줄이기"},
    {"txtIncPriceTotal", u"구매 총액"},
    {"txtIncCompanyName", u"구매한 거래처"},
    {"dtpIncDate", u"구매 날짜"},
    {"txtIncMemo", u"구매 메모"},
    {"tdbCompanyMaster", u"거래처 목록"},
    {"chkcmdCmpnyMstrAED_0", u"거래처 추가"},
    {"chkcmdCmpnyMstrAED_1", u"거래처 수정"},
    {"chkcmdCmpnyMstrAED_2", u"거래처 삭제"},
    {"chkcmdCmpnyMstrSave_0", u"거래처 저장"},
    {"chkcmdCmpnyMstrSave_1", u"거래처 수정 취소"},
    {"txtCmCompanyName", u"거래처 이름"},
    {"txtCmMemo", u"거래처 메모"},
    // The properties of the shop.
    {"chkCmdSaveProperties", u"지점 정보 저장"},
    // The return.
    {"txtUnitCount", u"판매한 수량"},
    {"txtRfndUnitCount", u"반품 수량"},
    {"dtpRfndDate", u"반품 날짜"},
    {"txtRfndMemo", u"반품 메모"},
    // Taking money.
    {"lblMustReceipt_0", u"판매 금액"},
    {"lblMustReceipt_2", u"할인, 절사 후 금액"},
    {"chkGeneralRemain2Money_0", u"현금 전액"},
    {"chkGeneralRemain2Money_1", u"현금 나머지"},
    {"chkGeneralRemain2Money_2", u"카드 전액"},
    {"chkGeneralRemain2Money_3", u"카드 나머지"},
    {"chkGeneralHalinConfirm", u"할인율 적용"},
    {"ssrUpDown_0", u"금액에 만원 더하기"},
    {"ssrUpDown_1", u"금액에 천원 더하기"},
    {"ssrUpDown_2", u"금액에 백원 더하기"},
    {"ssrUpDown_3", u"금액에서 만원 빼기"},
    {"ssrUpDown_4", u"금액에서 천원 빼기"},
    {"ssrUpDown_5", u"금액에서 백원 빼기"},
};
// clang-format on

} // namespace

void giveSpokenNames(QWidget *window)
{
    const QMultiHash<QString, QWidget *> controls = controlsByName(*window);
    for (const SpokenName &entry : names) {
        for (QWidget *control : controls.values(QLatin1String(entry.control)))
            control->setAccessibleName(QString::fromUtf16(entry.name));
    }
}
