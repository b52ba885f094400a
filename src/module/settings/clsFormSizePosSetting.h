#pragma once

#include <QObject>
#include <QString>

/// Where the main window stood and how its columns were divided, per user and machine. All values are texts; the empty
/// text means that none is stored. The row heights are kept for older desks and are not used.
class clsFormSizePosSetting : public QObject
{
    Q_OBJECT
public:
    Q_INVOKABLE explicit clsFormSizePosSetting(QObject *parent = nullptr);

    Q_INVOKABLE QString FirstRowHeight() const { return stored(Key::FirstRowHeight); }
    Q_INVOKABLE void FirstRowHeight(const QString &value) { store(Key::FirstRowHeight, value); }
    Q_INVOKABLE QString SecondRowHeight() const { return stored(Key::SecondRowHeight); }
    Q_INVOKABLE void SecondRowHeight(const QString &value) { store(Key::SecondRowHeight, value); }
    Q_INVOKABLE QString ThirdRowHeight() const { return stored(Key::ThirdRowHeight); }
    Q_INVOKABLE void ThirdRowHeight(const QString &value) { store(Key::ThirdRowHeight, value); }
    Q_INVOKABLE QString FirstColWidth() const { return stored(Key::FirstColWidth); }
    Q_INVOKABLE void FirstColWidth(const QString &value) { store(Key::FirstColWidth, value); }
    Q_INVOKABLE QString SecondColWidth() const { return stored(Key::SecondColWidth); }
    Q_INVOKABLE void SecondColWidth(const QString &value) { store(Key::SecondColWidth, value); }
    Q_INVOKABLE QString ThirdColWidth() const { return stored(Key::ThirdColWidth); }
    Q_INVOKABLE void ThirdColWidth(const QString &value) { store(Key::ThirdColWidth, value); }
    Q_INVOKABLE QString FormPos_x() const { return stored(Key::FormPos_x); }
    Q_INVOKABLE void FormPos_x(const QString &value) { store(Key::FormPos_x, value); }
    Q_INVOKABLE QString FormPos_y() const { return stored(Key::FormPos_y); }
    Q_INVOKABLE void FormPos_y(const QString &value) { store(Key::FormPos_y, value); }
    Q_INVOKABLE QString FormHeight() const { return stored(Key::FormHeight); }
    Q_INVOKABLE void FormHeight(const QString &value) { store(Key::FormHeight, value); }
    Q_INVOKABLE QString FormWidth() const { return stored(Key::FormWidth); }
    Q_INVOKABLE void FormWidth(const QString &value) { store(Key::FormWidth, value); }
    Q_INVOKABLE QString FormIsMaximized() const { return stored(Key::FormIsMaximized); }
    Q_INVOKABLE void FormIsMaximized(const QString &value) { store(Key::FormIsMaximized, value); }

private:
    enum class Key {
        FirstRowHeight,
        SecondRowHeight,
        ThirdRowHeight,
        FirstColWidth,
        SecondColWidth,
        ThirdColWidth,
        FormPos_x,
        FormPos_y,
        FormHeight,
        FormWidth,
        FormIsMaximized,
    };
    static QString stored(Key key);
    static void store(Key key, const QString &value);
};
