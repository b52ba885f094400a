#pragma once

#include "data/Codes.h"
#include "platform/controls/Palette.h"

#include <QString>

#include <array>

/// What is asked and told of one kind of line; the index in the table is its sale::LineType.
struct LineKind
{
    QString caption;
    QString questionTitle;
    QString choices; ///< what Yes and No mean
    QString failureTitle;
    QString failureText;
    controls::Ground ground; ///< of the button that adds it
    QString addHint;         ///< tooltip of that button
    QString added;           ///< behind the quantity, when it was added
};

/// Told beside the failure.
inline const QString productIsGone = QStringLiteral("다른 데스크에서 먼저 삭제한 물품입니다.");

inline const std::array<LineKind, 3> lineKinds = {{
    {QStringLiteral("일반"), QStringLiteral("판매"),
     QStringLiteral("예(오늘 거래일자로 추가), 아니오(선택된 거래일자로 추가)"), QStringLiteral("판매추가"),
     QStringLiteral("판매추가를 실패 했습니다. 다시 시도 하십시오."), controls::Ground::Accent,
     QStringLiteral("물품 추가"), QStringLiteral("개 추가")},
    {sale::lineTypeText(sale::Service), sale::lineTypeText(sale::Service),
     QStringLiteral("예/오늘 날짜로 서비스추가, 아니오/고객판매마스터에 선택되어있는 날짜"),
     QStringLiteral("서비스추가"), QStringLiteral("서비스추가를 실패 했습니다. 다시 시도 하십시오."),
     controls::Ground::Amber, QStringLiteral("서비스로 추가"), QStringLiteral("개 서비스 추가")},
    {sale::lineTypeText(sale::Loss), sale::lineTypeText(sale::Loss),
     QStringLiteral("예/오늘 날짜로 망실기록, 아니오/고객판매마스터에 선택되어있는 날짜"), QStringLiteral("망실기록"),
     QStringLiteral("망실기록을 실패 했습니다. 다시 시도 하십시오."), controls::Ground::Red,
     QStringLiteral("망실로 추가"), QStringLiteral("개 망실 기록")},
}};
