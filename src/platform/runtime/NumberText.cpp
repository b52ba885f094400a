#include "platform/runtime/NumberText.h"

namespace runtime {

namespace {

bool isWonSign(QChar c)
{
    return c == QLatin1Char('\\') || c == QChar(0x20A9) || c == QChar(0xFFE6);
}

/// Reads sign, digits, point and exponent from `position` on, and moves it behind them.
class NumberReader
{
public:
    NumberReader(const QString &text, bool currencyMarks)
        : text_(text)
        , currencyMarks_(currencyMarks)
    {
    }

    bool read()
    {
        if (readHexadecimal())
            return true;
        readSign();
        readDigits();
        if (peek() == QLatin1Char('.')) {
            ++position_;
            number_ += QLatin1Char('.');
            readDigits();
        }
        if (digits_ > 0)
            readExponent();
        return digits_ > 0;
    }

    bool atEnd() const { return position_ >= text_.size(); }
    const QString &number() const { return number_; }

private:
    QChar peek(qsizetype ahead = 0) const
    {
        return position_ + ahead < text_.size() ? text_.at(position_ + ahead) : QChar();
    }

    bool readHexadecimal()
    {
        if (peek() != QLatin1Char('&') || peek(1).toUpper() != QLatin1Char('H'))
            return false;
        bool ok = false;
        const qint64 value = text_.mid(position_ + 2).toLongLong(&ok, 16);
        if (!ok)
            return false;
        position_ = text_.size();
        // Four digits name a 16-bit pattern, up to eight a 32-bit one.
        number_ = QString::number(text_.size() <= 6 ? qint64(qint16(value)) : qint64(qint32(value)));
        digits_ = 1;
        return true;
    }

    void readSign()
    {
        bool signSeen = false;
        while (true) {
            const QChar c = peek();
            if (!signSeen && (c == QLatin1Char('-') || c == QLatin1Char('+'))) {
                signSeen = true;
                if (c == QLatin1Char('-'))
                    number_ += c;
            } else if (!(currencyMarks_ && (isWonSign(c) || c.isSpace()))) {
                return;
            }
            ++position_;
        }
    }

    void readDigits()
    {
        while (true) {
            const QChar c = peek();
            if (c.isDigit()) { // digits of other scripts count as their value
                number_ += QLatin1Char(char('0' + c.digitValue()));
                ++digits_;
            } else if (!(currencyMarks_ && digits_ > 0 && c == QLatin1Char(','))) {
                return;
            }
            ++position_;
        }
    }

    void readExponent()
    {
        const QChar mark = peek().toUpper();
        if (mark != QLatin1Char('E') && mark != QLatin1Char('D'))
            return;
        const QChar sign = peek(1);
        const bool hasSign = sign == QLatin1Char('-') || sign == QLatin1Char('+');
        if (!peek(hasSign ? 2 : 1).isDigit())
            return;
        number_ += QLatin1Char('e');
        if (hasSign)
            number_ += sign;
        position_ += hasSign ? 2 : 1;
        readDigits();
    }

    QString text_;
    bool currencyMarks_;
    qsizetype position_ = 0;
    int digits_ = 0;
    QString number_;
};

} // namespace

std::optional<QString> plainNumber(const QString &text)
{
    NumberReader reader(text.trimmed(), true);
    if (!reader.read() || !reader.atEnd())
        return std::nullopt;
    return reader.number();
}

QString numericPrefix(const QString &text)
{
    QString packed;
    for (const QChar c : text) {
        if (!c.isSpace())
            packed += c;
    }
    NumberReader reader(packed, false);
    return reader.read() ? reader.number() : QStringLiteral("0");
}

} // namespace runtime
