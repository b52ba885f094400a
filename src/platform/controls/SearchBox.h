#pragma once

#include <QLineEdit>

#include <functional>

namespace controls {

/// A line that tells every change of what is read in it, the Hangul syllable that is still being composed included. By key
/// or input method it tells when the stock line is through with them: who listens may open a box, and the window may go
/// beneath it.
class SearchBox : public QLineEdit
{
    Q_OBJECT
public:
    explicit SearchBox(QWidget *parent = nullptr);

    /// What is read in it.
    QString shownText() const;

signals:
    void typed(const QString &text);

protected:
    /// Coming back to it, by key, mouse or from another window, selects the text: the next name is typed over it.
    void focusInEvent(QFocusEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void inputMethodEvent(QInputMethodEvent *event) override;

private:
    void byStockLine(const std::function<void()> &answer);
    void tellChange();

    QString composing_;
    QString told_;
    bool inStockLine_ = false;
    bool focusCameByMouse_ = false;
};

} // namespace controls
