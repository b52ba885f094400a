#include "platform/controls/FileDialog.h"

#include "platform/controls/MessageBox.h"
#include "platform/controls/Modal.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QStandardPaths>

namespace controls {

namespace {

/// Whatever stood in the name: a file system takes it.
QString documentNamed(QString name)
{
    for (QChar &character : name) {
        if (character < u' ' || QStringView(u"\\/:*?\"<>|").contains(character))
            character = u'-';
    }
    const QDir documents(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    return (documents.exists() ? documents : QDir::home()).filePath(name);
}

} // namespace

// The stock dialog asks its own questions in boxes that do not outlive their owner: about a file that is missing, or that is
// there already. It is kept from both.

QString askOpenFile(QWidget *owner, const QString &title, const QString &filter)
{
    const Modal<QFileDialog> dialog(owner, title, QString(), filter);
    dialog->setFileMode(QFileDialog::AnyFile);
    dialog->setOption(QFileDialog::HideNameFilterDetails);
    dialog->setOption(QFileDialog::ReadOnly);
    return runModal(dialog.get()) == QDialog::Accepted ? dialog->selectedFiles().value(0) : QString();
}

QString askSaveFile(QWidget *owner, const QString &title, const QString &proposal, const QString &filter,
                    const QString &suffix)
{
    const Modal<QFileDialog> dialog(owner, title, documentNamed(proposal), filter);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setOption(QFileDialog::DontConfirmOverwrite);
    constexpr int question = YesNo | QuestionIcon | SecondButtonDefault;
    while (runModal(dialog.get()) == QDialog::Accepted) {
        QString file = dialog->selectedFiles().value(0);
        if (const QString ending = u'.' + suffix; !file.endsWith(ending, Qt::CaseInsensitive))
            file += ending;
        if (!QFileInfo::exists(file)
            || MsgBox(QStringLiteral("같은 이름의 파일이 있습니다. 새 파일로 바꾸시겠습니까?\n파일: ") + file, question,
                      title, owner)
                   == Answer::Yes)
            return file;
    }
    return {};
}

} // namespace controls
