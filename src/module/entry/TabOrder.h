#pragma once

#include <QWidget>

/// Tab goes through the sale in the order of work: product, kind, quantity, discounts, the line, the money, then the
/// lists and the rest. One table of control names; boxes that only show something take the focus by click alone
/// (clsMyFunctions) and are passed over.
void orderTabs(QWidget &window);
