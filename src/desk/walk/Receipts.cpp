#include "desk/walk/Receipts.h"

#include "platform/registry/AppSettings.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>

namespace walk {

namespace {

/// A file of the folder that is not there yet.
QString freshFile(const Actor &actor, const QString &name)
{
    const QString file = QDir(actor.folder()).absoluteFilePath(name);
    QFile::remove(file);
    return file;
}

void mustExist(const QString &file)
{
    if (QFileInfo(file).size() <= 0)
        throw Astray(QStringLiteral("'%1' was not written").arg(file));
}

} // namespace

void savePreview(Actor &actor, QWidget *window, const QString &button, const QString &name)
{
    const QString file = freshFile(actor, name + QStringLiteral(".pdf"));
    actor.inModalWindow([&] { actor.click(actor.control(window, button)); },
                        [&](QWidget *preview) {
                            actor.picture(name + QStringLiteral("-preview"), preview);
                            actor.inModalWindow(
                                [&] { actor.click(actor.control(preview, QStringLiteral("cmdSavePdf"))); },
                                [&](QWidget *dialog) {
                                    actor.control<QLineEdit>(dialog, QStringLiteral("fileNameEdit"))->setText(file);
                                    actor.press(dialog, Qt::Key_Return);
                                });
                            actor.press(preview, Qt::Key_Escape);
                        });
    mustExist(file);
}

void printRoll(Actor &actor, QWidget *sale, const QString &name)
{
    const QString file = freshFile(actor, name + QStringLiteral(".pdf"));
    // A printer of this name is a file.
    registry::SaveSetting(QStringLiteral("Zelvo Desk"), QStringLiteral("젤보 데스크"),
                          QStringLiteral("영수증프린터디바이스"), file);
    actor.click(actor.control(sale, QStringLiteral("chkCmdPrintReceiptRollPrinter")));
    mustExist(file);
    actor.say(QStringLiteral("롤 프린터 영수증을 %1.pdf로 출력했습니다.").arg(name));
}

void printReceipts(Actor &actor, QWidget *sale)
{
    savePreview(actor, sale, QStringLiteral("chkCmdPrintReceipt_0"), QStringLiteral("receipt"));
    actor.say(QStringLiteral("영수증을 미리 보고 receipt.pdf로 저장했습니다."));
    savePreview(actor, sale, QStringLiteral("chkCmdPrintReceipt_1"), QStringLiteral("period"));
    actor.say(QStringLiteral("기간별 영수증을 미리 보고 period.pdf로 저장했습니다."));
    printRoll(actor, sale, QStringLiteral("roll"));
}

} // namespace walk
