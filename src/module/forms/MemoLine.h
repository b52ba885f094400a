#pragma once

#include "forms/MoneyBox.h"

/// A text box of one line that has room for several: while it is not typed into, it shows a long text over all of them.
class MemoLine : public MoneyBox
{
    Q_OBJECT
public:
    explicit MemoLine(const TextBoxHabits &habits = {}, QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
};
