#pragma once

#include "platform/ado/Connection.h"
#include "platform/runtime/Currency.h"

#include <QDate>
#include <QObject>
#include <QVariant>
#include <QWidget>

#include <cstdint>

class TillWindow : public QWidget
{
    Q_OBJECT
};

/// A class with a member of every kind that a caller by name meets.
class Till : public QObject
{
    Q_OBJECT
public:
    Q_INVOKABLE int Count() const { return count_; }
    Q_INVOKABLE void Add(std::int32_t count) { count_ += count; }

    Q_INVOKABLE QString Describe(const QString &name, qint16 count = 1, bool sold = false) const;
    Q_INVOKABLE runtime::Currency Total(runtime::Currency price, int count) const { return price * count; }
    Q_INVOKABLE QDate NextDay(const QDate &day) const { return day.addDays(1); }
    Q_INVOKABLE QVariant Echo(const QVariant &value) const { return value; }

    /// Takes from both and gives back through both.
    Q_INVOKABLE void Exchange(QString &left, qint32 &right);
    Q_INVOKABLE void Fill(QVariant &value) { value = QStringLiteral("채움"); }
    /// Hands back another connection in the place of the one given; returns the address of the given one.
    Q_INVOKABLE QString Replace(ado::ConnectionPtr &connection, const QString &address);

    /// A window that stays when the till goes.
    Q_INVOKABLE void Open();

signals:
    void counted();

private:
    Q_INVOKABLE void Secret() { count_ = -1; }

    int count_ = 0;
};
