#include "components/frame/SavedLine.h"

#include "platform/controls/EventEdge.h"
#include "platform/controls/MessageBox.h"
#include "platform/controls/Named.h"

#include <QDesktopServices>
#include <QDir>
#include <QHBoxLayout>
#include <QUrl>

namespace statistics {

SavedLine::SavedLine(QWidget *parent)
    : QWidget(parent)
    , lblSaved_(controls::named(new QLabel, QStringLiteral("lblSaved")))
    , cmdOpen_(controls::named(new QPushButton(QStringLiteral("열기")), QStringLiteral("cmdOpen")))
{
    lblSaved_->setTextFormat(Qt::PlainText);
    lblSaved_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    lblSaved_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    cmdOpen_->setAutoDefault(false);
    cmdOpen_->setAccessibleName(QStringLiteral("저장한 파일 열기"));
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(lblSaved_, 1);
    row->addWidget(cmdOpen_);
    controls::onEvent(cmdOpen_, &QPushButton::clicked, this, [this](bool) { open(); });
    hide();
}

void SavedLine::tell(const QString &path)
{
    path_ = path;
    lblSaved_->setToolTip(QDir::toNativeSeparators(path));
    show();
    showPath();
}

void SavedLine::showPath()
{
    // The file's name stands at the end.
    lblSaved_->setText(lblSaved_->fontMetrics().elidedText(
        QStringLiteral("저장했습니다: ") + QDir::toNativeSeparators(path_), Qt::ElideMiddle, lblSaved_->width()));
}

void SavedLine::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    layout()->activate();
    showPath();
}

void SavedLine::open()
{
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(path_)))
        controls::MsgBox(QStringLiteral("파일을 열지 못했습니다. CSV 파일을 여는 프로그램에서 직접 여십시오.\n파일: ")
                             + QDir::toNativeSeparators(path_),
                         controls::InformationIcon, QStringLiteral("Excel용 저장"), this);
}

} // namespace statistics
