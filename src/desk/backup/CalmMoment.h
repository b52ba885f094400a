#pragma once

#include <QStringList>

#include <functional>

namespace backup {

/// What gives the orders whose total is not their lines' sum, keys first.
QString unfinishedOrdersStatement();

/// A desk writes a line and then, in a step of its own, the order's total. Looks anew until no desk is between the two; what
/// stands for longer than a desk takes is damage, which a check tells. Raises RuntimeError when the desks leave no such
/// moment.
void waitForCalm(const std::function<QStringList()> &lookAnew);

} // namespace backup
