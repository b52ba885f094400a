#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QString>

namespace controls {

// What a screen reader is told where the stock controls tell something else.

/// Money as it is said: "25,500원" for the won sign and the digits; a text that is no money as it is.
QString spokenMoney(const QString &shown);
/// A caption as a name: without its colon.
QString spokenName(const QString &caption);

enum class Amounts { WithSign, Bare };
/// The box may show money, and is to say it; bare amounts are digits alone.
void speakMoney(QLineEdit *box, Amounts amounts = Amounts::WithSign);
/// A figure that is only shown says its name and the amount.
void speakMoney(QLabel *figure);
/// What such a box says.
QString spokenText(const QLineEdit &box);
/// From now on grids tell of the columns that are shown only, combo boxes their names, marked boxes money. Once per process.
void installSpokenControls();

} // namespace controls
