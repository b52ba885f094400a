#include "money/askWhetherToSave.h"

#include "platform/controls/MessageBox.h"

bool askWhetherToSave(const QString &changes, const QString &title, QWidget *owner)
{
    const QString question =
        QStringLiteral("다른 데스크에서 이 거래의 수납 내역이나 미수금을 먼저 변경했습니다. 아직 아무것도 저장하지 "
                       "않았습니다.\n이미 받은 금액이 아닌지 확인하십시오. 그래도 저장하시겠습니까?\n\n변경된 내용:\n")
        + changes;
    return controls::MsgBox(question, controls::YesNo | controls::QuestionIcon | controls::SecondButtonDefault, title,
                            owner)
           == controls::Answer::Yes;
}
