#pragma once

#include <QLineEdit>

namespace desk {

/// A line that tells every change of what is read in it, the Hangul syllable that is still being composed included.
class SearchBox : public QLineEdit
{
    Q_OBJECT
public:
    explicit SearchBox(QWidget *parent = nullptr);

signals:
    void typed(const QString &text);

protected:
    void inputMethodEvent(QInputMethodEvent *event) override;
    /// Coming back to it, by key, mouse or from another window, selects the text: the next name is typed over it.
    void focusInEvent(QFocusEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    bool focusCameByMouse_ = false;
};

} // namespace desk
