#include "products/RecordEditor.h"

#include "forms/FormRow.h"
#include "platform/controls/MessageBox.h"
#include "platform/controls/Named.h"
#include "platform/runtime/Attempt.h"
#include "platform/runtime/Log.h"
#include "products/GoneRow.h"

#include <QPointer>
#include <QVBoxLayout>

#include <utility>

using controls::InformationIcon;
using controls::MsgBox;

RecordEditor::RecordEditor(SaleSession &session, PaneShell &shell, SaleSession::RecordsetPtr &rows, Texts texts,
                           QWidget *parent)
    : QWidget(parent)
    , session_(session)
    , shell_(shell)
    , rows_(rows)
    , list_(rows)
    , texts_(std::move(texts))
{
}

void RecordEditor::makeList(const QString &frame, int index, const QString &caption, const QString &grid,
                            std::vector<controls::GridColumn> columns)
{
    listFrame_ = makePanelFrame(frame, index, caption, this);
    grid_ = controls::named(new controls::RecordsetGrid(listFrame_), grid);
    list_.setGrid(grid_);
    grid_->setAccessibleName(caption);
    grid_->setColumns(std::move(columns));
    grid_->setEmptyText(QStringLiteral("아직 아무것도 없습니다. 추가를 누르십시오."));
    auto *layout = new QVBoxLayout(listFrame_);
    layout->addWidget(grid_);
}

void RecordEditor::makeSearch(const controls::FindBar::Design &design)
{
    search_ = new controls::FindBar(grid_, design, listFrame_);
    static_cast<QVBoxLayout *>(listFrame_->layout())->insertWidget(0, search_);
}

void RecordEditor::makePanel(const QString &frame, int index)
{
    panel_ = makePanelFrame(frame, index, QString(), this);
}

void RecordEditor::makeStrip(int index, const QString &commands, const QString &saveButtons, const QString &saveCaption)
{
    strip_ = controls::named(new QWidget(panel_), QStringLiteral("elTranMnu"), index);
    commands_ =
        makePushChecks(commands, {QStringLiteral("추가"), QStringLiteral("수정"), QStringLiteral("삭제")}, strip_);
    saveButtons_ = makePushChecks(saveButtons, {saveCaption, QStringLiteral("취소")}, strip_);
    layOutStrip(strip_, commands_, saveButtons_);
    auto *layout = new QVBoxLayout(panel_);
    layout->setContentsMargins(9, 4, 9, 6);
    layout->addWidget(strip_);
}

void RecordEditor::placeInPanel(QLayout *fields)
{
    static_cast<QVBoxLayout *>(panel_->layout())->addLayout(fields, 1);
}

void RecordEditor::connectControls()
{
    connect(grid_, &controls::RecordsetGrid::rowChange, this, &RecordEditor::fillPanel);
    for (const Command command : {Add, Edit, Delete})
        commands_[command]->onPush(this, [this, command] { run(command); });
    saveButtons_[0]->onPush(this, [this] { saveRow(); });
    saveButtons_[1]->onPush(this, [this] { endEdit({}); });
}

void RecordEditor::run(Command command)
{
    switch (command) {
    case Add:
        addRow();
        break;
    case Edit:
        editRow();
        break;
    case Delete:
        deleteRow();
        break;
    }
}

void RecordEditor::loadIfClosed()
{
    if (!isLoaded())
        load();
}

void RecordEditor::fillPanel()
{
    if (list_.comesAnew() || inEdit() || !isLoaded())
        return;
    if (!rows_->hasCurrent())
        resetPane();
    else if (rows_->isGone())
        leaveGone();
    else
        showRow(*rows_);
}

/// Whether the row is still there; then it is on view.
bool RecordEditor::readListAnew(const ado::Bookmark &row)
{
    const bool found = list_.requeryQuietlyAt(row);
    if (found)
        fillPanel();
    else
        showNone();
    return found;
}

void RecordEditor::leaveGone()
{
    const QString told = leaveGoneRow(list_, texts_.kind);
    showNone();
    MsgBox(told, InformationIcon, texts_.title, this);
}

EditModeTable RecordEditor::editMode() const
{
    EditModeTable table;
    table.code = texts_.editCode;
    table.containers = {strip_, panel_};
    table.group = editGroup();
    table.commands = {commands_.begin(), commands_.end()};
    table.saveButtons = {saveButtons_.begin(), saveButtons_.end()};
    table.editColors = fieldColors();
    table.entryColors = table.editColors;
    return table;
}

void RecordEditor::enterEdit(QWidget *firstField)
{
    shell_.enterEditMode(texts_.editCode);
    firstField->setFocus();
}

void RecordEditor::leaveEdit()
{
    shell_.leaveEditMode(texts_.editCode);
    shell_.paintEntryColors();
}

void RecordEditor::refuse(const QString &told, int flags, const QString &title, QWidget *field)
{
    const QPointer<RecordEditor> alive(this);
    MsgBox(told, flags, title, this);
    if (alive)
        field->setFocus();
}

void RecordEditor::endSave(SaveOutcome outcome, const ado::Bookmark &edited)
{
    const QPointer<RecordEditor> alive(this);
    const bool failed = outcome == SaveOutcome::Failed;
    if (failed)
        MsgBox(QStringLiteral("저장을 하지 못했습니다. 서버와의 연결을 확인하십시오."), InformationIcon,
               QStringLiteral("저장"), this);
    if (alive)
        endEdit(failed ? edited : ado::Bookmark());
    if (alive && !failed)
        tellDone(QStringLiteral("저장"));
}

void RecordEditor::endEdit(const ado::Bookmark &row)
{
    leaveEdit();
    const QPointer<RecordEditor> alive(this); // a row that is shown may open a box
    runtime::Attempt attempt;
    attempt([&] {
        if (!isLoaded())
            load();
        else if (row.isValid())
            readListAnew(row);
        else
            rows_->Requery();
    });
    if (!alive)
        return;
    grid_->setFocus();
    mode_ = Neither;
}

bool RecordEditor::abandonEdit()
{
    if (!inEdit())
        return false;
    runtime::Attempt attempt; // a lost server is met by whatever begins next
    attempt([this] { endEdit({}); });
    return true;
}

bool RecordEditor::agrees(const QString &question, const QString &title)
{
    const QPointer<RecordEditor> alive(this);
    return MsgBox(question, controls::YesNo | InformationIcon, title, this) == controls::Answer::Yes && alive;
}

void RecordEditor::tellDone(const QString &what)
{
    emit session_.done(texts_.kind + u' ' + what);
}

void RecordEditor::tellIfGone(const ado::Bookmark &row, const std::function<void()> &remove)
{
    try {
        remove();
    } catch (const runtime::RuntimeError &error) {
        if (!isConflict(error) || readListAnew(row))
            throw;
        runtime::trapped();
        leaveGone();
    }
}
