#pragma once

#include <QDateEdit>

namespace controls {

/// A date picker: "2026-11-24", with a Korean calendar that drops down. The wheel turns it only while it has the focus,
/// and the focus comes to the day: a stray arrow key is off by a day, not by a year.
class DateEdit : public QDateEdit
{
    Q_OBJECT
public:
    explicit DateEdit(QWidget *parent = nullptr);

protected:
    /// Tab leaves the picker; the stock control would walk through year, month and day first.
    // NOLINTNEXTLINE(bugprone-parent-virtual-call): it is the stock control's own override that is left out
    bool focusNextPrevChild(bool next) override { return QWidget::focusNextPrevChild(next); }
    void focusInEvent(QFocusEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    void dressCalendar();

    bool calendarIsDressed_ = false;
    bool hadFocus_ = false;
};

} // namespace controls
