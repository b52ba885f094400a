#pragma once

#include <QString>
#include <QVariant>

/// The text with every ' doubled, fit for a place between quotes.
QString sqlEscapeQuotes(const QString &text);

/// The value as a number; 0 for NULL and for what is no number.
double varToDouble(const QVariant &value);
